#include "stage/Delivery.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Version.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

// The two lines that the list begins with; then one a file: its sum, a blank, its path below resources.
constexpr std::string_view kReleaseLine = "Quillon ", kFolderLine = "Folder ";
constexpr std::size_t kNoteLines = 2;
constexpr std::uint64_t kLongestNote = 4096;  // bytes

using TextLines = std::vector<std::string>;

std::string SumOf(std::string_view bytes) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%08x-%llu", libdeflate_crc32(0, bytes.data(), bytes.size()),
                static_cast<unsigned long long>(bytes.size()));
  return text.data();
}

TextLines ReadList(Program& program, std::uint64_t limit = kNoLimit) {
  const std::string list = program.app.DeliveredList();
  return program.files.FileExists(list) ? Lines(program.files.ReadAll(list, limit)) : TextLines();
}

void WriteList(Program& program, std::string_view release, const TextLines& files) {
  TextLines lines = {std::string(kReleaseLine) + std::string(release),
                     std::string(kFolderLine) + program.files.Host().HostPath(program.app.App())};
  lines.insert(lines.end(), files.begin(), files.end());
  if (lines == ReadList(program)) return;
  std::string text;
  for (const auto& line : lines) text += line + "\r\n";
  program.files.WriteAll(program.app.DeliveredList(), text);
}

/// The lines of the files.
TextLines FilesOf(TextLines list) {
  list.erase(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(std::min(list.size(), kNoteLines)));
  return list;
}

class Delivery {
 public:
  Delivery(Program& program, const std::string& tree)
      : program_(program),
        files_(program.files),
        source_(tree + "\\resources"),
        target_(program.app.Below("\\resources")) {}

  void Lay() {
    const FileSystem::Pass pass(files_.Host());
    Collect("");
    const TextLines older = FilesOf(ReadList(program_));
    for (const auto& line : older) Remember(line);
    TextLines now;
    for (const auto& [path, sum] : delivered_) now.push_back(sum + " " + path);
    files_.MakeFolders(CutBackslash(FolderOf(program_.app.DeliveredList())));
    if (ReadDeliveryNote(program_).release != kRelease) {
      // Until this has ended, a file is as it was laid when it is that of either version.
      TextLines both = older;
      both.insert(both.end(), now.begin(), now.end());
      WriteList(program_, {}, both);
    }
    for (const auto& folder : folders_) files_.MakeFolders(target_ + folder);
    for (const auto& [path, sum] : delivered_) LayFile(path, sum);
    for (const auto& [name, path] : obsolete_) Remove(path);
    files_.Flush(target_);
    WriteList(program_, kRelease, now);
  }

 private:
  void Collect(const std::string& below) {
    folders_.push_back(below);
    known_.insert(UpperCase(below));
    std::vector<FoundFile> found;
    RaiseFileError(files_.Host().Find(source_ + below + "\\*.*", found), source_ + below);
    for (const auto& entry : found) {
      if (entry.dots()) continue;
      const std::string path = below + "\\" + entry.name;
      if (entry.folder()) {
        Collect(path);
      } else {
        delivered_.emplace_back(path, SumOf(files_.ReadAll(source_ + path)));
        known_.insert(UpperCase(path));
      }
    }
  }

  void Remember(const std::string& line) {
    const auto blank = line.find(' ');
    if (blank == line.npos) return;
    const std::string path = line.substr(blank + 1), name = UpperCase(path);
    if (!path.starts_with('\\') || Contains(path, "\\..")) return;
    laid_.emplace(name, line.substr(0, blank));
    if (!known_.contains(name)) obsolete_.emplace(name, path);
  }

  /// The program reads them, and writes what the user chose.
  static bool IsSetting(std::string_view path) { return UpperCase(path).ends_with(".INI"); }
  static bool IsHelp(std::string_view path) { return UpperCase(path).starts_with("\\FILES\\"); }

  bool IsAsLaid(const std::string& path, const std::string& sum) const {
    const auto [first, last] = laid_.equal_range(UpperCase(path));
    return !IsSetting(path) &&
           std::any_of(first, last, [&](const auto& entry) { return entry.second == sum; });
  }

  void LayFile(const std::string& path, const std::string& sum) {
    const std::string to = target_ + path;
    if (files_.FileExists(to)) {
      if (files_.IsPathAFolder(to)) return;
      const std::string there = SumOf(files_.ReadAll(to));
      if (there == sum || !(IsHelp(path) || IsAsLaid(path, there))) return;
      files_.KillIfThere(to);
    }
    files_.FileCopy(source_ + path, to);
    files_.SetAttributes(to, kArchive);  // packages may deliver read-only files
  }

  void Remove(const std::string& path) {
    const std::string file = target_ + path;
    if (files_.FileExists(file)) {
      if (files_.IsPathAFolder(file) || !IsAsLaid(path, SumOf(files_.ReadAll(file)))) return;
      files_.KillIfThere(file);
    }
    // Folders that have nothing in them any more go, too.
    for (std::string folder = CutBackslash(FolderOf(path)); !known_.contains(UpperCase(folder));
         folder = CutBackslash(FolderOf(folder)))
      if (files_.FileExists(target_ + folder) && files_.Host().RemoveFolder(target_ + folder) != FileCode::Ok)
        break;
  }

  Program& program_;
  Files& files_;
  const std::string source_, target_;                           // the resources there and here
  TextLines folders_;                                           // below them, parents first
  std::vector<std::pair<std::string, std::string>> delivered_;  // path below them, and sum
  std::set<std::string, std::less<>> known_;                    // both, in upper case
  std::multimap<std::string, std::string, std::less<>> laid_;   // path in upper case, and sum
  std::map<std::string, std::string, std::less<>> obsolete_;    // path in upper case, and as it is spelled
};

/// What follows `key` at the beginning of a line.
std::string ValueOf(const TextLines& lines, std::string_view key) {
  const auto line =
      std::find_if(lines.begin(), lines.end(), [&](const auto& each) { return each.starts_with(key); });
  return line == lines.end() ? std::string() : line->substr(key.size());
}

}  // namespace

void LayDeliveredFiles(Program& program, const std::string& tree) { Delivery(program, tree).Lay(); }

DeliveryNote ReadDeliveryNote(Program& program) {
  const TextLines lines = ReadList(program, kLongestNote);
  return {ValueOf(lines, kReleaseLine), ValueOf(lines, kFolderLine)};
}

void NoteAppFolder(Program& program) {
  const TextLines list = ReadList(program);
  WriteList(program, ValueOf(list, kReleaseLine), FilesOf(list));
}

}  // namespace quillon
