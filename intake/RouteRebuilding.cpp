#include "intake/RouteRebuilding.h"

#include <algorithm>
#include <array>

#include "core/archive/ArchiveCheck.h"
#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"
#include "intake/DamageCheck.h"

namespace quillon {
namespace {

// Sub-archives of one folder, by name; each becomes the folder that it is called after.
constexpr std::array<std::string_view, 15> kSubArchives = {
    "tiles.zip",  "lo_tiles.zip", "world.zip",   "terrtex.zip",  "textures.zip",
    "shapes.zip", "sound.zip",    "td.zip",      "envfiles.zip", "activities.zip",
    "paths.zip",  "services.zip", "traffic.zip", "consists.zip", "tutor.zip"};

// Terrain that the game makes again, and backups, stay out of what is rebuilt.
constexpr std::array<std::string_view, 3> kLeftOut = {"_e.raw", "_n.raw", ".bk"};

constexpr std::uint64_t kLongestMark = 4096;

bool IsLeftOut(std::string_view path) {
  return std::any_of(kLeftOut.begin(), kLeftOut.end(),
                     [&](std::string_view end) { return path.ends_with(end); });
}

bool Holds(const std::vector<int>& entries, int entry) {
  return std::binary_search(entries.begin(), entries.end(), entry);
}

}  // namespace

ArchiveReader RouteRebuilding::SilentReader() {
  ArchiveReader reader(state_.program.files, [] {});
  reader.OnProgress = [this](const ArchiveReader&) { state_.progress.Yield(); };
  return reader;
}

void RouteRebuilding::FinishLeftOvers() {
  Files& files = state_.program.files;
  state_.program.Step("Finishing what an earlier intake has left");
  const std::string routes = state_.program.BelowGame("\\routes\\");
  std::vector<FoundFile> found;
  files.Host().Find(routes + "Quillon-*", found);
  for (const auto& entry : found) {
    const std::string folder = routes + entry.name;
    const std::string zip = entry.folder() && !entry.link ? ZipOfLeftOver(folder) : "";
    if (zip.empty()) continue;
    if (!files.FileExists(state_.Download(zip))) {
      KeepIfWhole(state_.program.app.DownloadedRoutes() + "\\" + zip + ".tmp", "Quillon-" + zip);
      KeepIfWhole(folder + "\\Quillon-" + zip + ".zip", zip);
    }
    files.DelTree(folder);
  }
}

/// The zip name that a work folder was for; empty when the folder is not ours. A route may hold a file called
/// like the mark.
std::string RouteRebuilding::ZipOfLeftOver(const std::string& folder) {
  const std::string downloads = state_.program.app.DownloadedRoutes() + "\\";
  const bool isWorkingRoute = EqualNoCase(folder, state_.program.BelowGame(kWorkingRoute));
  if (isWorkingRoute || !state_.program.files.FileExists(folder + kWorkFolderMark)) return {};
  const std::string download = state_.program.files.ReadAll(folder + kWorkFolderMark, kLongestMark);
  if (!download.starts_with(downloads)) return {};
  const std::string zip = CutAtLastDot(download.substr(downloads.size()));
  return IsUsableStem(zip) && FileNameOf(folder).starts_with("Quillon-" + zip) ? zip : "";
}

void RouteRebuilding::KeepIfWhole(const std::string& left, const std::string& zip) {
  Files& files = state_.program.files;
  ArchiveReader reader = SilentReader();
  reader.InputFile = left;
  reader.ReadDirectory();
  if (reader.EntryCount() > 0 && !files.FileExists(state_.Download(zip)))
    files.Rename(left, state_.Download(zip));
}

void RouteRebuilding::RebuildInnerZips() {
  const std::size_t count = state_.ListofRouteZips.size();
  for (std::size_t i = 0; i < count; ++i) {
    state_.progress.Detail(i, count, "zips");
    Rebuild(std::string(state_.ListofRouteZips[i]));
  }
}

void RouteRebuilding::Rebuild(const std::string& zip) {
  state_.Step("Rebuilding " + zip + ".zip", zip);
  if (!FindInnerZip(zip)) return;
  const std::string rebuilt = state_.Download("Quillon-" + zip);
  if (state_.program.files.FileExists(rebuilt)) throw RunTimeError(ErrorNumber::FileAlreadyExists, rebuilt);

  MakeWorkFolder(zip);
  OpenInnerZip();
  state_.progress.Caption("Recreating Route file structure...");
  SpecialZip =
      std::find(kSubArchives.begin(), kSubArchives.end(), FileNameOf(InsideZip)) != kSubArchives.end();
  if (!SpecialZip) {
    FindStripPrefix();
    state_.progress.Caption("Creating paths for " + zip + "...");
    CreatePaths();
  }
  state_.progress.Caption("Reticulating fractal spline curves...");
  state_.progress.Caption("Restructuring " + zip + "...");
  DropDamaged(zip);
  WriteRebuilt(zip);
  SpecialZip = false;
  // Before the mark goes with the rest: what a crash leaves then is empty.
  state_.program.files.KillIfThere(InnerZipPath());
  state_.program.files.DelTree(workFolder_);
  // Longer by the bare prefix, which no later pass finds a file for.
  state_.ListofRouteZips.emplace_back("Quillon-");
}

bool RouteRebuilding::FindInnerZip(const std::string& zip) {
  outer_.InputFile = state_.Download(zip);
  outer_.ReadDirectory();
  insideIndex_ = -1;
  for (int i = 0; i < outer_.EntryCount(); ++i) {
    std::string entry = outer_.LowerName(i);
    if (!Contains(entry, ".zip") || entry.ends_with('\\')) continue;
    InsideZip = std::move(entry);
    insideIndex_ = i;
  }
  return insideIndex_ >= 0;
}

void RouteRebuilding::MakeWorkFolder(const std::string& zip) {
  // `route.zip` would get the working route itself, and a folder that stands there already is not ours to
  // delete, unless an intake that died has left it.
  Files& files = state_.program.files;
  const std::string wanted = state_.program.BelowGame("\\routes\\Quillon-" + zip);
  const bool isWorkingRoute = EqualNoCase(wanted, state_.program.BelowGame(kWorkingRoute));
  workFolder_ = isWorkingRoute ? wanted + "~2" : wanted;
  for (int i = 3; files.FileExists(workFolder_) && !files.FileExists(workFolder_ + kWorkFolderMark); ++i)
    workFolder_ = wanted + "~" + std::to_string(i);
  files.DelTree(workFolder_);
  state_.journal.WorkFolderComes(workFolder_);
  files.MakeFolders(workFolder_);
  files.WriteAll(workFolder_ + kWorkFolderMark, state_.Download(zip));
}

void RouteRebuilding::OpenInnerZip() {
  // Only the inner zip is laid out; all else travels from archive to archive as it is packed.
  outer_.OutputFolder = workFolder_ + "\\";
  outer_.KeepFolders = true;
  outer_.Place({{insideIndex_, InnerZipPath()}});
  inner_.InputFile = InnerZipPath();
  inner_.ReadDirectory();
  if (const std::string bomb = BombIn(state_.program.files, inner_); !bomb.empty()) inner_.GiveUp(bomb);
}

void RouteRebuilding::FindStripPrefix() {
  for (int i = 0; i < inner_.EntryCount(); ++i) {
    const std::string entry = inner_.LowerName(i);
    if (const auto at = entry.find("\\tiles\\"); at != entry.npos) {
      StripPrefix = entry.substr(0, at + 1);
      return;
    }
    // At the top the first letter of "tiles" is taken for the backslash: routes of old have these paths.
    if (const auto at = entry.find("tiles\\"); at != entry.npos) StripPrefix = entry.substr(0, at + 1);
  }
}

void RouteRebuilding::CreatePaths() {
  lstRouteStrippedPath.clear();
  lstUnzipThese.clear();
  for (int i = 0; i < inner_.EntryCount(); ++i) {
    const std::string entry = inner_.LowerName(i);
    const std::string stripped =
        Contains(entry, StripPrefix) ? entry.substr(std::min(StripPrefix.size(), entry.size())) : entry;
    if (IsLeftOut(stripped) || stripped.ends_with('\\') || stripped.empty()) continue;
    lstRouteStrippedPath.push_back(stripped);
    lstUnzipThese.push_back(i);
  }
}

/// What an archive that was laid out would lack, the rebuilt one lacks.
void RouteRebuilding::DropDamaged(const std::string& zip) {
  std::vector<std::string> names;
  const auto find = [&](const ArchiveReader& archive, const std::string& inside) {
    std::vector<int> damaged =
        DamagedEntries(state_.program.files, archive, [this](std::uint64_t done, std::uint64_t all) {
          state_.progress.Detail(done, all, "bytes");
          state_.progress.Yield();
        });
    for (int i = 0; i < archive.EntryCount(); ++i)
      if (!archive.Entries()[static_cast<std::size_t>(i)].Obstacle().empty()) damaged.push_back(i);
    std::sort(damaged.begin(), damaged.end());
    for (const int entry : damaged)
      names.push_back(inside + archive.Entries()[static_cast<std::size_t>(entry)].name);
    return damaged;
  };
  outerDamage_ = find(outer_, "");
  innerDamage_ = find(inner_, InsideZip + "\\");
  if (!inner_.DamageReason().empty()) names.push_back(InsideZip + " (" + inner_.DamageReason() + ")");
  if (!names.empty())
    state_.verdicts.Note(zip, "but " + DamageText(names) + " and were left out: download it again");
}

void RouteRebuilding::WriteRebuilt(const std::string& zip) {
  ArchiveWriter writer(state_.program.files);
  writer.ArchiveFile = state_.program.app.DownloadedRoutes() + "\\" + zip + ".tmp";
  writer.OnProgress = [this](const ArchiveWriter& running) {
    state_.progress.Detail(running.BytesDone(), running.BytesToDo(), "bytes");
    state_.progress.Yield();
  };
  writer.ClearFiles();
  writer.PrepareRebuild(workFolder_ + "\\");
  SpecialZip ? AddSubArchive(writer) : AddWholeRoute(writer);
  writer.Zip();
  state_.progress.Detail(0, 0, "bytes");
  state_.journal.RebuiltComes(zip);
  state_.program.files.Flush(writer.ArchiveFile);  // with the original's copy in Installed
  state_.program.files.KillReadOnly(state_.Download(zip));
  state_.program.files.Rename(writer.ArchiveFile, state_.Download("Quillon-" + zip));
  state_.verdicts.Rebuilt(zip, "Quillon-" + zip);
  state_.sound.insert("Quillon-" + zip);
}

void RouteRebuilding::AddWholeRoute(ArchiveWriter& writer) {
  for (int i = 0; i < outer_.EntryCount(); ++i) {
    const std::string name = outer_.LowerName(i);
    if (name != InsideZip && !name.ends_with('\\') && !Holds(outerDamage_, i))
      writer.AddEntry(outer_, i, name);
  }
  for (std::size_t i = 0; i < lstUnzipThese.size(); ++i)
    if (!Holds(innerDamage_, lstUnzipThese[i]))
      writer.AddEntry(inner_, lstUnzipThese[i], lstRouteStrippedPath[i]);
}

void RouteRebuilding::AddSubArchive(ArchiveWriter& writer) {
  const std::string InsiderPath = InsideZip.substr(0, InsideZip.size() - 4);
  for (int i = 0; i < outer_.EntryCount(); ++i) {
    const std::string& name = outer_.Entries()[static_cast<std::size_t>(i)].name;
    const std::string lower = LowerCase(name);
    if (lower != InsideZip && !lower.ends_with('\\') && !IsLeftOut(lower) && !Holds(outerDamage_, i))
      writer.AddEntry(outer_, i, name);
  }
  for (int i = 0; i < inner_.EntryCount(); ++i) {
    const auto& entry = inner_.Entries()[static_cast<std::size_t>(i)];
    if (!entry.folder() && !IsLeftOut(LowerCase(entry.name)) && !Holds(innerDamage_, i))
      writer.AddEntry(inner_, i, InsiderPath + "\\" + std::string(FileNameOf(entry.name)));
  }
}

void RouteRebuilding::RepackTopLevelRoutes() {
  for (const auto& zip : state_.ListofRouteZips)
    if (state_.program.files.FileExists(zip)) Repack(zip);
  state_.ListofRouteZips.clear();
}

bool RouteRebuilding::HasTilesFolder() {
  for (int i = 0; i < outer_.EntryCount(); ++i) {
    if (state_.BadZipFlag)
      state_.BadZipFlag = false;
    else if (Contains(outer_.LowerName(i), "\\tiles\\"))
      return true;
  }
  return false;
}

void RouteRebuilding::Repack(const std::string& zip) {
  if (!state_.program.files.FileExists(state_.Download(zip))) return;
  state_.program.Step("Repacking " + zip + ".zip");
  outer_.InputFile = state_.Download(zip);
  outer_.ReadDirectory();
  if (HasTilesFolder()) return;
  MakeWorkFolder(zip);
  outer_.OutputFolder = workFolder_ + "\\";
  outer_.KeepFolders = true;
  outer_.ClearFilters();
  outer_.AddFilter("*");
  outer_.Extract();

  ArchiveWriter writer(state_.program.files);
  writer.ArchiveFile = workFolder_ + "\\Quillon-" + zip + ".tmp";
  writer.PrepareRebuild(workFolder_ + "\\");
  for (const auto& entry : outer_.Entries())
    if (!IsLeftOut(entry.name) && !entry.folder()) writer.AddFiles(workFolder_ + "\\" + entry.name);
  writer.Zip();
  const std::string repacked = workFolder_ + "\\Quillon-" + zip + ".zip";
  state_.program.files.Rename(writer.ArchiveFile, repacked);
  state_.program.files.KillReadOnly(state_.Download(zip));
  state_.program.files.FileCopy(repacked, state_.Download(zip));
  state_.program.files.DelTree(workFolder_);
  state_.progress.Caption("Analyzing route structure...");
}

}  // namespace quillon
