// The screens without a display: real widgets, real timers.
#include <gtest/gtest.h>

#include <QApplication>
#include <string>

#include "tests/world/TestProgram.h"

int main(int argc, char** argv) {
  std::string displays = QUILLON_SOURCE_DIR "/tests/screens/two_displays.json";
  // A colon would end the name; without a drive it is the current one.
  displays.erase(0, displays.find(':') + 1);
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + displays).c_str());
  quillon::TestProgram::delivered = QUILLON_SOURCE_DIR;
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
