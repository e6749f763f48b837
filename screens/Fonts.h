// The face of all texts on the screens.
#pragma once

#include <QFont>

#include "screens/Layout.h"

namespace quillon {

inline QFont FontOf(const ControlLayout& layout) {
  QFont font;
  // The first that the machine has; their widths are those that the pictures leave room for.
  font.setFamilies({"DejaVu Sans", "Verdana", "sans-serif"});
  font.setPixelSize(layout.size);
  font.setBold(layout.bold);
  font.setUnderline(layout.underline);
  return font;
}

}  // namespace quillon
