#include "checkup/CauseFile.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "catalogue/Catalogue.h"
#include "catalogue/Playable.h"
#include "checkup/CauseRows.h"
#include "checkup/CausesPage.h"
#include "core/text/LocalTime.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using Json = nlohmann::ordered_json;
constexpr int kCauseFileVersion = 1;
// A row of causes or activities is one line.
constexpr std::string_view kCauses = ",\n\"causes\": [", kActivities = "],\n\"activities\": [",
                           kChanges = "],\n\"changes\": ";

/// Names of files need not be UTF-8.
std::string Dump(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

template <class Row>
void AddRows(std::string& text, const std::vector<Row>& rows) {
  for (const Row& row : rows) text += (&row == rows.data() ? "\n" : ",\n") + Dump(RowOf(row));
}

Cause::Kind KindOf(const std::string& name) {
  for (const auto kind : {Cause::Kind::MissingFolder, Cause::Kind::MisplacedFolder, Cause::Kind::MissingFile,
                          Cause::Kind::MissingConsist})
    if (name == NameOf(kind)) return kind;
  return Cause::Kind::MissingService;
}

Cause CauseFrom(const Json& json) {
  Cause cause;
  cause.kind = KindOf(json.at("kind"));
  json.at("name").get_to(cause.name);
  json.at("place").get_to(cause.place);
  json.at("files").get_to(cause.files);
  json.at("consists").get_to(cause.consists);
  json.at("consistsHealed").get_to(cause.consistsHealed);
  json.at("services").get_to(cause.services);
  json.at("activities").get_to(cause.activities);
  json.at("activitiesHealed").get_to(cause.activitiesHealed);
  json.at("advice").get_to(cause.advice);
  for (const auto& move : json.at("moves")) cause.moves.push_back({move.at("from"), move.at("to")});
  return cause;
}

/// All that is compared of two Checkups.
struct Names {
  std::string made;
  std::set<std::string> playable, broken;  // activities
  std::set<std::string> causes;

  void AddActivity(const std::string& route, const std::string& file, bool canBePlayed) {
    (canBePlayed ? playable : broken).insert(route + "\\" + file);
  }
  void AddCause(const std::string& place, const std::string& name) {
    causes.insert(place.empty() ? name : place + "\\" + name);
  }
};

Names NamesOf(const CauseList& list) {
  Names names;
  for (const auto& activity : list.activities)
    names.AddActivity(activity.route, activity.file, activity.playable);
  for (const auto& cause : list.causes) names.AddCause(cause.place, cause.name);
  return names;
}

std::vector<std::string> Both(const std::set<std::string>& a, const std::set<std::string>& b) {
  std::vector<std::string> both;
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(both));
  return both;
}

std::vector<std::string> OnlyFirst(const std::set<std::string>& a, const std::set<std::string>& b) {
  std::vector<std::string> rest;
  std::set_difference(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(rest));
  return rest;
}

CauseList::Changes Compare(const Names& before, const Names& now) {
  CauseList::Changes changes;
  changes.since = before.made;
  changes.playableNow = Both(before.broken, now.playable);
  changes.brokenNow = Both(before.playable, now.broken);
  changes.causesGone = OnlyFirst(before.causes, now.causes);
  changes.causesNew = OnlyFirst(now.causes, before.causes);
  return changes;
}

/// What comes before the causes; none when it can't be read.
std::optional<Json> HeadOf(const std::string& text) {
  try {
    Json head = Json::parse(text.substr(0, text.find(kCauses)) + "}");
    if (head.at("version") == kCauseFileVersion && head.at("made").is_string()) return head;
  } catch (const std::exception&) {  // of a file that was damaged
  }
  return {};
}

/// The rows from one mark to another, each a line.
void EachRow(std::string_view text, std::string_view begin, std::string_view end,
             const std::function<void(const Json&)>& act) {
  const std::size_t from = text.find(begin) + begin.size(), to = text.find(end, from);
  if (from < begin.size() || to == text.npos) throw std::runtime_error("not all there");
  for (std::string_view rest = text.substr(from, to - from); !rest.empty();) {
    std::string_view row = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(row.size() + 1, rest.size()));
    if (row.ends_with(',')) row.remove_suffix(1);
    if (!row.empty()) act(Json::parse(row));
  }
}

CauseList Parse(const std::string& text) {
  const auto head = HeadOf(text);
  if (!head) throw std::runtime_error("not ours");
  CauseList list;
  head->at("made").get_to(list.made);
  head->at("route").get_to(list.route);
  head->at("upTo").get_to(list.upTo);
  const Json& summary = head->at("summary");
  summary.at("consistsWhole").get_to(list.consistsWhole);
  summary.at("consistsFaulty").get_to(list.consistsFaulty);
  summary.at("trainsMissing").get_to(list.trainsMissing);
  summary.at("trainsMisplaced").get_to(list.trainsMisplaced);
  EachRow(text, kCauses, kActivities, [&](const Json& row) { list.causes.push_back(CauseFrom(row)); });
  EachRow(text, kActivities, kChanges, [&](const Json& row) {
    list.activities.push_back(
        {row.at("route"), row.at("file"), row.at("name"), row.at("playable"), row.at("reasons")});
  });
  std::string_view end = std::string_view(text).substr(text.rfind(kChanges) + kChanges.size());
  const Json changes = Json::parse(end.substr(0, end.rfind('}')));
  changes.at("since").get_to(list.changes.since);
  changes.at("playableNow").get_to(list.changes.playableNow);
  changes.at("brokenNow").get_to(list.changes.brokenNow);
  changes.at("causesGone").get_to(list.changes.causesGone);
  changes.at("causesNew").get_to(list.changes.causesNew);
  return list;
}

std::optional<CauseList> Parsed(const std::string& text) {
  try {
    return Parse(text);
  } catch (const std::exception&) {
    return {};
  }
}

/// None when it can't be read.
std::optional<Names> NamesOf(const std::string& text) {
  try {
    const auto head = HeadOf(text);
    if (!head) return {};
    Names names;
    names.made = head->at("made");
    EachRow(text, kCauses, kActivities,
            [&](const Json& row) { names.AddCause(row.at("place"), row.at("name")); });
    EachRow(text, kActivities, kChanges,
            [&](const Json& row) { names.AddActivity(row.at("route"), row.at("file"), row.at("playable")); });
    return names;
  } catch (const std::exception&) {
    return {};
  }
}

/// What comes behind the last row.
std::string Ending(const CauseList::Changes& changes) {
  return std::string(kChanges) +
         Dump({{"since", changes.since},
               {"playableNow", changes.playableNow},
               {"brokenNow", changes.brokenNow},
               {"causesGone", changes.causesGone},
               {"causesNew", changes.causesNew}}) +
         "}\n";
}

/// Empty without one.
std::string LoadedRoute(Program& program) {
  const std::string loaded = Catalogue(program).Loaded();
  return loaded == kNoData ? "" : loaded;
}

}  // namespace

Json RowOf(const Cause& cause) {
  Json moves = Json::array();
  for (const auto& move : cause.moves) moves.push_back({{"from", move.from}, {"to", move.to}});
  return {{"kind", NameOf(cause.kind)},
          {"name", cause.name},
          {"place", cause.place},
          {"files", cause.files},
          {"consists", cause.consists},
          {"consistsHealed", cause.consistsHealed},
          {"services", cause.services},
          {"activities", cause.activities},
          {"activitiesHealed", cause.activitiesHealed},
          {"advice", cause.advice},
          {"moves", std::move(moves)}};
}

Json RowOf(const JudgedActivity& activity) {
  return {{"route", activity.route},
          {"file", activity.file},
          {"name", activity.name},
          {"playable", activity.playable},
          {"reasons", activity.reasons}};
}

std::string CausesJson(const CauseList& list) {
  std::size_t moves = 0;
  for (const auto& cause : list.causes) moves += cause.moves.size();
  const Json head = {{"version", kCauseFileVersion},
                     {"made", list.made},
                     {"route", list.route},
                     {"upTo", list.upTo},
                     {"summary",
                      {{"activities", list.activities.size()},
                       {"playable", list.Playable().playable},
                       {"consistsWhole", list.consistsWhole},
                       {"consistsFaulty", list.consistsFaulty},
                       {"trainsMissing", list.trainsMissing},
                       {"trainsMisplaced", list.trainsMisplaced},
                       {"moves", moves}}}};
  // Row by row: the lists may be long, and a whole tree of them takes many times their room.
  std::string text = Dump(head);
  text.resize(text.size() - 1);
  text += kCauses;
  AddRows(text, list.causes);
  text += kActivities;
  AddRows(text, list.activities);
  return text + Ending(list.changes);
}

std::optional<CauseList> ReadCauses(Program& program) {
  return ReadCauses(program, program.app.CausesJson());
}

std::optional<CauseList> ReadCauses(Program& program, const std::string& path) {
  std::string text;
  if (program.files.Host().Read(path, text, kNoLimit) != FileCode::Ok) return {};
  return Parsed(text);
}

std::optional<CauseCounts> ReadCauseCounts(Program& program, const std::string& path) {
  constexpr std::uint64_t kHead = 16u << 10;  // bytes: more than comes before the causes
  std::string text;
  if (program.files.Host().Read(path, text, kHead) != FileCode::Ok) return {};
  const auto head = HeadOf(text);
  if (!head) return {};
  try {
    const Json& summary = head->at("summary");
    return CauseCounts{summary.at("activities"),    summary.at("playable"),
                       summary.at("consistsWhole"), summary.at("consistsFaulty"),
                       summary.at("trainsMissing"), summary.at("trainsMisplaced"),
                       summary.value("moves", 0),   head->at("upTo")};
  } catch (const std::exception&) {
    return {};
  }
}

void WriteRouteCauses(Program& program, const CauseList& list) {
  program.Step("Writing the causes");
  program.files.WriteAll(program.app.CausesOfRoutesJson(), CausesJson(list));
  program.files.WriteAll(program.app.CausesOfRoutes(), CausesPage(list));
}

CauseRecord::CauseRecord(Program& program)
    : program_(program), made_(LocalTime("%Y-%m-%d %H:%M:%S")), route_(LoadedRoute(program)) {
  if (program.files.Host().Read(program.app.CausesJson(), before_, kNoLimit) != FileCode::Ok) before_.clear();
}

void CauseRecord::Make(CauseList list) {
  list_ = std::move(list);
  list_.made = made_;
  list_.route = route_;
  if (const auto before = NamesOf(std::exchange(before_, {})))
    list_.changes = Compare(*before, NamesOf(list_));
  json_ = CausesJson(list_);
  page_ = CausesPage(list_);
}

void CauseRecord::EndedEarly(const std::string& upTo) {
  list_.upTo = upTo;
  json_ = CausesJson(list_);
  page_ = CausesPage(list_);
}

void CauseRecord::Write() {
  WriteTexts();
  NoteRouteOfPage(program_, route_);
  if (route_.empty()) return;
  const auto [playable, all] = list_.Playable(std::string(FileNameOf(kWorkingRoute)));
  NotePlayable(program_, route_, {playable, all});
}

bool CauseRecord::Renew() {
  const auto head = HeadOf(before_);
  const auto rows = before_.find(kCauses), changes = before_.rfind(kChanges);
  if (!head || changes == before_.npos) return false;
  CauseList::Changes none;
  none.since = head->at("made");
  if (program_.files.Host().Read(program_.app.CausesHtml(), page_, kNoLimit) != FileCode::Ok ||
      !RenewCausesPage(page_, made_, none))
    return false;
  Json renewed = *head;
  renewed["made"] = made_;
  json_ = Dump(renewed);
  json_.pop_back();
  json_ += before_.substr(rows, changes - rows) + Ending(none);
  WriteTexts();
  return true;
}

void CauseRecord::WriteTexts() {
  program_.Step("Writing the causes");
  const Installation& app = program_.app;
  const auto write = [&](const std::string& path, std::string_view text) {
    if (program_.files.FileExists(path)) program_.files.SetAttributes(path, kArchive);
    program_.files.WriteAll(path, text);
  };
  write(app.CausesJson(), json_);
  write(app.CausesHtml(), page_);
  write(app.CausesOfLoaded(),
        "<!DOCTYPE html>\r\n<meta charset=\"utf-8\"><title>Quillon</title>\r\n"
        "<meta http-equiv=\"refresh\" content=\"0;url=causes.html#" +
            CausesAnchor(std::string(FileNameOf(kWorkingRoute))) + "\">\r\n");
}

}  // namespace quillon
