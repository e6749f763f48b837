#include "catalogue/TimetableScreen.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "catalogue/GameFolders.h"
#include "catalogue/MainScreen.h"
#include "catalogue/PutBack.h"
#include "catalogue/RouteRemoval.h"
#include "core/text/Folded.h"
#include "core/text/SizeText.h"
#include "core/text/Text.h"
#include "shelf/Shelf.h"

namespace quillon {
namespace {

constexpr const char *kSection = "Timetable", *kTitle = "All routes";
constexpr std::int64_t kTypingPause = 1000;  // milliseconds after which a word begins anew
constexpr std::size_t kDay = 10;             // characters of an ISO date
constexpr std::size_t kMostNamed = 12;       // routes or findings in one box

struct ColumnText {
  const char *key, *head;
};
constexpr std::array<ColumnText, TimetableScreen::kColumns.size()> kColumnTexts = {{
    {"name", "Route"},
    {"zip", "Zip"},
    {"packed", "Packed"},
    {"unpacked", "Unpacked"},
    {"files", "Files"},
    {"added", "Taken in"},
    {"loaded", "Last loaded"},
    {"activities", "Activities"},
    {"saves", "Saves"},
}};

const ColumnText& TextsOf(TimetableScreen::Column column) {
  return kColumnTexts[static_cast<std::size_t>(column)];
}

/// The words of a folded text, as views into it.
std::vector<std::string_view> WordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (std::size_t at = 0; (at = text.find_first_not_of(' ', at)) != text.npos;) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    words.push_back(text.substr(at, end - at));
    at = end;
  }
  return words;
}

/// One a line; of many the first, and how many more.
std::string Listed(const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < std::min(lines.size(), kMostNamed); ++i) text += lines[i] + "\r\n";
  if (lines.size() > kMostNamed) text += "and " + std::to_string(lines.size() - kMostNamed) + " more\r\n";
  return text;
}

std::string Counted(std::size_t count, const char* one, const char* more) {
  return std::to_string(count) + " " + (count == 1 ? one : more);
}

}  // namespace

TimetableScreen::TimetableScreen(Program& program) : ProgressScreen(program, "frmTimetable") {
  const std::string file = program_.app.SettingsIni(),
                    sort = program_.ini.ReadIni(kSection, "Sort", "name", file);
  for (const Column column : kColumns)
    if (sort == TextsOf(column).key) sortColumn_ = column;
  descending_ = program_.ini.ReadIni(kSection, "Descending", "No", file) == "Yes";
}

const char* TimetableScreen::HeadOf(Column column) { return TextsOf(column).head; }

std::string TimetableScreen::TextOf(const RouteDetails& route, Column column) {
  switch (column) {
    case Column::Name: return route.catalogued ? route.name : "(not in the catalogue)";
    case Column::Zip: return route.zip;
    case Column::Packed: return SizeText(route.packed);
    case Column::Unpacked: return route.damaged ? "damaged" : SizeText(route.bytes);
    case Column::Files: return route.damaged ? "" : std::to_string(route.files);
    case Column::Added: return route.added.substr(0, kDay);
    case Column::LastLoaded: return route.lastLoaded.empty() ? "never" : route.lastLoaded.substr(0, kDay);
    case Column::Activities:
      return route.playable && route.playable->of > 0
                 ? std::to_string(route.playable->playable) + " of " + std::to_string(route.playable->of)
                 : std::to_string(route.activities);
    case Column::Saves: return std::to_string(route.saves);
  }
  return {};
}

MainScreen& TimetableScreen::Main() const {
  return dynamic_cast<MainScreen&>(*program_.stage.Find("frmMain"));
}

void TimetableScreen::Activate() { Refresh(); }

void TimetableScreen::Refresh() {
  const auto zips = ChosenZips();
  const std::string current = current_ < 0 ? "" : RouteAt(current_).zip;
  // While this works the rows of before are on view.
  std::vector<RouteDetails> routes;
  {
    const Work work(*this);
    routes = DetailsOfRoutes(program_, [this](std::size_t done, std::size_t all) {
      Detail(done, all, "routes");
      Yield();
    });
    shelf_ = Shelf(program_).List();
  }
  routes_ = std::move(routes);
  FoldTexts();
  Sort();
  ApplyFilter();
  ChooseZips(zips, current);
}

void TimetableScreen::FoldTexts() {
  searched_.clear();
  folded_.clear();
  zipKeys_.clear();
  for (const auto& route : routes_) {
    folded_.push_back(Folded(route.name));
    zipKeys_.push_back(UpperCase(route.zip));
    searched_.push_back(folded_.back() + "\n" + Folded(route.zip) + "\n" + Folded(route.description));
  }
}

bool TimetableScreen::ComesFirst(std::size_t a, std::size_t b) const {
  const RouteDetails &x = routes_[a], &y = routes_[b];
  switch (sortColumn_) {
    case Column::Name: return a < b;
    case Column::Zip: return ComesBefore(zipKeys_[a], zipKeys_[b]);
    case Column::Packed: return x.packed < y.packed;
    case Column::Unpacked: return x.bytes < y.bytes;
    case Column::Files: return x.files < y.files;
    case Column::Added: return x.added < y.added;
    case Column::LastLoaded: return x.lastLoaded < y.lastLoaded;
    case Column::Activities: return x.activities < y.activities;
    case Column::Saves: return x.saves < y.saves;
  }
  return false;
}

/// Equal ones stay in the order of the list of routes, whichever way round.
void TimetableScreen::Sort() {
  order_.resize(routes_.size());
  std::iota(order_.begin(), order_.end(), std::size_t{0});
  std::stable_sort(order_.begin(), order_.end(), [this](std::size_t a, std::size_t b) {
    return descending_ ? ComesFirst(b, a) : ComesFirst(a, b);
  });
}

bool TimetableScreen::Matches(std::size_t route, const std::vector<std::string_view>& words) const {
  return std::all_of(words.begin(), words.end(),
                     [&](std::string_view word) { return Contains(searched_[route], word); });
}

void TimetableScreen::ApplyFilter() {
  const std::string folded = Folded(filter_);
  const auto words = WordsOf(folded);
  rows_.clear();
  for (const std::size_t route : order_)
    if (Matches(route, words)) rows_.push_back(route);
  chosen_.clear();
  current_ = -1;
  ++revision_;
  ShowCounts();
}

void TimetableScreen::Filter(const std::string& text) {
  if (text == filter_) return;
  const auto zips = ChosenZips();
  const std::string current = current_ < 0 ? "" : RouteAt(current_).zip;
  filter_ = text;
  ApplyFilter();
  ChooseZips(zips, current);
}

void TimetableScreen::SortBy(Column column) {
  const auto zips = ChosenZips();
  const std::string current = current_ < 0 ? "" : RouteAt(current_).zip;
  descending_ = column == sortColumn_ && !descending_;
  sortColumn_ = column;
  program_.ini.WriteIni(kSection, "Sort", TextsOf(column).key, program_.app.SettingsIni());
  program_.ini.WriteIni(kSection, "Descending", descending_ ? "Yes" : "No", program_.app.SettingsIni());
  Sort();
  ApplyFilter();
  ChooseZips(zips, current);
}

/// One letter again and again goes through all rows that begin with it.
void TimetableScreen::TypeAhead(std::string_view text, std::int64_t now) {
  if (now - typedAt_ > kTypingPause) typed_.clear();
  typedAt_ = now;
  const std::string letters = Folded(text);
  const bool again = typed_ == letters;
  if (!again) typed_ += letters;
  const int from = current_ + (typed_ == letters ? 1 : 0);
  for (int i = 0; i < RowCount(); ++i) {
    const int row = (std::max(from, 0) + i) % RowCount();
    if (!folded_[rows_[static_cast<std::size_t>(row)]].starts_with(typed_)) continue;
    Choose({row}, row);
    return;
  }
}

void TimetableScreen::Choose(std::vector<int> rows, int current) {
  const auto isRow = [this](int row) { return row >= 0 && row < RowCount(); };
  std::erase_if(rows, [&](int row) { return !isRow(row); });
  chosen_ = std::move(rows);
  current_ = isRow(current) ? current : -1;
  ShowCurrent();
  EnableButtons();
}

std::vector<std::string> TimetableScreen::ChosenZips() const {
  std::vector<std::string> zips;
  for (const int row : chosen_) zips.push_back(RouteAt(row).zip);
  return zips;
}

/// What is no longer on view is no longer chosen; of what is, something is always the current row.
void TimetableScreen::ChooseZips(const std::vector<std::string>& zips, const std::string& current) {
  std::vector<std::string> sorted = zips;
  std::sort(sorted.begin(), sorted.end());
  std::vector<int> rows;
  int found = -1, loaded = 0;
  for (int row = 0; row < RowCount(); ++row) {
    const RouteDetails& route = RouteAt(row);
    if (std::binary_search(sorted.begin(), sorted.end(), route.zip)) rows.push_back(row);
    if (route.zip == current) found = row;
    if (route.loaded) loaded = row;
  }
  if (found < 0) found = rows.empty() ? (filter_.empty() ? loaded : 0) : rows.front();
  if (rows.empty()) rows.push_back(found);
  Choose(std::move(rows), found);
}

void TimetableScreen::ShowCounts() {
  const std::string all = Counted(routes_.size(), "route", "routes");
  SetLabel("lblCount", lblCount,
           rows_.size() == routes_.size() ? all : std::to_string(rows_.size()) + " of " + all, true);
  std::string nothing;
  if (routes_.empty())
    nothing =
        "Here will be your routes.\nDrop route zips on the main screen, then click Route manager to add "
        "them.";
  else if (rows_.empty())
    nothing =
        "No route has all these words in its name, its zip name or its description.\nPress Esc to see all "
        "routes again.";
  SetLabel("lblNothing", lblNothing, nothing, !nothing.empty());
}

void TimetableScreen::ShowCurrent() {
  for (List* list : {&ListDocuments, &ListSaves, &ListShelf}) *list = {};
  imgRoute.clear();
  if (current_ < 0) {
    for (Label* label : {&lblName, &lblFacts, &lblDescription}) label->text.clear();
    return;
  }
  const RouteDetails& route = RouteAt(current_);
  imgRoute = PreviewOf(route);
  lblName.text = TextOf(route, Column::Name);
  lblFacts.text = SizeText(route.bytes) + " in " + Counted(route.files, "file", "files") + ", " +
                  SizeText(route.packed) + " packed";
  lblDescription.text = route.description;
  ListDocuments.rows = program_.files.ListFiles(program_.app.RouteInfo(route.zip) + "\\*.*");
  ListSaves.rows = program_.files.ListFiles(
      (route.loaded ? program_.BelowGame(kWorkingSaves) : program_.app.Saves(route.zip)) + "\\*.sav");
  for (const auto& entry : shelf_)
    if (EqualNoCase(entry.zip, route.zip)) ListShelf.rows.push_back(ShelfRowOf(entry));
}

void TimetableScreen::EnableButtons() {
  const auto all = [this](const auto& test) {
    return !chosen_.empty() &&
           std::all_of(chosen_.begin(), chosen_.end(), [&](int row) { return test(RouteAt(row)); });
  };
  const bool one = chosen_.size() == 1 && current_ >= 0;
  const bool catalogued = all([](const RouteDetails& route) { return route.catalogued; });
  btnLoad.enabled = one && catalogued;
  btnDocuments.enabled = one;
  btnFolder.enabled = one;
  btnCheckup.enabled = catalogued;
  btnRemove.enabled = catalogued && all([](const RouteDetails& route) { return !route.loaded; });
  btnPutBack.enabled = one && !ListShelf.rows.empty();
  btnPermanent.enabled = one && catalogued && RouteAt(current_).loaded;
}

void TimetableScreen::btnLoadClick() {
  if (!CanActOn(current_) || !btnLoad.enabled) return;
  Main().WishFor(MainScreen::Wish::Load, RouteAt(current_).name);
  program_.stage.Unload(Name());
}

void TimetableScreen::btnPermanentClick() {
  if (!CanActOn(current_) || !btnPermanent.enabled) return;
  Main().WishFor(MainScreen::Wish::MakePermanent, RouteAt(current_).name);
  program_.stage.Unload(Name());
}

void TimetableScreen::btnDocumentsClick() {
  if (!CanActOn(current_)) return;
  if (ListDocuments.current >= 0) return ListDocumentsPress(ListDocuments.current);
  program_.shell.Explore(program_.app.RouteInfo(RouteAt(current_).zip) + "\\");
}

void TimetableScreen::ListDocumentsPress(int row) {
  if (!CanActOn(current_) || row < 0 || row >= static_cast<int>(ListDocuments.rows.size())) return;
  ListDocuments.current = row;
  program_.shell.OpenInShell(program_.app.RouteInfo(RouteAt(current_).zip) + "\\" +
                             ListDocuments.rows[static_cast<std::size_t>(row)]);
}

void TimetableScreen::btnFolderClick() {
  if (CanActOn(current_)) program_.shell.Explore(program_.app.Routes() + "\\");
}

void TimetableScreen::btnCheckupClick() {
  if (!CanActOn(current_) || !btnCheckup.enabled || !GameWasFound(program_)) return;
  program_.Step("Judging routes");
  program_.shared.RoutesToJudge = ChosenZips();
  program_.shared.ShowReportWhenDone = true;
  program_.stage.ShowModal("frmActivityCheck");
}

void TimetableScreen::btnRemoveClick() {
  if (!CanActOn(current_) || !btnRemove.enabled) return;
  program_.Step("Removing routes");
  std::vector<std::string> names;
  for (const int row : chosen_) names.push_back(RouteAt(row).name);
  const std::string which =
      names.size() == 1 ? names.front() : "these " + std::to_string(names.size()) + " routes";
  if (!program_.boxes.AskYesNo(names.size() == 1 ? "Remove route?" : "Remove routes?",
                               "Are you sure you want to completely remove " + which + " from Quillon?" +
                                   (names.size() == 1 ? "" : "\r\n\r\n" + Listed(names))))
    return;
  {
    const Work work(*this);
    for (std::size_t i = 0; i < names.size(); ++i) {
      Detail(i, names.size(), "routes");
      RouteRemoval(program_, names[i]).RemoveRoute(names.size() == 1);
    }
  }
  if (names.size() > 1)
    program_.boxes.Tell("Quillon", std::to_string(names.size()) + " routes have been removed from Quillon.");
  Main().ShowAfterRemoval();
  Refresh();
}

void TimetableScreen::btnPutBackClick() {
  if (!CanActOn(current_) || !btnPutBack.enabled) return;
  const std::string zip = RouteAt(current_).zip;
  const auto newest = std::find_if(shelf_.begin(), shelf_.end(),
                                   [&](const ShelfEntry& entry) { return EqualNoCase(entry.zip, zip); });
  if (newest == shelf_.end() ||
      !program_.boxes.AskYesNo(kTitle, "Put these rescued files back where they came from?\r\n\r\n" +
                                           ShelfRowOf(*newest) + "\r\n" + newest->why))
    return;
  if (!TryToPutBack(program_, *newest)) return;
  program_.boxes.Tell(kTitle, "The files of " + zip + " are back where they came from.");
  Refresh();
}

void TimetableScreen::btnVerifyClick() {
  if (working) return;
  std::vector<CatalogueFinding> findings;
  {
    const Work work(*this);
    try {
      const MayBeGivenUp scope(*this);
      findings = CatalogueCheck(program_, *this).Run(false, false);
    } catch (const GivenUp&) {
      return;
    }
  }
  if (findings.empty()) return program_.boxes.Tell(kTitle, "The catalogue and the files fit together.");
  OfferRepair(findings);
  Refresh();
}

void TimetableScreen::OfferRepair(const std::vector<CatalogueFinding>& findings) {
  const auto lines = [](const std::vector<CatalogueFinding>& list) {
    std::vector<std::string> texts;
    for (const auto& finding : list)
      if (!finding.repaired) texts.push_back(finding.zip + ": " + finding.KindText());
    return texts;
  };
  if (!CanBeRepaired(findings))
    return program_.boxes.Tell(kTitle, "Not all fits together:\r\n\r\n" + Listed(lines(findings)) + "\r\n" +
                                           findings.front().zip + ": " + findings.front().Advice());
  if (!program_.boxes.AskYesNo(kTitle, "Not all fits together:\r\n\r\n" + Listed(lines(findings)) +
                                           "\r\nRepair what can be repaired? Nothing is deleted."))
    return;
  std::vector<CatalogueFinding> left;
  {
    const Work work(*this);
    left = CatalogueCheck(program_, *this).Run(false, true);
  }
  std::string text = "All of it is repaired.";
  if (AnythingLeft(left)) {
    const auto first =
        std::find_if(left.begin(), left.end(), [](const auto& finding) { return !finding.repaired; });
    text = "This could not be repaired:\r\n\r\n" + Listed(lines(left)) + "\r\n" + first->zip + ": " +
           first->Advice();
  }
  program_.boxes.Tell(kTitle, text);
}

void TimetableScreen::btnOKClick() {
  if (!working) program_.stage.Unload(Name());
}

}  // namespace quillon
