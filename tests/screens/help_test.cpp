// The help's window, from every screen.
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWindow>

#include "screens/HelpWindow.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

class HelpTest : public ScreensTest {
 protected:
  HelpWindow& Help() { return *frontEnd_.Help(); }
  bool HelpIsOpen() { return frontEnd_.Help() != nullptr && frontEnd_.Help()->isVisible(); }
  template <typename Widget>
  Widget& In(const char* name) {
    return *Help().findChild<Widget*>(name);
  }
  std::string PageOnView() {
    const HelpPage* page = Help().PageOnView();
    return page == nullptr ? "" : page->file;
  }
  int FrontTab() { return Help().findChild<QTabWidget*>()->currentIndex(); }
  void PressF1(const char* screen) { QTest::keyClick(&View(screen), Qt::Key_F1); }
};

TEST_F(HelpTest, TheButtonOpensTheContentsOnce) {
  Start();
  Click("frmMain", "btnHelp");
  ASSERT_TRUE(HelpIsOpen());
  const HelpWindow* window = &Help();
  EXPECT_EQ(FrontTab(), 0);
  EXPECT_EQ(PageOnView(), Help().Book().Home().file);
  frontEnd_.ShowHelp(program_->Get().app.HelpFile(), "FIND");
  EXPECT_EQ(FrontTab(), 2);
  frontEnd_.ShowHelp(program_->Get().app.HelpFile(), "INDEX");
  EXPECT_EQ(FrontTab(), 1);
  Help().close();
  frontEnd_.ShowHelp(program_->Get().app.HelpFile(), "NOTHING");
  EXPECT_FALSE(HelpIsOpen());
  Click("frmMain", "btnManage");
  Click("frmRoutes", "btnHelp");
  EXPECT_TRUE(HelpIsOpen());
  EXPECT_EQ(&Help(), window);
  EXPECT_EQ(FrontTab(), 0);
}

TEST_F(HelpTest, TheLettersOfTheTabsLeadIntoTheirLines) {
  Start();
  Click("frmMain", "btnHelp");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Help()));
  QTest::keyClick(&Help(), Qt::Key_F, Qt::AltModifier);
  EXPECT_TRUE(WaitFor([&] { return In<QLineEdit>("words").hasFocus(); }));
  QTest::keyClick(&Help(), Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(WaitFor([&] { return In<QLineEdit>("filter").hasFocus(); }));
}

TEST_F(HelpTest, F1ExplainsTheScreenOnTop) {
  Start();
  PressF1("frmMain");
  ASSERT_TRUE(HelpIsOpen());
  EXPECT_EQ(PageOnView(), "help/main-screen.html");
  Click("frmMain", "btnOptions");
  QTest::keyClick(&Control<QLineEdit>("frmOptions", "txtTSPath"), Qt::Key_F1);
  EXPECT_EQ(PageOnView(), "help/options.html");
  Click("frmOptions", "btnCancel");
  Click("frmMain", "btnManage");
  Click("frmRoutes", "btnCheckup");
  PressF1("frmReportOptions");
  EXPECT_EQ(PageOnView(), "help/checkup-options.html");
  EXPECT_EQ(Help().windowHandle()->transientParent(), View("frmReportOptions").windowHandle())
      << "a modal screen shuts out what is not its own";
}

/// In a message box, too; and a box that comes then does not belong to the help.
TEST_F(HelpTest, F1HelpsWithAQuestion) {
  StoreRoute("r10", "Route 10", {});
  Start();
  std::string page;
  const QWindow* parent = nullptr;
  QTimer::singleShot(100, [&] {
    QWidget* box = QApplication::activeModalWidget();
    QTest::keyClick(box, Qt::Key_F1);
    page = PageOnView();
    parent = Help().windowHandle()->transientParent();
    EXPECT_EQ(parent, box->windowHandle());
    static_cast<QMessageBox*>(box)->button(QMessageBox::No)->click();
  });
  frontEnd_.AskYesNo("Remove route?", "Really?");
  EXPECT_EQ(page, "help/main-screen.html");
  Help().activateWindow();
  AnswerBoxes("OK");
  frontEnd_.Tell("title", "text");
  EXPECT_EQ(boxes_, "title|text");
}

TEST_F(HelpTest, AFindingLeadsToItsPageAndBack) {
  Start();
  PressF1("frmMain");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Help()));
  QTest::keyClick(&Help(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(FrontTab(), 2);
  auto& words = In<QLineEdit>("words");
  QTest::keyClicks(&words, "oegenfield3");
  auto& found = In<QListWidget>("found");
  ASSERT_EQ(found.count(), 1);
  QTest::keyClick(&words, Qt::Key_Return);
  EXPECT_EQ(PageOnView(), "help/errors.html");
  EXPECT_EQ(In<QTextBrowser>("page").textCursor().selectedText(), "oegenfield3");
  EXPECT_EQ(In<QTreeWidget>("contents").currentItem()->text(0), "Error messages, one by one");
  QTest::keyClick(&Help(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(PageOnView(), "help/main-screen.html");
  words.setText("nosuchword");
  EXPECT_EQ(found.count(), 0);
  QTest::keyClick(&Help(), Qt::Key_Escape);
  EXPECT_FALSE(HelpIsOpen());
}

TEST_F(HelpTest, AKeywordLeadsToItsAnchor) {
  Start();
  frontEnd_.ShowHelp(program_->Get().app.HelpFile(), "INDEX");
  auto& index = In<QListWidget>("index");
  QTest::keyClicks(&In<QLineEdit>("filter"), "DISK FULL");
  int visible = 0;
  for (int row = 0; row < index.count(); ++row) {
    if (index.isRowHidden(row)) continue;
    ++visible;
    index.setCurrentRow(row);
  }
  EXPECT_EQ(visible, 1);
  EXPECT_EQ(In<QTextBrowser>("page").source().fragment(), "e61");
  EXPECT_GT(In<QTextBrowser>("page").verticalScrollBar()->value(), 0) << "the anchor is far down";
}

TEST_F(HelpTest, F1TurnsToTheErrorOnView) {
  Start();
  QTimer::singleShot(0,
                     [&] { frontEnd_.Handle([] { throw RunTimeError(ErrorNumber::DiskFull, "/x\\y"); }); });
  QTimer shown;
  int scrolled = 0;
  QObject::connect(&shown, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    shown.stop();
    QTest::keyClick(box, Qt::Key_F1);
    WaitFor([&] { return (scrolled = In<QTextBrowser>("page").verticalScrollBar()->value()) > 0; });
    EXPECT_EQ(In<QTextBrowser>("page").source().fragment(), "e61");
    box->button(QMessageBox::Close)->click();
  });
  shown.start(10);
  EXPECT_EQ(frontEnd_.Run(), 1);
  EXPECT_GT(scrolled, 0) << "the anchor is far down";
}

TEST_F(HelpTest, AHelpThatIsMissingOrBrokenIsTold) {
  const std::string file = AppPath("resources\\files\\help.hlp");
  Start();
  AnswerBoxes("OK");
  for (const bool missing : {false, true}) {
    missing ? Remove(file) : Write(file, "WinHelp");
    boxes_.clear();
    Click("frmMain", "btnHelp");
    EXPECT_NE(boxes_.find("help.hlp"), std::string::npos) << boxes_;
    boxes_.clear();
    PressF1("frmMain");
    EXPECT_NE(boxes_.find("help.hlp"), std::string::npos) << boxes_;
    EXPECT_EQ(frontEnd_.Help(), nullptr);
  }
  EXPECT_TRUE(IsOpen("frmMain"));
}

}  // namespace
}  // namespace quillon
