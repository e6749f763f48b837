#include "intake/IntakeLog.h"

#include <algorithm>

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::uint64_t kMostBytes = 1u << 20;
constexpr const char* kGap = "\t";

/// A line stays one, and its fields can be told apart.
std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return text;
}

std::string TakeField(std::string_view& rest) {
  const auto end = std::min(rest.find(kGap), rest.size());
  std::string field(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return field;
}

}  // namespace

void IntakeLog::Add(const Verdict& verdict) const {
  Files& files = program_.files;
  const std::string path = program_.app.IntakeLog();
  const std::string line = program_.shared.IntakeBegan + kGap + verdict.kind + kGap + OnOneLine(verdict.zip) +
                           kGap + OnOneLine(verdict.reason) + "\r\n";
  std::uint64_t size = 0;
  if (files.Host().GetSize(path, size) == FileCode::Ok && size + line.size() > kMostBytes) {
    const std::string all = files.ReadAll(path);
    const auto cut = all.find('\n', all.size() / 2);
    files.Host().Replace(path, std::string_view(all).substr(cut == all.npos ? all.size() : cut + 1));
  }
  std::unique_ptr<OutputFile> file;
  // A log that can't be written holds up no intake.
  if (files.Host().Open(path, true, file) == FileCode::Ok) file->Write(line);
}

std::vector<IntakeLog::Line> IntakeLog::LastIntake() const {
  std::vector<Line> last;
  const std::string path = program_.app.IntakeLog();
  if (!program_.files.FileExists(path)) return last;
  const auto lines = Lines(program_.files.ReadAll(path));
  for (auto at = lines.rbegin(); at != lines.rend(); ++at) {
    std::string_view rest = *at;
    Line line{TakeField(rest), TakeField(rest), TakeField(rest), std::string(rest)};
    if (!last.empty() && line.date != last.front().date) break;
    last.push_back(std::move(line));
  }
  return last;
}

}  // namespace quillon
