// The route manager, the options, dropped files, places and texts.
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScreen>
#include <QUrl>

#include "catalogue/OptionsScreen.h"
#include "catalogue/ShelfScreen.h"
#include "checkup/CauseFile.h"
#include "core/text/Text.h"
#include "intake/RoutesScreen.h"
#include "intake/WhyScreen.h"
#include "loading/LoadScreen.h"
#include "screens/Fonts.h"
#include "screens/Views.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

class OtherScreensTest : public ScreensTest {
 protected:
  void DropFiles(const char* screen, const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const auto& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
    data.setUrls(urls);
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&View(screen), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&View(screen), &drop);
  }
  void ExpectWhole(const QLabel& label) {
    const QRect room =
        label.fontMetrics().boundingRect(QRect(0, 0, label.width(), 2000), Qt::TextWordWrap, label.text());
    const std::string name =
        label.window()->objectName().toStdString() + " " + label.objectName().toStdString();
    EXPECT_LE(room.height(), label.height()) << name;
    EXPECT_LE(room.width(), label.width()) << name;
  }
  /// A rescued activity of the route.
  void Rescue(const std::string& zip, const std::string& day, const std::string& why) {
    const std::string folder = "rescued\\" + zip + "\\" + day + " 12-30-00";
    Write(AppPath(folder + "\\shelf.txt"), why + "\r\n");
    Write(AppPath(folder + "\\app\\routes\\Saves\\" + zip + "\\x.sav"), zip);
  }
};

TEST_F(OtherScreensTest, ThePaneExplainsTheButtonUnderThePointer) {
  Start();
  Click("frmMain", "btnManage");
  const auto& routes = ModelOf<RoutesScreen>("frmRoutes");
  for (const char* button : {"btnClean", "btnPack", "btnOK"}) {
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(&ButtonOf("frmRoutes", button), &enter);
  }
  EXPECT_TRUE(routes.lblInstructHead.text.starts_with("Use Pack Route")) << "OK has no explanation";
  EXPECT_TRUE(routes.lblInstructMid.text.ends_with("\r\n\r\nFor more info please click 'Help'."));
}

TEST_F(OtherScreensTest, AddRoutesBlinksUntilSomethingIsClicked) {
  Start();
  Click("frmMain", "btnManage");
  auto& routes = ModelOf<RoutesScreen>("frmRoutes");
  EXPECT_TRUE(WaitFor([&] { return routes.cmdAddRoutes.picture == "addover"; }, 2000));
  Click("frmRoutes", "btnCheckup");
  ASSERT_TRUE(IsOpen("frmReportOptions"));
  EXPECT_EQ(routes.cmdAddRoutes.picture, "addoff");
  EXPECT_FALSE(WaitFor([&] { return routes.cmdAddRoutes.picture == "addover"; }, 1200));
  QTest::keyClick(&View("frmReportOptions"), Qt::Key_Escape);
  EXPECT_TRUE(WaitFor([&] { return routes.cmdAddRoutes.picture == "addover"; }, 2000)) << "it came up again";
}

TEST_F(OtherScreensTest, TheCheckupOffersFirstWhatItHasFound) {
  CauseList list{.causes = {{}}};
  for (int i = 0; i < 60; ++i) list.causes[0].moves.push_back({"x" + std::to_string(i), std::to_string(i)});
  Write(DataPath("misc_info\\causes.json"), CausesJson(list));
  Start();
  Click("frmMain", "btnManage");
  Click("frmRoutes", "btnCheckup");
  EXPECT_FALSE(ButtonOf("frmReportOptions", "btnFix").isEnabled());
  QTest::keyClick(&View("frmReportOptions"), Qt::Key_Escape);
  for (const auto& move : list.causes[0].moves) Write(GamePath("TRAINS\\TRAINSET\\" + move.from), "");
  Click("frmRoutes", "btnCheckup");
  QString order;
  for (auto* view = &View("frmReportOptions"); order.count(' ') < 4; QTest::keyClick(view, Qt::Key_Tab))
    order += view->focusWidget()->objectName() + ' ';
  EXPECT_EQ(order, "btnCauses btnFix btnOK btnCancel ") << "a grey box can't be changed";
  QTimer::singleShot(100, [] {
    EXPECT_LT(QApplication::activeModalWidget()->height(), 600) << "the buttons are on the display";
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  });
  Click("frmReportOptions", "btnFix");
}

TEST_F(OtherScreensTest, PackRefusesWhatIsNoRoute) {
  Start();
  Click("frmMain", "btnManage");
  auto& routes = ModelOf<RoutesScreen>("frmRoutes");
  AnswerBoxes("OK");
  const std::string deep = "|Not a full route!  Pick the actual route folder.";
  const std::pair<std::string, std::string> cases[] = {
      {"", ""},
      {Home(), "Quillon|That is not a route!"},
      {Game() + "/ROUTES", "Not a route...|You can not pack the whole routes folder!"},
      {Game() + "\\routes\\USA1", "Not a custom route...|USA1 is not a custom route and can not be packed."},
      {Game() + "/ROUTES/Quillon-route",
       "Not a standard route...|This route is used internally by Quillon and can not be packed."},
      {Game() + "/ROUTES/Mine/Tiles", "Quillon" + deep},
      {Game() + "/Routes2/foo", "Quillon" + deep},
  };
  for (const auto& [folder, box] : cases) {
    boxes_.clear();
    frontEnd_.Handle([&] { routes.PackFolderPicked(folder); });
    EXPECT_EQ(boxes_, box) << folder;
  }
}

TEST_F(OtherScreensTest, PackAsksAboutARealRoute) {
  Start();
  Click("frmMain", "btnManage");
  Write(GamePath("ROUTES\\My Route\\my.trk"), "");
  QTimer::singleShot(0, [&] {
    EXPECT_EQ(TextOf("frmPackConfirm", "lblRouteName"), "My Route");
    QTest::keyClick(&View("frmPackConfirm"), Qt::Key_Escape);
  });
  frontEnd_.Handle(
      [&] { ModelOf<RoutesScreen>("frmRoutes").PackFolderPicked(Game() + "/ROUTES/My Route/"); });
  EXPECT_EQ(program_->Get().shared.PackNameField, "my route");
  EXPECT_EQ(program_->Get().shared.PackParentField, LowerCase(Game()) + "\\routes");
  EXPECT_FALSE(IsOpen("frmPackConfirm"));
}

TEST_F(OtherScreensTest, ARescueIsChosenByKeyPutBackAndDeleted) {
  const std::string endless(300, 'x');
  Rescue("valley", "2026-05-01", "A load " + endless + " " + endless);
  Rescue("glacier", "2026-05-02", "A load.");
  Start();
  Click("frmMain", "btnManage");
  AnswerBoxes("Yes");
  QTimer shown;
  QObject::connect(&shown, &QTimer::timeout, [&] {
    if (!IsOpen("frmShelf") || ModelOf<ShelfScreen>("frmShelf").ListShelf.rows.empty()) return;
    shown.stop();
    auto& rows = Control<HoverList>("frmShelf", "ListShelf");
    EXPECT_TRUE(rows.hasFocus());
    EXPECT_FALSE(ButtonOf("frmShelf", "btnDrop").isEnabled());
    for (const int key : {Qt::Key_Down, Qt::Key_End}) QTest::keyClick(&rows, static_cast<Qt::Key>(key));
    ExpectWhole(Control<QLabel>("frmShelf", "lblWhy"));
    Hover(rows, RowAt(rows, 0));
    QTest::keyClick(&rows, Qt::Key_Return);
    Click("frmShelf", "btnPutBack");
    EXPECT_EQ(ReadBytes(AppPath("routes\\Saves\\valley\\x.sav")), "valley") << "hovering is not selecting";
    EXPECT_FALSE(Exists(AppPath("routes\\Saves\\glacier\\x.sav")));
    Press(rows, 0);
    EXPECT_EQ(TextOf("frmShelf", "lblWhy").substr(0, 8), "A load.\n");
    Click("frmShelf", "btnDrop");
    EXPECT_FALSE(Exists(AppPath("rescued\\glacier"))) << boxes_;
    EXPECT_TRUE(Exists(AppPath("rescued\\valley")));
    EXPECT_EQ(rows.model()->rowCount(), 1);
    QTest::keyClick(&rows, Qt::Key_Escape);
  });
  shown.start(10);
  Click("frmRoutes", "btnShelf");
  EXPECT_FALSE(IsOpen("frmShelf"));
  EXPECT_EQ(program_->Screens().Top()->Name(), "frmRoutes");
}

TEST_F(OtherScreensTest, WhyTellsTheReasonsOfTheLastTime) {
  const std::string endless(400, 'x');
  Write(AppPath("intake.log"), "1\tBAD\told\tx\r\n2\tBAD\tcut\tit broke off\r\n2\tADD\tfoo\t" + endless);
  Start();
  Click("frmMain", "btnManage");
  QTimer shown;
  QObject::connect(&shown, &QTimer::timeout, [&] {
    if (!IsOpen("frmWhy") || ModelOf<WhyScreen>("frmWhy").ListWhy.current < 0) return;
    shown.stop();
    auto& rows = Control<HoverList>("frmWhy", "ListWhy");
    EXPECT_TRUE(rows.hasFocus());
    EXPECT_EQ(rows.model()->rowCount(), 2);
    ExpectWhole(Control<QLabel>("frmWhy", "lblReason"));
    QTest::keyClick(&rows, Qt::Key_Down);
    EXPECT_EQ(TextOf("frmWhy", "lblReason"), "cut:\nit broke off");
    QTest::keyClick(&rows, Qt::Key_Return);
  });
  shown.start(10);
  Click("frmRoutes", "btnWhy");
  EXPECT_FALSE(IsOpen("frmWhy"));
}

TEST_F(OtherScreensTest, AFaultyDownloadIsSetAsideAndTheOthersAreAdded) {
  Drop("foo.zip", RouteEntries("Foo Line"));
  Drop("odd.zip", RouteEntries("Odd Line", {Entry("route\\view.bmp", "BM" + std::string(9000, 'x'))}));
  Start();
  AnswerBoxes("Set it aside and go on");
  QTimer::singleShot(0, [&] { frontEnd_.Handle([&] { program_->Screens().Show("frmZipCheck"); }); });
  ASSERT_EQ(frontEnd_.Run(), DesktopFrontEnd::kAddAgain);
  program_.reset();
  Start();
  QTimer end;
  QObject::connect(&end, &QTimer::timeout, [&] {
    if (IsOpen("frmInitProg") && ButtonOf("frmInitProg", "btnOK").isEnabled())
      frontEnd_.Handle([&] { program_->Screens().ShutDown(true); });
  });
  end.start(10);
  EXPECT_EQ(frontEnd_.GoOn(), 0) << boxes_;
  EXPECT_TRUE(Exists(AppPath("original_zips\\Not_Installed\\odd.zip")));
  EXPECT_TRUE(Exists(AppPath("routes\\foo.qnz")));
}

TEST_F(OtherScreensTest, ANoticeOutlivesTheMeasureAndTheCardShowsOnlyWithItsText) {
  Start();
  const auto screen = MakeScreen(program_->Get(), "frmLoad");
  auto& load = dynamic_cast<LoadScreen&>(*screen);
  const auto view = MakeView(load, frontEnd_);
  const auto label = [&](const char* name) { return view->findChild<QLabel*>(name); };
  load.working = true;
  view->PassingNotice(QString(200, 'y'));
  view->Notice(QString(200, 'x'));
  view->Measure(1 << 20, 2 << 20, "bytes");
  view->Sync();
  EXPECT_TRUE(label("lblDetail")->text().startsWith("xxx"));
  EXPECT_EQ(label("lblDetail")->toolTip().size(), 200);
  ExpectWhole(*label("lblDetail"));
  EXPECT_TRUE(label("cardRoom")->isHidden());
  load.working = false;
  load.lblRoom = {"C:\\Program Files\\Microsoft Games\\Train Simulator: 1 MB needed, 2 MB free\r\n" + Home() +
                      std::string(90, 'x') + ": 1 MB needed, 2 MB free",
                  true};
  view->Sync();
  EXPECT_EQ(label("lblDetail")->text(), "");
  EXPECT_FALSE(label("cardRoom")->isHidden());
  ExpectWhole(*label("lblRoom"));
}

TEST_F(OtherScreensTest, OptionsKeepWhatWasTyped) {
  Start();
  Click("frmMain", "btnOptions");
  auto& field = Control<QLineEdit>("frmOptions", "txtTSPath");
  field.selectAll();
  QTest::keyClicks(&field, QString::fromStdString(Root() + "/nothing"));
  EXPECT_EQ(TextOf("frmOptions", "lblHint"), "There is no such folder.");
  AnswerBoxes("OK");
  Click("frmOptions", "btnOK");
  EXPECT_EQ(boxes_, "Quillon|Please select the correct Train Simulator folder!");
  ASSERT_TRUE(IsOpen("frmOptions"));
  field.selectAll();
  QTest::keyClicks(&field, QString::fromStdString(Home() + "/"));
  Click("frmOptions", "chkShortcut");
  Click("frmOptions", "btnOK");
  EXPECT_EQ(Ini("tsqn.ini", "TrainSim", "Path"), Home() + "/");
  EXPECT_EQ(Ini("tsqn.ini", "Shortcut", "State"), "off");
  EXPECT_TRUE(IsOpen("frmMain"));
}

TEST_F(OtherScreensTest, AFirstCleanUpFillsTheEmptyLists) {
  Write(DataPath("misc_info\\copyfiles.tsl"), "");
  Write(DataPath("misc_info\\filelist.tsl"), "mine.s\r\n");
  Start();
  frontEnd_.Handle([&] {
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
      if (IsOpen("frmCleanUp") && ButtonOf("frmCleanUp", "btnOK").isEnabled()) Click("frmCleanUp", "btnOK");
    });
    answer.start(20);
    program_->Screens().ShowModal("frmCleanUp");
  });
  EXPECT_TRUE(Contains(ReadBytes(DataPath("misc_info\\copyfiles.tsl")), "Routes\\USA2\\"));
  EXPECT_EQ(ReadBytes(DataPath("misc_info\\filelist.tsl")), "mine.s\r\n") << "what a user wrote stays";
}

TEST_F(OtherScreensTest, DroppedZipsGoToTheDownloads) {
  Start();
  Write(Home() + "/new route.ZIP", "a zip");
  Write(Home() + "/notes.txt", "");
  AnswerBoxes("OK");
  DropFiles("frmMain", {Home() + "/new route.ZIP", Home() + "/notes.txt", Home()});
  EXPECT_EQ(boxes_, "") << "whoever dropped them is not kept waiting";
  ASSERT_TRUE(WaitFor([&] { return !boxes_.empty(); }));
  ASSERT_TRUE(Exists(Download("new route.ZIP"))) << boxes_;
  EXPECT_EQ(ReadBytes(Download("new route.ZIP")), "a zip");
  EXPECT_NE(boxes_.find("One zip file was put"), std::string::npos) << boxes_;
  EXPECT_NE(boxes_.find("notes.txt is no archive that Quillon can read."), std::string::npos) << boxes_;
  Write(Home() + "/new route.ZIP", "another");
  boxes_.clear();
  DropFiles("frmMain", {Home() + "/new route.ZIP"});
  ASSERT_TRUE(WaitFor([&] { return !boxes_.empty(); }));
  EXPECT_EQ(ReadBytes(Download("new route.ZIP")), "a zip") << "nothing is replaced";
  EXPECT_NE(boxes_.find("already"), std::string::npos) << boxes_;
}

TEST_F(OtherScreensTest, TheWindowComesBackWhereItWas) {
  Start();
  View("frmMain").move(40, 60);
  const QPoint centre = View("frmMain").geometry().center();
  Click("frmMain", "btnOptions");
  EXPECT_LT((View("frmOptions").geometry().center() - centre).manhattanLength(), 8);
  Click("frmOptions", "btnCancel");
  EXPECT_LT((View("frmMain").geometry().center() - centre).manhattanLength(), 8);
}

TEST_F(OtherScreensTest, TheWindowComesBackAsLargeAsItWasButNeverLargerThanTheDisplay) {
  Start();
  View("frmMain").resize(770, 600);
  Click("frmMain", "btnOptions");
  EXPECT_EQ(View("frmOptions").size(), QSize(616, 440)) << "the scale counts, not the shape";
  Click("frmOptions", "btnCancel");
  EXPECT_EQ(View("frmMain").size(), QSize(770, 528));
  SetIni("tsqn.ini", "Window", "Scale", "400");
  Click("frmMain", "btnOptions");
  EXPECT_LE(View("frmOptions").width(), QApplication::primaryScreen()->availableGeometry().width());
  Click("frmOptions", "btnCancel");
  EXPECT_EQ(Ini("tsqn.ini", "Window", "Scale"), "400") << "on another display it may have its size again";
}

/// Every caption fits its button, also a fifth larger, as on a machine with another face.
TEST_F(OtherScreensTest, NoCaptionIsCut) {
  Start();
  Program& program = program_->Get();
  program.shared.PackNameField = "great western main line and its branches";
  for (const char* screen :
       {"frmMain", "frmOptions", "frmRoutes", "frmWelcome", "frmNoAct", "frmCleanUpNotice", "frmPackConfirm",
        "frmCustomConsist", "frmZipCheck", "frmInitProg", "frmCleanUp", "frmReportOptions",
        "frmActivityCheck", "frmShelf", "frmWhy"}) {
    const auto model = MakeScreen(program, screen);
    if (auto* routes = dynamic_cast<RoutesScreen*>(model.get())) routes->Explain("btnClean");
    const auto view = MakeView(*model, frontEnd_);
    view->Sync();
    const ScreenLayout layout(screen);
    for (const PictureButton* button : view->findChildren<PictureButton*>()) {
      const ControlLayout& place = layout.Of(button->objectName());
      EXPECT_LE(QFontMetrics(FontOf(place)).horizontalAdvance(place.caption) * 1.2,
                place.captionRect.width() + 0.0)
          << screen << " " << place.caption.toStdString();
      EXPECT_FALSE(button->accessibleName().isEmpty());
    }
  }
}

}  // namespace
}  // namespace quillon
