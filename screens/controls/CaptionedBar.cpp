#include "screens/controls/CaptionedBar.h"

#include <QAccessible>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "screens/Fonts.h"

namespace quillon {
namespace {

constexpr double kRounding = 4;
constexpr int kMargins = 12;
const QColor kUnderWay(0x2F, 0x5F, 0xB3);

/// Model colours have red in the low byte.
QColor ColourOf(int colour) {
  return colour == 0 ? kUnderWay : QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

}  // namespace

CaptionedBar::CaptionedBar(const ControlLayout& layout, QWidget* parent)
    : QProgressBar(parent), layout_(layout), filled_(kUnderWay) {
  setGeometry(layout.rect);
  setTextVisible(false);
}

void CaptionedBar::Sync(const ProgressBar& bar) {
  const QString caption = QString::fromStdString(bar.caption);
  const QColor filled = ColourOf(bar.colour);
  if (maximum() != bar.maximum) setRange(0, std::max(1, bar.maximum));
  setValue(std::clamp(bar.value, 0, maximum()));
  if (caption == caption_ && filled == filled_) return;
  if (caption != caption_) {
    setAccessibleName(caption);
    const bool whole = QFontMetrics(FontOf(layout_)).horizontalAdvance(caption) <= width() - kMargins;
    setToolTip(whole ? QString() : caption);
    QAccessibleEvent told(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
  }
  caption_ = caption;
  filled_ = filled;
  update();
}

void CaptionedBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF done = rect();
  done.setWidth(done.width() * value() / std::max(1, maximum()));
  QPainterPath trough;
  trough.addRoundedRect(rect(), kRounding, kRounding);
  painter.setClipPath(trough);
  QLinearGradient gradient(0, 0, 0, height());
  gradient.setColorAt(0, filled_.lighter(125));
  gradient.setColorAt(0.45, filled_);
  gradient.setColorAt(1, filled_.darker(150));
  painter.fillRect(done, gradient);

  // A dark rim keeps the words readable on every colour.
  QPainterPath words;
  const QFont font = FontOf(layout_);
  const QFontMetricsF metrics(font);
  const QString text = metrics.elidedText(caption_, Qt::ElideMiddle, width() - kMargins);
  words.addText((width() - metrics.horizontalAdvance(text)) / 2,
                (height() + metrics.ascent() - metrics.descent()) / 2, font, text);
  painter.setPen(QPen(QColor(0, 0, 30, 170), 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(words);
  painter.fillPath(words, layout_.colour);
}

}  // namespace quillon
