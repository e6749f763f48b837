#include "checkup/Causes.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "checkup/MissingTrains.h"
#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using Kind = Cause::Kind;

std::string Listed(const std::vector<std::string>& names) {
  constexpr std::size_t kMost = 3;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i) text += (i == 0 ? "" : ", ") + names[i];
  return names.size() > kMost ? text + " and " + std::to_string(names.size() - kMost) + " more" : text;
}

class Judge {
 public:
  explicit Judge(const CauseInput& input) : input_(input), trains_(input, list_) {}

  CauseList Run() {
    trains_.Find();
    JudgeConsists();
    JudgeServices();
    JudgeActivities();
    DropCausesOfNothing();
    PlanMoves();
    Sort();
    return std::move(list_);
  }

 private:
  struct JudgedConsist {
    Roots roots;
  };
  struct JudgedService {
    Roots roots;
    std::string reason;  // why it is bad
  };

  Roots RootsOf(const FileFacts& facts) const {
    Roots roots;
    std::vector<std::uint32_t> items = facts.items;
    std::sort(items.begin(), items.end());
    items.erase(std::unique(items.begin(), items.end()), items.end());
    for (const std::uint32_t item : items)
      if (!trains_.RootsOf(item).empty()) Add(roots, trains_.RootsOf(item));
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
        list_.causes[root].consists.emplace_back(consist.name);
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
    at->second = NewCause(list_, Kind::MissingConsist, name);
    list_.causes[at->second].advice = "Install the consist " + name + ".con into TRAINS\\CONSISTS.";
    return at->second;
  }

  static std::string RouteKey(std::string_view route, std::string_view name) {
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
    at->second = NewCause(list_, Kind::MissingService, service, route);
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

  const CauseInput& input_;
  CauseList list_;
  MissingTrains trains_;
  std::vector<JudgedConsist> consists_;
  using Consists = std::unordered_map<std::string, const JudgedConsist*>;
  std::array<Consists, 2> byFile_, byName_;  // whole, faulty
  std::unordered_map<std::string, JudgedService> services_;
  std::unordered_map<std::string, std::uint32_t> missingConsists_, missingServices_;
};

}  // namespace

CauseInput::InRoute CauseInput::Place(const std::string& shown, const FileFacts& facts) {
  const auto file = shown.rfind('\\'), folder = shown.rfind('\\', file - 1);
  return {folder == shown.npos ? "" : WithoutStandIns(shown.substr(0, folder)),
          WithoutStandIns(shown.substr(file + 1)), &facts};
}

CauseList FindCauses(const CauseInput& input) { return Judge(input).Run(); }

}  // namespace quillon
