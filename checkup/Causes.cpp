#include "checkup/Causes.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "checkup/TrainPlaces.h"
#include "core/Text.h"
#include "core/archive/ArchiveNames.h"

namespace quillon {
namespace {

using Kind = Cause::Kind;
/// Numbers of causes, in rising order.
using Roots = std::vector<std::uint32_t>;

/// What is broken in itself: nothing can be installed that heals it.
constexpr std::uint32_t kUnhealable = ~std::uint32_t{0};

void Add(Roots& roots, const Roots& more) {
  roots.insert(roots.end(), more.begin(), more.end());
  std::sort(roots.begin(), roots.end());
  roots.erase(std::unique(roots.begin(), roots.end()), roots.end());
}

/// Train files that are asked for in a folder: spelling by lower-case name.
using Wanted = std::map<std::string, std::string>;

std::set<std::string> Names(const Wanted& files) {
  std::set<std::string> names;
  for (const auto& [file, spelling] : files) names.insert(file);
  return names;
}

std::string Listed(const std::vector<std::string>& names) {
  constexpr std::size_t kMost = 3;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i) text += (i == 0 ? "" : ", ") + names[i];
  return names.size() > kMost ? text + " and " + std::to_string(names.size() - kMost) + " more" : text;
}

class Judge {
 public:
  Judge(Program& program, const CauseInput& input) : program_(program), input_(input) {}

  CauseList Run() {
    JudgeItems();
    JudgeConsists();
    JudgeServices();
    JudgeActivities();
    DropCausesOfNothing();
    PlanMoves();
    Sort();
    return std::move(list_);
  }

 private:
  struct JudgedItem {
    bool good = true;
    Roots roots;
  };
  struct JudgedConsist {
    Roots roots;
  };
  struct JudgedService {
    Roots roots;
    std::string reason;  // why it is bad
  };

  const TrainItem& Item(std::uint32_t number) const { return input_.items[number]; }
  bool IsGood(const TrainItem& item) const {
    return item.splits && input_.trains.CheckItem(item.kind, item.file, item.folder);
  }

  void JudgeItems() {
    items_.resize(input_.items.size());
    std::vector<bool> asked(items_.size(), false);
    for (const auto& consist : input_.consists) Ask(*consist.facts, asked);
    for (const auto& activity : input_.activities) Ask(*activity.facts, asked);
    std::map<std::string, Wanted> missing;  // by folder
    for (std::uint32_t i = 0; i < items_.size(); ++i) {
      if (!asked[i]) continue;
      const TrainItem& item = Item(i);
      items_[i].good = IsGood(item);
      if (!items_[i].good && item.splits) missing[item.folder].try_emplace(item.file, item.wantedFile);
      if (!items_[i].good && item.splits) spellings_.try_emplace(item.folder, item.wantedFolder);
    }
    CountAskedFor();
    if (missing.empty()) return MarkUnsplit();
    places_.emplace(program_);
    for (const auto& [folder, files] : missing) {
      if (input_.trains.HasFolder(folder) || folder.empty())
        for (const auto& [file, spelling] : files) AddMissingFile(folder, file, spelling);
      else
        AddFolder(folder, files);
    }
    for (std::uint32_t i = 0; i < items_.size(); ++i)
      if (!items_[i].good && Item(i).splits) items_[i].roots = rootsOf_[Key(Item(i).folder, Item(i).file)];
    MarkUnsplit();
  }

  void Ask(const FileFacts& facts, std::vector<bool>& asked) {
    for (const std::uint32_t item : facts.items) asked[item] = true;
  }

  void MarkUnsplit() {
    for (std::uint32_t i = 0; i < items_.size(); ++i)
      if (!items_[i].good && !Item(i).splits) items_[i].roots = {kUnhealable};
  }

  /// The train folders that whole consists ask for: to rename one would break them.
  void CountAskedFor() {
    for (const auto& consist : input_.consists) {
      const auto& items = consist.facts->items;
      if (!std::all_of(items.begin(), items.end(), [&](std::uint32_t item) { return items_[item].good; }))
        continue;
      for (const std::uint32_t item : items) askedFor_.insert(Item(item).folder);
    }
    for (const auto& activity : input_.activities)
      for (const std::uint32_t item : activity.facts->items)
        if (items_[item].good) askedFor_.insert(Item(item).folder);
  }

  static std::string Key(const std::string& folder, const std::string& file) { return folder + '\0' + file; }

  std::uint32_t NewCause(Kind kind, std::string name, std::string place = {}) {
    Cause cause;
    cause.kind = kind;
    cause.name = std::move(name);
    cause.place = std::move(place);
    list_.causes.push_back(std::move(cause));
    return static_cast<std::uint32_t>(list_.causes.size() - 1);
  }

  void AddFolder(const std::string& folder, const Wanted& files) {
    const TrainPlaces::Place* place = places_->Find(folder, Names(files), askedFor_);
    const std::string& name = spellings_[folder];
    const std::uint32_t number =
        NewCause(place != nullptr ? Kind::MisplacedFolder : Kind::MissingFolder, name);
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
  void AddIncomplete(std::uint32_t folderCause, const std::string& folder, const std::string& file,
                     const std::string& spelling) {
    const std::uint32_t number = NewCause(Kind::MissingFile, spelling, spellings_[folder]);
    Cause& cause = list_.causes[number];
    cause.files = {spelling};
    cause.advice = "Install " + spelling + " into TRAINS\\TRAINSET\\" + cause.place + ", once it is there.";
    auto& files = list_.causes[folderCause].files;
    files.erase(std::find(files.begin(), files.end(), spelling));
    rootsOf_[Key(folder, file)] = {folderCause, number};
  }

  void AdviseMove(Cause& cause, const TrainPlaces::Place& place) {
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

  void AddMissingFile(const std::string& folder, const std::string& file, const std::string& spelling) {
    const std::uint32_t number = NewCause(Kind::MissingFile, spelling, spellings_[folder]);
    Cause& cause = list_.causes[number];
    cause.files = {spelling};
    rootsOf_[Key(folder, file)] = {number};
    const std::string stem = file.substr(0, file.size() - 4), there = "TRAINSET\\" + cause.place;
    const bool engine = file.ends_with(".eng");
    bool isThere = true;
    if (folder.empty()) {
      cause.advice = "No train folder is named where it is asked for: mend the consist.";
      isThere = false;
    } else if (const std::string odd = places_->WithBlanks(folder, file); !odd.empty()) {
      cause.advice =
          "Rename \"" + odd + "\" in " + there + " to " + spelling + ": there is a blank too much.";
      cause.moves = {{cause.place + "\\" + odd, cause.place + "\\" + spelling}};
    } else if (input_.trains.CheckItem(engine ? TrainKind::Wagon : TrainKind::Engine,
                                       stem + (engine ? ".wag" : ".eng"), folder)) {
      cause.advice =
          there + " has it as " + (engine ? "a wagon" : "an engine") + ", and it is asked for as " +
          (engine ? "an engine: write WagonData for EngineData" : "a wagon: write EngineData for WagonData") +
          " where it is asked for.";
    } else if (const auto* below = places_->FindBelow(folder, file)) {
      cause.advice = "It lies too deep: move what is in TRAINSET\\" + below->path + " up to " + there + ".";
    } else {
      cause.advice = "Install it into TRAINS\\" + there + "." + Elsewhere({{file, spelling}});
      isThere = false;
    }
    ++(isThere ? list_.trainsMisplaced : list_.trainsMissing);
  }

  /// Where one of the files lies, though not all of them.
  std::string Elsewhere(const Wanted& files) const {
    for (const auto& [file, spelling] : files) {
      const auto kind = file.ends_with(".eng") ? TrainKind::Engine : TrainKind::Wagon;
      const std::string folder = input_.trains.FindAlternateFolder(kind, file);
      if (folder != "none") return " " + spelling + " also lies in TRAINSET\\" + folder + ".";
    }
    return {};
  }

  Roots RootsOf(const FileFacts& facts) const {
    Roots roots;
    std::vector<std::uint32_t> items = facts.items;
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    for (const std::uint32_t item : items)
      if (!items_[item].roots.empty()) Add(roots, items_[item].roots);
    if (facts.broken == FileFacts::Broken::Reading || facts.broken == FileFacts::Broken::Items)
      Add(roots, {kUnhealable});
    return roots;
  }

  void JudgeConsists() {
    consists_.resize(input_.consists.size());
    for (std::size_t i = 0; i < consists_.size(); ++i) {
      const auto& consist = input_.consists[i];
      JudgedConsist& judged = consists_[i];
      judged.roots = RootsOf(*consist.facts);
      const bool whole = judged.roots.empty();
      ++(whole ? list_.consistsWhole : list_.consistsFaulty);
      byFile_[whole ? 0 : 1].try_emplace(RouteKey(consist.route, consist.name), &judged);
      if (consist.facts->name)
        byName_[whole ? 0 : 1].try_emplace(RouteKey(consist.route, *consist.facts->name), &judged);
      for (const std::uint32_t root : judged.roots) {
        if (root == kUnhealable) continue;
        list_.causes[root].consists.push_back(consist.name);
        if (judged.roots.size() == 1) ++list_.causes[root].consistsHealed;
      }
    }
  }

  /// The consist that the game would take: a whole one if there is any of that name.
  const JudgedConsist* FindConsist(const std::string& route, const std::string& name) const {
    for (const auto& names : {&byFile_[0], &byName_[0], &byFile_[1], &byName_[1]})
      for (const auto& key : {RouteKey("", name), RouteKey(route, name)})
        if (const auto at = names->find(key); at != names->end()) return at->second;
    return nullptr;
  }

  void JudgeServices() {
    for (const auto& service : input_.services) {
      JudgedService judged;
      const FileFacts& facts = *service.facts;
      if (facts.consist && !facts.consist->empty()) {
        const JudgedConsist* consist = FindConsist(service.route, *facts.consist);
        if (consist != nullptr) {
          judged.roots = consist->roots;
          if (!judged.roots.empty())
            judged.reason = "its consist " + *facts.consist + " lacks " + What(judged.roots);
        } else {
          judged.roots = {MissingConsist(*facts.consist)};
          judged.reason = "its consist " + *facts.consist + " is missing";
        }
      }
      if (facts.broken != FileFacts::Broken::Nowhere) {
        Add(judged.roots, {kUnhealable});
        judged.reason = "it can't be read: " + facts.error->reason();
      }
      for (const std::uint32_t root : judged.roots)
        if (root != kUnhealable) list_.causes[root].services.push_back(service.route + "\\" + service.file);
      services_[RouteKey(service.route, CutAtLastDot(service.file))] = std::move(judged);
    }
  }

  std::uint32_t MissingConsist(const std::string& name) {
    const auto [at, isNew] = missingConsists_.try_emplace(LowerCase(name), 0);
    if (!isNew) return at->second;
    at->second = NewCause(Kind::MissingConsist, name);
    list_.causes[at->second].advice = "Install the consist " + name + ".con into TRAINS\\CONSISTS.";
    return at->second;
  }

  static std::string RouteKey(const std::string& route, const std::string& name) {
    return LowerCase(route) + '\0' + LowerCase(name);
  }

  void JudgeActivities() {
    for (const auto& activity : input_.activities) {
      JudgedActivity judged;
      judged.route = activity.route;
      judged.file = activity.file;
      judged.name = ReplaceAll(activity.facts->name.value_or("unknown"), "\"", "");
      Roots roots;
      std::unordered_set<std::string> seen;
      for (const auto* calls : {&activity.facts->playersServices, &activity.facts->otherServices})
        for (const auto& call : *calls)
          if (seen.insert(LowerCase(call.service)).second)
            JudgeCall(activity.route, call.service, roots, judged);
      const Roots own = RootsOf(*activity.facts);
      if (!own.empty()) judged.reasons.push_back("It lacks " + What(own) + ".");
      Add(roots, own);
      if (activity.facts->error)
        judged.reasons.push_back("It can't be read: " + activity.facts->error->reason() + ".");
      judged.playable = judged.reasons.empty();
      for (const std::uint32_t root : roots) {
        if (root == kUnhealable) continue;
        list_.causes[root].activities.push_back(activity.route + "\\" + activity.file);
        if (roots.size() == 1) ++list_.causes[root].activitiesHealed;
      }
      list_.activities.push_back(std::move(judged));
    }
  }

  void JudgeCall(const std::string& route, const std::string& service, Roots& roots, JudgedActivity& judged) {
    const auto at = services_.find(RouteKey(route, service));
    if (at == services_.end()) {
      Add(roots, {MissingService(route, service)});
      judged.reasons.push_back("The service " + service + " is missing.");
    } else if (!at->second.roots.empty()) {
      Add(roots, at->second.roots);
      judged.reasons.push_back("The service " + service + ": " + at->second.reason + ".");
    }
  }

  std::uint32_t MissingService(const std::string& route, const std::string& service) {
    const auto [at, isNew] = missingServices_.try_emplace(RouteKey(route, service), 0);
    if (!isNew) return at->second;
    at->second = NewCause(Kind::MissingService, service, route);
    list_.causes[at->second].advice =
        "Install the service " + service + ".srv into ROUTES\\" + route + "\\SERVICES.";
    return at->second;
  }

  /// Causes in a sentence.
  std::string What(const Roots& roots) const {
    std::vector<std::string> names;
    for (const std::uint32_t root : roots) {
      if (root == kUnhealable) {
        names.emplace_back("lines that can be read");
        continue;
      }
      const Cause& cause = list_.causes[root];
      if (cause.kind == Kind::MissingFile)
        names.push_back("TRAINSET\\" + cause.place + "\\" + cause.name);
      else
        names.push_back("TRAINSET\\" + cause.name + " (" + Listed(cause.files) + ")" +
                        (cause.kind == Kind::MisplacedFolder ? ", which is misplaced" : ""));
    }
    return Listed(names);
  }

  /// What nothing asks for any more: a file of a folder may be wanted by no one alone.
  void DropCausesOfNothing() {
    std::erase_if(list_.causes, [](const Cause& cause) {
      return cause.consists.empty() && cause.services.empty() && cause.activities.empty();
    });
  }

  /// Each folder can be moved once only: for what heals most.
  void PlanMoves() {
    Sort();
    std::vector<std::string> taken;
    for (auto& cause : list_.causes) {
      if (cause.moves.empty()) continue;
      const std::string from = LowerCase(cause.moves.front().from) + "\\";
      const bool clashes = std::any_of(taken.begin(), taken.end(), [&](const std::string& other) {
        return from.starts_with(other) || other.starts_with(from);
      });
      if (clashes)
        cause.moves.clear();
      else
        taken.push_back(from);
    }
  }

  void Sort() {
    std::vector<std::pair<std::string, Cause>> keyed;
    for (auto& cause : list_.causes) {
      std::string key = UpperCase(cause.name) + '\0' + UpperCase(cause.place);
      keyed.emplace_back(std::move(key), std::move(cause));
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
      const Cause &left = a.second, &right = b.second;
      if (left.activitiesHealed != right.activitiesHealed)
        return left.activitiesHealed > right.activitiesHealed;
      if (left.consistsHealed != right.consistsHealed) return left.consistsHealed > right.consistsHealed;
      return a.first < b.first;
    });
    std::transform(keyed.begin(), keyed.end(), list_.causes.begin(),
                   [](auto& pair) { return std::move(pair.second); });
  }

  Program& program_;
  const CauseInput& input_;
  CauseList list_;
  std::vector<JudgedItem> items_;                           // by their numbers
  std::unordered_map<std::string, std::string> spellings_;  // of train folders, by lower case
  std::unordered_map<std::string, Roots> rootsOf_;          // by folder and file
  std::unordered_set<std::string> askedFor_;
  std::optional<TrainPlaces> places_;
  std::vector<JudgedConsist> consists_;
  using Consists = std::unordered_map<std::string, const JudgedConsist*>;
  Consists byFile_[2], byName_[2];  // whole, faulty
  std::unordered_map<std::string, JudgedService> services_;
  std::unordered_map<std::string, std::uint32_t> missingConsists_, missingServices_;
};

}  // namespace

CauseInput::InRoute CauseInput::Place(const std::string& shown, const FileFacts& facts) {
  const auto file = shown.rfind('\\'), folder = shown.rfind('\\', file - 1);
  return {folder == shown.npos ? "" : shown.substr(0, folder), shown.substr(file + 1), &facts};
}

CauseList FindCauses(Program& program, const CauseInput& input) { return Judge(program, input).Run(); }

}  // namespace quillon
