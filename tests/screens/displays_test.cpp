// Every screen in every size: whole, readable, and made anew for the display it stands on.
#include <QDir>
#include <QStyle>

#include "catalogue/MainScreen.h"
#include "catalogue/Notices.h"
#include "intake/RoutesScreen.h"
#include "loading/LoadScreen.h"
#include "repair/PackScreens.h"
#include "screens/Views.h"
#include "tests/screens/ScreensTest.h"

namespace quillon {
namespace {

constexpr const char* kScreens[] = {
    "frmMain", "frmOptions",     "frmRoutes",        "frmWelcome",       "frmNoAct",    "frmCleanUpNotice",
    "frmPack", "frmPackConfirm", "frmCustomConsist", "frmCustomMessage", "frmZipCheck", "frmInitProg",
    "frmLoad", "frmCleanUp",     "frmReportOptions", "frmActivityCheck", "frmShelf",    "frmWhy"};
constexpr QPoint kCentre(700, 500);

class DisplaysTest : public ScreensTest {
 protected:
  DisplaysTest() { Start(); }

  /// What is the longest that a user may see.
  void Fill(Screen& model) {
    const std::string word(103, 'w');
    if (auto* main = dynamic_cast<MainScreen*>(&model)) {
      main->lblRouteName.text = word;
      main->lblLoaded.text = "Currently loaded route";
      main->lblPlayable = {"112 of 212 activities playable", true};
      main->imgRoute = program_->Get().app.DefaultPicture();
    }
    if (auto* load = dynamic_cast<LoadScreen*>(&model))
      for (Label* label : {&load->lblRouteName, &load->lblMessage}) *label = {word, true};
    if (auto* confirm = dynamic_cast<PackConfirmScreen*>(&model)) confirm->lblRouteName.text = word;
    if (auto* pack = dynamic_cast<PackScreen*>(&model)) pack->lblRouteName.text = word;
    if (auto* routes = dynamic_cast<RoutesScreen*>(&model)) routes->Explain("btnClean");
    if (auto* custom = dynamic_cast<CustomMessageScreen*>(&model))
      for (int i = 0; i < 60; ++i)
        custom->lblMessage.text += "Line " + std::to_string(i) + " of a letter.\r\n";
    if (auto* progress = dynamic_cast<ProgressScreen*>(&model))
      progress->bar = {"Uncompressing all the world's textures...", 60};
  }

  using Check = std::function<void(ScreenView& view)>;
  void ForEach(double scale, const QRect& room, const Check& check) {
    for (const char* screen : kScreens) {
      const auto model = MakeScreen(program_->Get(), screen);
      Fill(*model);
      const auto view = MakeView(*model, frontEnd_);
      view->PlaceAt(kCentre, room, scale);
      view->Sync();
      view->show();
      SCOPED_TRACE(screen);
      check(*view);
      Keep(*view);
    }
  }
  /// For those who want to look.
  void Keep(ScreenView& view) {
    if (!qEnvironmentVariableIsSet("QUILLON_PICTURES")) return;
    const QString name = QString("%1-%2x%3").arg(view.objectName()).arg(view.width()).arg(view.height());
    view.grab().save(QDir(qEnvironmentVariable("QUILLON_PICTURES")).filePath(name + ".png"));
  }
};

void ExpectWhole(const QLabel& label) {
  const QRect room =
      label.fontMetrics().boundingRect(QRect(0, 0, label.width(), 2000), Qt::TextWordWrap, label.text());
  EXPECT_LE(room.height(), label.height()) << label.objectName().toStdString();
  EXPECT_LE(room.width(), label.width()) << label.objectName().toStdString();
}

TEST_F(DisplaysTest, EveryTextIsWholeInEverySize) {
  const QRect wide(0, 0, 4000, 3000), small(0, 0, 517, 356);
  for (const auto& [scale, room] : {std::pair(1.0, small), {1.0, wide}, {1.37, wide}, {2.5, wide}})
    ForEach(scale, room, [&, room = room](ScreenView& view) {
      EXPECT_EQ(view.size().boundedTo(room.size()), view.size());
      for (const QLabel* label : view.findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
        ExpectWhole(*label);
        EXPECT_TRUE(label->toolTip().isEmpty()) << "left out: " << label->toolTip().toStdString();
      }
    });
}

TEST_F(DisplaysTest, AWindowOfAnotherShapeHasItsPictureInTheMiddle) {
  auto& main = View("frmMain");
  main.resize(1000, 480);
  Keep(main);
  const QRect load = ButtonOf("frmMain", "btnLoad").geometry();
  EXPECT_EQ(load.topLeft(), QPoint(462 + 150, 398));
  EXPECT_EQ(load.size(), QSize(230, 76));
}

}  // namespace
}  // namespace quillon
