// The ring around the control that has the keyboard.
#pragma once

#include <QPainter>

namespace quillon {

/// Within `room`. Pale dashes over a dark line: one of the two stands out on every picture.
inline void PaintFocusRing(QPainter& painter, const QRectF& room, double scale) {
  const double half = scale;
  const QRectF ring = room.adjusted(half, half, -half, -half);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setOpacity(1);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0x00, 0x00, 0x40), 2 * scale));
  painter.drawRoundedRect(ring, 4 * scale, 4 * scale);
  QPen pale(QColor(0xFF, 0xF3, 0xA8), 2 * scale);
  pale.setDashPattern({2.5, 1.5});
  pale.setCapStyle(Qt::FlatCap);
  painter.setPen(pale);
  painter.drawRoundedRect(ring, 4 * scale, 4 * scale);
}

}  // namespace quillon
