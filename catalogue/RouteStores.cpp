#include "catalogue/RouteStores.h"

#include <array>
#include <utility>
#include <vector>

#include "core/archive/ArchiveIndex.h"
#include "core/text/Text.h"
#include "shelf/PlacedRecord.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

/// The originals go next, and a copy that failed in silence must not cost the user a file.
void CopyForSure(Files& files, const std::string& from, const std::string& to) {
  if (files.AreEqual(from, to)) return;
  files.FileCopy(from, to);
  if (!files.AreEqual(from, to))
    throw RunTimeError(ErrorNumber::DeviceIoError, to,
                       "the copy is not what " + files.Host().HostPath(from) + " is");
}

}  // namespace

void CopyFromStore(Program& program, const std::string& store, const std::string& game,
                   const std::string& pattern) {
  std::vector<std::string> failed, missing;
  program.files.CopyAllFiles(store, game, pattern, {}, &failed);
  for (const auto& name : failed)
    if (!program.files.AreEqual(store + name, game + name)) missing.push_back(store + name);
  if (!missing.empty()) PlacedRecord(program).NoteMissing(missing);
}

RouteStores::RouteStores(Program& program, std::string zip, Rescue& rescue)
    : program_(program),
      files_(program.files),
      zip_(std::move(zip)),
      gameSaves_(program.BelowGame(kWorkingSaves) + "\\"),
      rescue_(rescue) {}

void RouteStores::RenewSaves() { Renew(gameSaves_, program_.app.Saves(zip_), "*.sav", true); }

void RouteStores::RenewActivities() {
  const Installation& app = program_.app;
  const std::array<std::pair<std::string, std::string>, 4> folders = {{
      {"\\Activities\\", app.Activities(zip_)},
      {"\\Paths\\", app.Paths(zip_)},
      {"\\Services\\", app.Services(zip_)},
      {"\\Traffic\\", app.Traffic(zip_)},
  }};
  for (const auto& [folder, store] : folders)
    Renew(program_.BelowGame(kWorkingRoute) + folder, store, "*.*", false);
}

void RouteStores::Renew(const std::string& source, const std::string& store, const char* pattern,
                        bool makeAlways) {
  ArchiveIndex archive(files_, program_.app.RouteFile(zip_));
  const PlacedRecord placed(program_);
  std::vector<std::string> goes;
  bool anyStays = false;
  files_.Walk(store + "\\*.*", [&](const std::string& folder, const std::string& name) {
    const std::string old = folder + name, game = source + name;
    const bool isStored = folder == store + "\\" && MatchesPattern(name, pattern);
    if (isStored && placed.IsNotedMissing(old) && !files_.FileExists(game)) {
      anyStays = true;  // the game never had it
    } else {
      const bool isHeld = (isStored && files_.AreEqual(game, old)) || archive.Holds(name, old);
      if (!isHeld && !name.ends_with(kPartMark)) rescue_.Keep(old);
      goes.push_back(old);
    }
  });
  rescue_.Flush();
  const bool wasThere = files_.FileExists(store);
  if (anyStays)
    for (const auto& old : goes) files_.KillIfThere(old);
  else if (files_.IsPathAFolder(store))
    files_.DelTree(store);
  if (wasThere || makeAlways) files_.MakeFolderIfMissing(store);
  files_.CopyAllFiles(source, store + "\\", pattern);
  for (const auto& name : files_.ListFiles(source + pattern))
    CopyForSure(files_, source + name, store + "\\" + name);
}

int RouteStores::AddSaves(const std::string& putAway) {
  const std::string store = program_.app.Saves(zip_) + "\\", others = program_.app.Saves(putAway) + "\\";
  int added = 0;
  for (const auto& name : files_.ListFiles(gameSaves_ + "*.sav")) {
    const std::string save = gameSaves_ + name;
    if (files_.AreEqual(save, others + name) || files_.AreEqual(save, store + name)) continue;
    if (files_.FileExists(store + name)) rescue_.Keep(store + name);
    files_.MakeFolders(program_.app.Saves(zip_));
    CopyForSure(files_, save, store + name);
    ++added;
  }
  return added;
}

bool RouteStores::KeepSavesOfLostGame() {
  const std::string store = program_.app.Saves(zip_) + "\\";
  const auto saves = files_.ListFiles(store + "*.*");
  if (saves.empty() || !files_.ListFiles(gameSaves_ + "*.sav").empty()) return false;
  Rescue rescue(program_, zip_, "The game has lost its saved activities; these are back in the store.");
  for (const auto& name : saves) rescue.Keep(store + name);
  const Shelf shelf(program_);
  const std::string folder = rescue.Folder();
  rescue.Close();
  for (const auto& entry : shelf.List())
    if (EqualNoCase(entry.path, folder)) shelf.PutBack(entry);
  return true;
}

}  // namespace quillon
