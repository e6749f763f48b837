#include "screens/controls/TextLink.h"

#include <QKeyEvent>
#include <QPainter>

#include "screens/Fonts.h"
#include "screens/controls/FocusRing.h"

namespace quillon {

TextLink::TextLink(const ControlLayout& layout, QWidget* parent) : QAbstractButton(parent), layout_(layout) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
}

void TextLink::ShowText(const QString& text) {
  if (this->text() == text) return;
  setText(text);
  update();
}

void TextLink::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(FontOf(layout_));
  painter.setPen(layout_.colour);
  painter.drawText(rect(), static_cast<int>(layout_.align), text());
  if (hasFocus()) PaintFocusRing(painter, rect(), layout_.scale);
}

void TextLink::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

}  // namespace quillon
