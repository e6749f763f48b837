#include "screens/controls/ScrolledText.h"

#include <QLabel>
#include <QPainter>

#include "screens/Fonts.h"
#include "screens/controls/BarStyle.h"
#include "screens/controls/FocusRing.h"

namespace quillon {

ScrolledText::ScrolledText(const ControlLayout& layout, QWidget* parent)
    : QScrollArea(parent), layout_(layout), label_(new QLabel) {
  label_->setTextFormat(Qt::PlainText);
  label_->setWordWrap(true);
  label_->setAlignment(layout.align);
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidget(label_);
  Dress();
}

void ScrolledText::SetText(const QString& text) {
  if (label_->text() == text) return;
  label_->setText(text);
  label_->setAccessibleName(text);
  setAccessibleName(text);
  LetKeysScroll();
}

void ScrolledText::Dress() {
  setGeometry(layout_.rect);
  setStyleSheet(QStringLiteral("QScrollArea, QLabel { background: transparent; color: %1; }")
                    .arg(layout_.colour.name()) +
                BarStyle("#E2DAB0", layout_.scale));
  viewport()->setAutoFillBackground(false);
  label_->setFont(FontOf(layout_));
  LetKeysScroll();
}

void ScrolledText::paintEvent(QPaintEvent* event) {
  QScrollArea::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(viewport());
  PaintFocusRing(painter, viewport()->rect(), layout_.scale);
}

void ScrolledText::focusInEvent(QFocusEvent* event) {
  QScrollArea::focusInEvent(event);
  viewport()->update();
}

void ScrolledText::focusOutEvent(QFocusEvent* event) {
  QScrollArea::focusOutEvent(event);
  viewport()->update();
}

/// Tab passes by what is in view anyway.
void ScrolledText::LetKeysScroll() {
  const bool whole = label_->heightForWidth(layout_.rect.width()) <= layout_.rect.height();
  setFocusPolicy(whole ? Qt::NoFocus : Qt::StrongFocus);
}

}  // namespace quillon
