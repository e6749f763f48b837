// The model of frmTimetable: all routes with all that is known of them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/CatalogueCheck.h"
#include "catalogue/RouteDetails.h"
#include "core/Controls.h"
#include "core/Screen.h"

namespace quillon {

class MainScreen;

class TimetableScreen : public ProgressScreen {
 public:
  enum class Column { Name, Zip, Packed, Unpacked, Files, Added, LastLoaded, Activities, Saves };
  static constexpr std::array kColumns = {Column::Name,       Column::Zip,        Column::Packed,
                                          Column::Unpacked,   Column::Files,      Column::Added,
                                          Column::LastLoaded, Column::Activities, Column::Saves};

  explicit TimetableScreen(Program& program);

  // What is on view. A row is a place among those that the filter leaves, from 0.
  int RowCount() const { return static_cast<int>(rows_.size()); }
  const RouteDetails& RouteAt(int row) const { return routes_[rows_[static_cast<std::size_t>(row)]]; }
  std::string PreviewOf(const RouteDetails& route) const { return program_.app.Preview(route.zip); }
  static std::string TextOf(const RouteDetails& route, Column column);
  static const char* HeadOf(Column column);
  /// Grows whenever the rows are others than before, or in another order.
  int Revision() const { return revision_; }
  Column SortColumn() const { return sortColumn_; }
  bool Descending() const { return descending_; }
  int Current() const { return current_; }
  const std::vector<int>& Chosen() const { return chosen_; }

  /// How many routes are on view; what to do where there would be rows, empty while there are some.
  Label lblCount, lblNothing;
  // Of the current row. Its picture's path; empty without one.
  std::string imgRoute;
  Label lblName, lblFacts, lblDescription;
  List ListDocuments, ListSaves, ListShelf;
  Button btnLoad{.enabled = false}, btnDocuments{.enabled = false}, btnFolder{.enabled = false},
      btnCheckup{.enabled = false}, btnRemove{.enabled = false}, btnPutBack{.enabled = false},
      btnPermanent{.enabled = false}, btnVerify, btnHelp, btnOK;

  /// Reads everything anew; filter, order and choice stay.
  void Activate() override;

  /// Leaves the rows that have all words of `text` in name, zip name or description, without regard to case
  /// and accents.
  void Filter(const std::string& text);
  /// By the same column once more: turned round. Remembered.
  void SortBy(Column column);
  /// A letter was typed, `now` in milliseconds of any clock: the next row whose name begins with what was
  /// typed in a row becomes the current one.
  void TypeAhead(std::string_view text, std::int64_t now);
  /// Makes `rows` the chosen ones and `current` the one whose details are shown; -1 for none.
  void Choose(std::vector<int> rows, int current);

  void btnLoadClick();
  /// The chosen document, else the folder of the route's documents.
  void btnDocumentsClick();
  void ListDocumentsPress(int row);
  void btnFolderClick();
  void btnCheckupClick();
  /// Asks once for all chosen routes.
  void btnRemoveClick();
  void btnPutBackClick();
  void btnPermanentClick();
  void btnVerifyClick();
  void btnHelpClick() { program_.shell.ShowHelp(program_.app.HelpFile(), "TOC"); }
  void btnOKClick();

 private:
  void Refresh();
  void FoldTexts();
  void Sort();
  void ApplyFilter();
  bool Matches(std::size_t route, const std::vector<std::string_view>& words) const;
  bool ComesFirst(std::size_t a, std::size_t b) const;
  std::vector<std::string> ChosenZips() const;
  void ChooseZips(const std::vector<std::string>& zips, const std::string& current);
  void ShowCounts();
  void ShowCurrent();
  void EnableButtons();
  void OfferRepair(const std::vector<CatalogueFinding>& findings);
  bool CanActOn(int row) const { return row >= 0 && !working; }
  MainScreen& Main() const;

  std::vector<RouteDetails> routes_;                      // in the order of the list of routes
  std::vector<std::string> searched_, zipKeys_, folded_;  // of the same: all text, zip name, name
  std::vector<ShelfEntry> shelf_;
  std::vector<std::size_t> order_, rows_;  // of routes: sorted; and what the filter leaves
  std::vector<int> chosen_;
  int current_ = -1, revision_ = 0;
  Column sortColumn_ = Column::Name;
  bool descending_ = false;
  std::string filter_, typed_;
  std::int64_t typedAt_ = 0;
};

}  // namespace quillon
