// Every screen in every size: whole, readable, and made anew for the display it stands on.
#include <QAccessible>
#include <QDir>
#include <QFontMetrics>
#include <QHash>
#include <QImage>
#include <QSet>
#include <algorithm>
#include <cmath>

#include "catalogue/MainScreen.h"
#include "catalogue/Notices.h"
#include "intake/RoutesScreen.h"
#include "loading/LoadScreen.h"
#include "repair/PackScreens.h"
#include "screens/Art.h"
#include "screens/Fonts.h"
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

double Light(int value) {
  const double share = value / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}
double Luminance(const QColor& colour) {
  return 0.2126 * Light(colour.red()) + 0.7152 * Light(colour.green()) + 0.0722 * Light(colour.blue());
}
double Contrast(const QColor& one, const QColor& other) {
  const double first = Luminance(one) + 0.05, second = Luminance(other) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

/// The contrast that all but the worst twentieth of the place has at least.
double ContrastOn(const QImage& image, const QRect& place, const QColor& colour) {
  std::vector<double> contrasts;
  for (int y = place.top(); y <= place.bottom(); ++y)
    for (int x = place.left(); x <= place.right(); ++x)
      contrasts.push_back(Contrast(image.pixelColor(x, y), colour));
  std::sort(contrasts.begin(), contrasts.end());
  return contrasts.empty() ? 0 : contrasts[contrasts.size() / 20];
}

QRect PlaceOfWords(const QLabel& label) {
  const QRect words = label.fontMetrics().boundingRect(
      label.geometry(), static_cast<int>(label.alignment()) | Qt::TextWordWrap, label.text());
  return words.intersected(label.geometry());
}

/// Of its small letters, which is where most of the ink is.
QRect PlaceOfCaption(const ControlLayout& layout) {
  const QFontMetrics metrics(FontOf(layout));
  QRect words(0, 0, metrics.horizontalAdvance(layout.caption), metrics.xHeight());
  words.moveCenter(layout.captionRect.center());
  return words;
}

TEST_F(DisplaysTest, EveryTextStandsOut) {
  ForEach(1, {0, 0, 800, 800}, [&](ScreenView& view) {
    const ScreenLayout layout(view.objectName());
    const auto labels = view.findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
    QHash<QLabel*, QRect> words;
    for (QLabel* label : labels)
      if (!label->isHidden() && !label->text().isEmpty()) words[label] = PlaceOfWords(*label);
    for (QLabel* label : words.keys()) label->hide();
    const QImage bare = view.grab().toImage();
    for (QLabel* label : words.keys()) {
      const QColor colour = layout.Of(label->objectName()).colour;
      EXPECT_GE(ContrastOn(bare, words[label], colour), 4.5) << label->objectName().toStdString();
    }
    for (const PictureButton* button : view.findChildren<PictureButton*>()) {
      const ControlLayout& place = layout.Of(button->objectName());
      if (place.caption.isEmpty()) continue;
      for (const char* state : {"off", "over", "down"}) {
        const QImage sign = Picture(place.picture + state, place.rect.size(), 1).toImage();
        EXPECT_GE(ContrastOn(sign, PlaceOfCaption(place), place.colour), 4.5)
            << button->objectName().toStdString() << " " << state;
      }
    }
  });
}

TEST_F(DisplaysTest, WhatHasTheKeyboardStandsOut) {
  ForEach(1, {0, 0, 800, 800}, [&](ScreenView& view) {
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    for (QAbstractButton* button : view.findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || !button->isEnabled()) continue;
      view.setFocus();
      const QImage before = button->grab().toImage();
      button->setFocus();
      const QImage after = button->grab().toImage();
      int changed = 0;
      for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
          changed += Contrast(before.pixelColor(x, y), after.pixelColor(x, y)) >= 3;
      EXPECT_GE(changed, before.width() + before.height()) << button->objectName().toStdString();
    }
  });
}

/// What a screen reader finds below `node`, with a name for all of it.
void ExpectNamed(QAccessibleInterface& node) {
  for (int i = 0; i < node.childCount(); ++i) {
    QAccessibleInterface* child = node.child(i);
    if (child == nullptr || child->state().invisible) continue;
    const auto* label = qobject_cast<QLabel*>(child->object());
    const bool empty = label != nullptr && label->text().isEmpty() && label->pixmap().isNull();
    const std::string what = child->object() == nullptr ? "" : child->object()->objectName().toStdString();
    EXPECT_TRUE(empty || !child->text(QAccessible::Name).isEmpty()) << what;
    EXPECT_NE(child->role(), QAccessible::NoRole) << what;
    if (child->role() == QAccessible::Button || child->role() == QAccessible::Link) {
      EXPECT_FALSE(child->text(QAccessible::Description).isEmpty()) << what;
    }
  }
}

TEST_F(DisplaysTest, EveryScreenCanBeRead) {
  QSet<QString> titles;
  ForEach(1, {0, 0, 800, 800}, [&](ScreenView& view) {
    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(window->role(), QAccessible::Window);
    titles << window->text(QAccessible::Name);
    ExpectNamed(*window);
  });
  EXPECT_GE(titles.size(), 16) << "the screens can be told apart";
  Click("frmMain", "btnOptions");
  auto* link = QAccessible::queryAccessibleInterface(&Control<QWidget>("frmOptions", "goToWebPage"));
  ASSERT_EQ(link->role(), QAccessible::Link);
  link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_FALSE(frontEnd_.opened.empty());
}

TEST_F(DisplaysTest, OnAnotherDisplayThePicturesAreMadeAnew) {
  auto& main = View("frmMain");
  const auto& preview = Control<QLabel>("frmMain", "imgRoute");
  ASSERT_EQ(preview.pixmap().devicePixelRatio(), 1);
  main.move(900, 100);
  ASSERT_TRUE(WaitFor([&] { return main.devicePixelRatioF() == 2; }));
  EXPECT_TRUE(WaitFor([&] { return preview.pixmap().devicePixelRatio() == 2; }));
  EXPECT_EQ(preview.pixmap().width(), 2 * preview.width());
  Click("frmMain", "btnOptions");
  EXPECT_EQ(View("frmOptions").devicePixelRatioF(), 2) << "it comes up where the other was";
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
