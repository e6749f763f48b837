// The controls of the screens, as far as logic knows them.
#pragma once

#include <string>
#include <vector>

namespace quillon {

struct Label {
  std::string text;
  bool visible = true;
};

struct Button {
  std::string picture;  // name of the picture resource; empty while the control's own states show
  bool enabled = true;
  bool visible = true;
};

struct List {
  std::vector<std::string> rows;
  int current = -1;
  int top = 0;
  bool enabled = true;
  bool visible = true;
};

struct Timer {
  int interval = 0;  // milliseconds
  bool enabled = false;
};

struct ProgressBar {
  std::string caption;
  int value = 0;
  int maximum = 100;
  int colour = 0;
};

}  // namespace quillon
