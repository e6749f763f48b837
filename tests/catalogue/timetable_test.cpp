// The board of all routes: what is found and sorted, and that its acts are the main screen's.
#include "catalogue/TimetableScreen.h"

#include "catalogue/MainScreen.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"
#include "tests/world/TestProgram.h"

namespace quillon {
namespace {

/// Works on the board as long as it is open, where a user would.
class BoardFrontEnd : public HeadlessFrontEnd {
 public:
  using HeadlessFrontEnd::HeadlessFrontEnd;
  std::function<void(TimetableScreen&)> onBoard;
  void RunModal(Screen& screen, const std::function<bool()>& isOpen) override {
    auto* board = dynamic_cast<TimetableScreen*>(&screen);
    if (board == nullptr) return HeadlessFrontEnd::RunModal(screen, isOpen);
    onBoard(*board);
    if (isOpen()) board->btnOKClick();
  }
};

class TimetableTest : public ProgramTest {
 protected:
  TimetableTest() {
    FirstRun();
    options.answerYes = true;
    for (const auto& [zip, name] :
         {std::pair{"a", "Mühlenbach Süd"}, {"b", "Alder Valley"}, {"c", "Birkdale"}})
      StoreRoute(zip, name, RouteEntries(name));
    Write(AppPath("routes\\Saves\\b\\one.sav"), "1");
  }
  void OnBoard(const std::function<void(TimetableScreen&)>& act) {
    RecordedOutput output;
    const Options own = options;
    BoardFrontEnd frontEnd(output, own);
    frontEnd.onBoard = act;
    RunningProgram program(App(), frontEnd);
    OpenScreens& screens = program.Screens();
    screens.Do([&] { screens.Show("frmMain"); });
    auto& main = dynamic_cast<MainScreen&>(*screens.Find("frmMain"));
    main.TimerFlashOnTick();
    hintBefore_ = main.Hint();
    screens.Do([&] { main.btnTimetableClick(); });
    if (!screens.Ended()) hintAfter_ = dynamic_cast<MainScreen&>(*screens.Find("frmMain")).Hint();
    boxes_.clear();
    for (const auto& event : output.events)
      if (event["event"] == "box") boxes_.push_back(event["text"]);
  }
  static Strings Names(const TimetableScreen& board) {
    Strings names;
    for (int row = 0; row < board.RowCount(); ++row) names.push_back(board.RouteAt(row).name);
    return names;
  }
  Strings boxes_;
  std::string hintBefore_, hintAfter_;
};

TEST_F(TimetableTest, FindsSortsAndRemembersTheOrder) {
  using Column = TimetableScreen::Column;
  OnBoard([](TimetableScreen& board) {
    EXPECT_EQ(Names(board), (Strings{"Alder Valley", "Birkdale", "Mühlenbach Süd"}));
    board.Choose({1}, 1);
    board.Filter("sud MUHLEN");
    EXPECT_EQ(Names(board), Strings{"Mühlenbach Süd"});
    EXPECT_EQ(board.Current(), 0) << "something on view is always the current row";
    board.Filter("muhlen valley");
    EXPECT_EQ(board.RowCount(), 0);
    EXPECT_EQ(board.Current(), -1);
    EXPECT_FALSE(board.btnLoad.enabled);
    EXPECT_TRUE(board.lblNothing.visible);
    board.Filter("");
    board.Choose({2}, 2);
    board.SortBy(Column::Saves);
    EXPECT_EQ(board.RouteAt(board.Current()).zip, "a") << "the choice stays with its route";
    board.SortBy(Column::Saves);
    EXPECT_EQ(Names(board), (Strings{"Alder Valley", "Birkdale", "Mühlenbach Süd"}));
    board.TypeAhead("b", 5000);
    EXPECT_EQ(board.RouteAt(board.Current()).zip, "c");
    board.TypeAhead("M", 9000);
    board.TypeAhead("u", 9100);
    EXPECT_EQ(board.RouteAt(board.Current()).zip, "a");
  });
  OnBoard([](TimetableScreen& board) {
    EXPECT_EQ(board.SortColumn(), Column::Saves);
    EXPECT_TRUE(board.Descending());
    EXPECT_EQ(board.RouteAt(0).zip, "b");
  });
}

TEST_F(TimetableTest, LoadsRemovesSeveralAndMakesPermanentAsTheMainScreenDoes) {
  OnBoard([](TimetableScreen& board) {
    board.Choose({1}, 1);
    board.btnLoadClick();
  });
  EXPECT_EQ(Loaded(), "c");
  OnBoard([](TimetableScreen& board) {
    board.Choose({0, 1}, 0);
    EXPECT_FALSE(board.btnRemove.enabled) << "the loaded route is among them";
    board.Choose({0, 2}, 0);
    board.btnRemoveClick();
    EXPECT_EQ(Names(board), Strings{"Birkdale"});
  });
  EXPECT_EQ(boxes_.size(), 2u) << "one question, one answer";
  EXPECT_FALSE(Exists(AppPath("routes\\a.qnz")) || Exists(AppPath("routes\\b.qnz")));
  EXPECT_EQ(Current({"Temp", "Loaded"}), "Birkdale|c");
  OnBoard([](TimetableScreen& board) { board.btnPermanentClick(); });
  EXPECT_EQ(Loaded(), "No Data!");
  EXPECT_TRUE(Exists(GamePath("ROUTES\\c")));
  OnBoard([](TimetableScreen& board) { EXPECT_EQ(board.RowCount(), 0); });
  EXPECT_EQ(Run("start"), 0);
}

TEST_F(TimetableTest, VerifyRepairsAfterAQuestion) {
  DeleteSection("routes.ini", "b");
  OnBoard([](TimetableScreen& board) {
    int row = 0;
    while (board.RouteAt(row).zip != "b") ++row;
    board.Choose({row}, row);
    EXPECT_FALSE(board.btnRemove.enabled || board.btnLoad.enabled);
    board.btnVerifyClick();
    EXPECT_EQ(board.RowCount(), 3);
  });
  EXPECT_EQ(boxes_.size(), 2u);
  EXPECT_EQ(Ini("routes.ini", "b", "Name"), "Alder Valley");
  EXPECT_TRUE(hintBefore_.ends_with("then Verify.")) << hintBefore_;
  EXPECT_FALSE(hintAfter_.ends_with("then Verify.")) << hintAfter_;
}

}  // namespace
}  // namespace quillon
