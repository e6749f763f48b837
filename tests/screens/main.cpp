// The screens without a display: real widgets, real timers.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" QUILLON_SOURCE_DIR "/tests/screens/two_displays.json");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
