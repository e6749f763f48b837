#include "shelf/PlacedRecord.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace quillon {
namespace {

constexpr std::string_view kOwn = "own ", kMissing = "missing ";
constexpr std::int64_t kOpen = 0;  // the end of a span that has none yet
constexpr std::int64_t kEver = std::numeric_limits<std::int64_t>::min();

std::int64_t NumberAt(std::string_view& line) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
  line.remove_prefix(static_cast<std::size_t>(end - line.data()));
  if (line.starts_with(' ')) line.remove_prefix(1);
  return error == std::errc() ? number : kOpen;
}

}  // namespace

PlacedRecord::PlacedRecord(Program& program) : program_(program) {
  std::string text;
  if (program.files.Host().Read(program.app.PlacedList(), text, kNoLimit) != FileCode::Ok) return;
  for (const auto& whole : Lines(text)) {
    std::string_view line = whole;
    if (line.starts_with(kOwn)) {
      own_.emplace(line.substr(kOwn.size()));
    } else if (line.starts_with(kMissing)) {
      missing_.emplace(line.substr(kMissing.size()));
    } else {
      const std::int64_t began = NumberAt(line);
      spans_.emplace_back(began, NumberAt(line));
    }
  }
}

bool PlacedRecord::Covers(std::int64_t changed) const {
  // Some disks keep no such time.
  return changed > 0 && std::any_of(spans_.rbegin(), spans_.rend(), [changed](const Span& span) {
           return span.second != kOpen && span.first <= changed && changed <= span.second;
         });
}

bool PlacedRecord::IsOfAnOpenLoad(std::int64_t changed) const {
  return !spans_.empty() && spans_.back().second == kOpen && changed >= spans_.back().first;
}

/// The record's own time of change is the disk's clock.
std::int64_t PlacedRecord::WriteAndTellTime() {
  const std::string path = program_.app.PlacedList();
  std::string text;
  for (const auto& [began, ended] : spans_)
    text += std::to_string(began) + " " + std::to_string(ended) + "\r\n";
  for (const auto& own : own_) text += std::string(kOwn) + own + "\r\n";
  for (const auto& missing : missing_) text += std::string(kMissing) + missing + "\r\n";
  program_.files.WriteAll(path, text);
  FileSystem::Stamp stamp;
  RaiseFileError(program_.files.Host().GetStamp(path, stamp), path);
  return stamp.changed;
}

void PlacedRecord::NoteOwn(const std::vector<std::string>& paths) {
  for (const auto& path : paths) own_.insert(UpperCase(path));
  WriteAndTellTime();
}

void PlacedRecord::NoteMissing(const std::vector<std::string>& paths) {
  for (const auto& path : paths) missing_.insert(UpperCase(path));
  WriteAndTellTime();
}

void PlacedRecord::LoadBegins() {
  missing_.clear();
  if (!spans_.empty() && spans_.back().second == kOpen) spans_.pop_back();
  spans_.emplace_back(WriteAndTellTime(), kOpen);
  WriteAndTellTime();
}

void PlacedRecord::LoadEnds() {
  if (spans_.empty()) return;
  spans_.back().second = WriteAndTellTime();
  WriteAndTellTime();
}

void PlacedRecord::CleanUpEnds() {
  spans_ = {{kEver, kOpen}};
  own_.clear();
  missing_.clear();
  LoadEnds();
}

void PlacedRecord::Forget() {
  spans_.clear();
  own_.clear();
  missing_.clear();
  program_.files.KillIfThere(program_.app.PlacedList());
}

}  // namespace quillon
