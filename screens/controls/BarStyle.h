// The look of the scroll bars on the screens.
#pragma once

#include <QString>

namespace quillon {

/// `trough` names its colour; `scale` is that of the layout.
inline QString BarStyle(const char* trough, double scale) {
  return QStringLiteral(
             "QScrollBar:vertical { background: %1; width: %2px; border: none; }"
             "QScrollBar::handle:vertical { background: #B8892B; min-height: %3px;"
             " border-radius: 4px; margin: 1px 2px; }"
             "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }"
             "QScrollBar::add-page, QScrollBar::sub-page { background: none; }")
      .arg(trough)
      .arg(static_cast<int>(12 * scale))
      .arg(static_cast<int>(14 * scale));
}

}  // namespace quillon
