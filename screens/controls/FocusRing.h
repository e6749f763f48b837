// The ring around the control that has the keyboard.
#pragma once

#include <QPainter>

namespace quillon {

/// Within `room`. Pale dashes over a dark line: one of the two stands out on every picture.
inline void PaintFocusRing(QPainter& painter, const QRectF& room, double scale) {
  constexpr double kWidth = 1.8;
  const double half = kWidth * scale / 2;
  const QRectF ring = room.adjusted(half, half, -half, -half);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setOpacity(1);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0x00, 0x00, 0x40), kWidth * scale));
  painter.drawRoundedRect(ring, 4 * scale, 4 * scale);
  QPen pale(QColor(0xFF, 0xF3, 0xA8), kWidth * scale);
  pale.setDashPattern({3, 2});
  pale.setCapStyle(Qt::FlatCap);
  painter.setPen(pale);
  painter.drawRoundedRect(ring, 4 * scale, 4 * scale);
}

}  // namespace quillon
