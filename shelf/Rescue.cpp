#include "shelf/Rescue.h"

#include <algorithm>

#include "core/archive/ArchiveNames.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"

namespace quillon {

Rescue::Rescue(Program& program, std::string zip, std::string why)
    : program_(program),
      files_(program.files),
      shelf_(program),
      zip_(IsUsableStem(zip) ? std::move(zip) : std::string(kNoData)),
      why_(std::move(why)),
      disk_(program.files.Host().DiskOf(program.app.Rescued()).name) {}

void Rescue::MakeFolder() {
  if (!folder_.empty()) return;
  const std::string ofRoute = program_.app.Rescued() + "\\" + zip_ + "\\",
                    moment = LocalTime("%Y-%m-%d %H-%M-%S");
  // Several in one second are counted on, also when the first of them has left the shelf.
  int count = 0;
  std::vector<FoundFile> found;
  files_.Host().Find(ofRoute + moment + "*", found);
  for (const auto& entry : found) count = std::max(count, Shelf::CountOf(entry.name));
  folder_ = ofRoute + moment + (count == 0 ? "" : " (" + std::to_string(count + 1) + ")");
  files_.MakeFolders(folder_);
  files_.WriteAll(folder_ + kShelfReason, why_ + "\r\n");
}

std::string Rescue::FreePlaceFor(std::string_view path) {
  MakeFolder();
  const std::string wanted = folder_ + shelf_.PlaceOf(path);
  std::string place = wanted;
  for (int i = 2; files_.FileExists(place); ++i) place = wanted + " (" + std::to_string(i) + ")";
  files_.MakeFolders(CutBackslash(FolderOf(place)));
  return place;
}

void Rescue::Keep(std::string_view path, std::string_view place) {
  const std::string from(path), to = FreePlaceFor(place);
  // What is in use can't move, but often be copied; the original is the caller's then, too.
  if (files_.Host().DiskOf(path).name == disk_ && files_.Host().Move(from, to) == FileCode::Ok) return;
  Copy(from, to);
  copied_ = true;
}

void Rescue::Flush() {
  if (copied_) files_.Flush(folder_);
  copied_ = false;
}

void Rescue::Copy(const std::string& from, const std::string& to) {
  if (!files_.IsPathAFolder(from)) return files_.FileCopy(from, to);
  files_.MakeFolders(to);
  files_.Walk(from + "\\*.*", [&](const std::string& folder, const std::string& name) {
    const std::string target = to + folder.substr(from.size());
    files_.MakeFolders(CutBackslash(target));
    files_.FileCopy(folder + name, target + name);
  });
}

void Rescue::NoteRename(std::string_view from, std::string_view to) {
  MakeFolder();
  ListFile(files_, folder_ + kShelfRenames, true).Add(std::string(from) + "|" + std::string(to));
}

void Rescue::NoteRoute(std::string_view name) {
  MakeFolder();
  files_.WriteAll(folder_ + kShelfRoute, "[Route]\r\nZip=" + zip_ + "\r\nName=" + std::string(name) + "\r\n");
}

void Rescue::Close() {
  if (IsEmpty()) return;
  files_.Flush(folder_);
  shelf_.Settle(folder_);
  folder_.clear();
}

}  // namespace quillon
