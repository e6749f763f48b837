#include "checkup/MissingTrains.h"

#include <algorithm>
#include <set>

#include "core/archive/ArchiveNames.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using Kind = Cause::Kind;

std::string Key(const std::string& folder, const std::string& file) { return folder + '\0' + file; }

std::set<std::string> NamesIn(const std::map<std::string, std::string>& files) {
  std::set<std::string> names;
  for (const auto& [file, spelling] : files) names.insert(file);
  return names;
}

}  // namespace

void Add(Roots& roots, const Roots& more) {
  roots.insert(roots.end(), more.begin(), more.end());
  std::sort(roots.begin(), roots.end());
  roots.erase(std::unique(roots.begin(), roots.end()), roots.end());
}

std::uint32_t NewCause(CauseList& list, Cause::Kind kind, std::string name, std::string place) {
  Cause cause;
  cause.kind = kind;
  cause.name = std::move(name);
  cause.place = std::move(place);
  list.causes.push_back(std::move(cause));
  return static_cast<std::uint32_t>(list.causes.size() - 1);
}

void MissingTrains::Find() {
  const auto missing = JudgeItems();
  if (!missing.empty()) CountAskedFor();
  for (const auto& [folder, files] : missing) {
    if (!input_.trains.HasFolder(folder) && !folder.empty())
      AddFolder(folder, files);
    else
      for (const auto& [file, spelling] : files) AddMissingFile(folder, file, spelling);
  }
  for (std::uint32_t i = 0; i < items_.size(); ++i) {
    if (items_[i].good) continue;
    const TrainItem& item = Item(i);
    items_[i].roots = item.splits ? rootsOf_[Key(item.folder, item.file)] : Roots{kUnhealable};
  }
}

/// The missing files by their folders.
std::map<std::string, MissingTrains::Wanted> MissingTrains::JudgeItems() {
  items_.resize(input_.items.size());
  std::vector<bool> seen(items_.size(), false);
  std::map<std::string, Wanted> missing;
  // In the order of the files: of several spellings the first counts, however the items were numbered.
  const auto judge = [&](const auto& files) {
    for (const auto& file : files) {
      for (const std::uint32_t i : file.facts->items) {
        if (seen[i]) continue;
        seen[i] = true;
        const TrainItem& item = Item(i);
        if (item.splits && input_.trains.CheckItem(item.kind, item.file, item.folder)) continue;
        items_[i].good = false;
        if (!item.splits) continue;
        missing[item.folder].try_emplace(item.file, item.wantedFile);
        spellings_.try_emplace(item.folder, item.wantedFolder);
      }
    }
  };
  judge(input_.consists);
  judge(input_.activities);
  return missing;
}

void MissingTrains::CountAskedFor() {
  std::vector<bool> asked(items_.size(), false);
  for (const auto& consist : input_.consists) {
    const auto& items = consist.facts->items;
    if (!std::all_of(items.begin(), items.end(), [&](std::uint32_t item) { return items_[item].good; }))
      continue;
    for (const std::uint32_t item : items) asked[item] = true;
  }
  for (const auto& activity : input_.activities)
    for (const std::uint32_t item : activity.facts->items) asked[item] = asked[item] || items_[item].good;
  for (std::uint32_t i = 0; i < items_.size(); ++i) {
    if (!asked[i]) continue;
    askedFor_.insert(Item(i).folder);
    askedForFiles_.insert(Key(Item(i).folder, Item(i).file));
  }
}

void MissingTrains::AddFolder(const std::string& folder, const Wanted& files) {
  const TrainPlaces::Place* place = input_.places.Find(folder, NamesIn(files), askedFor_);
  const std::string& name = spellings_[folder];
  const std::uint32_t number =
      NewCause(list_, place != nullptr ? Kind::MisplacedFolder : Kind::MissingFolder, name);
  Cause& cause = list_.causes[number];
  for (const auto& [file, spelling] : files) {
    const bool held = place != nullptr && place->files.contains(file);
    cause.files.push_back(spelling);
    rootsOf_[Key(folder, file)] = {number};
    ++(held ? list_.trainsMisplaced : list_.trainsMissing);
  }
  if (place == nullptr) {
    cause.advice = "Install the train folder " + name + " below TRAINS\\TRAINSET." + Elsewhere(files);
    return;
  }
  AdviseMove(cause, *place);
  for (const auto& [file, spelling] : files)
    if (!place->files.contains(file)) AddIncomplete(number, folder, file, spelling);
}

/// What the misplaced folder lacks even in its right place.
void MissingTrains::AddIncomplete(std::uint32_t folderCause, const std::string& folder,
                                  const std::string& file, const std::string& spelling) {
  const std::uint32_t number = NewCause(list_, Kind::MissingFile, spelling, spellings_[folder]);
  Cause& cause = list_.causes[number];
  cause.files = {spelling};
  cause.advice = "Install " + spelling + " into TRAINS\\TRAINSET\\" + cause.place + ", once it is there.";
  auto& files = list_.causes[folderCause].files;
  files.erase(std::find(files.begin(), files.end(), spelling));
  rootsOf_[Key(folder, file)] = {folderCause, number};
}

void MissingTrains::AdviseMove(Cause& cause, const TrainPlaces::Place& place) const {
  const std::string here = "TRAINSET\\" + place.path;
  const std::string last(FileNameOf(place.path));
  const bool sameName = EqualNoCase(last, cause.name);
  if (place.depth == 1 && askedFor_.contains(LowerCase(place.path))) {
    cause.advice = "All its files lie in " + here + ", which whole consists ask for: copy that folder as " +
                   cause.name + ".";
    return;
  }
  if (place.depth > 1)
    cause.advice = "Move " + here + (place.depth == 2 ? " one folder up" : " up to TRAINSET") +
                   (sameName ? "." : ", as " + cause.name + ".");
  else if (Trim(last) == cause.name || Trim(LowerCase(last)) == LowerCase(cause.name))
    cause.advice = "Rename TRAINSET\\" + cause.name +
                   ": there is a blank too much at the beginning or the end of its name.";
  else
    cause.advice = "Rename " + place.path + " to " + cause.name + ".";
  if (UsableFileName(cause.name) == cause.name && cause.name.find_first_of("\\/") == std::string::npos)
    cause.moves = {{place.path, cause.name}};
}

void MissingTrains::AddMissingFile(const std::string& folder, const std::string& file,
                                   const std::string& spelling) {
  const std::uint32_t number = NewCause(list_, Kind::MissingFile, spelling, spellings_[folder]);
  Cause& cause = list_.causes[number];
  cause.files = {spelling};
  rootsOf_[Key(folder, file)] = {number};
  ++(AdviseFile(cause, folder, file) ? list_.trainsMisplaced : list_.trainsMissing);
}

/// False when the file has to be installed.
bool MissingTrains::AdviseFile(Cause& cause, const std::string& folder, const std::string& file) const {
  const std::string stem = file.substr(0, file.size() - 4), there = "TRAINSET\\" + cause.place;
  const bool engine = file.ends_with(".eng");
  if (folder.empty()) {
    cause.advice = "No train folder is named where it is asked for: mend the consist.";
    return false;
  }
  if (const std::string odd = input_.places.WithBlanks(folder, file); !odd.empty()) {
    if (askedForFiles_.contains(Key(folder, LowerCase(odd)))) {
      cause.advice =
          "Whole consists ask for \"" + odd + "\" in " + there + ": copy it as " + cause.name + ".";
      return true;
    }
    cause.advice =
        "Rename \"" + odd + "\" in " + there + " to " + cause.name + ": there is a blank too much.";
    cause.moves = {{cause.place + "\\" + odd, cause.place + "\\" + cause.name}};
    return true;
  }
  if (input_.trains.CheckItem(engine ? TrainKind::Wagon : TrainKind::Engine,
                              stem + (engine ? ".wag" : ".eng"), folder)) {
    cause.advice =
        there + (engine ? " has it as a wagon, and it is asked for as an engine: write WagonData for "
                          "EngineData where it is asked for."
                        : " has it as an engine, and it is asked for as a wagon: write EngineData "
                          "for WagonData where it is asked for.");
    return true;
  }
  if (const auto* below = input_.places.FindBelow(folder, file)) {
    cause.advice = "It lies too deep: move what is in TRAINSET\\" + below->path + " up to " + there + ".";
    return true;
  }
  cause.advice = "Install it into TRAINS\\" + there + "." + Elsewhere({{file, cause.name}});
  return false;
}

/// Where one of the files lies, though not all of them.
std::string MissingTrains::Elsewhere(const Wanted& files) const {
  for (const auto& [file, spelling] : files) {
    const auto kind = file.ends_with(".eng") ? TrainKind::Engine : TrainKind::Wagon;
    const std::string folder = input_.trains.FindAlternateFolder(kind, file);
    if (folder != "none") return " " + spelling + " also lies in TRAINSET\\" + folder + ".";
  }
  return {};
}

}  // namespace quillon
