#include "screens/controls/PictureButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include "screens/Art.h"
#include "screens/Fonts.h"
#include "screens/controls/FocusRing.h"

namespace quillon {
namespace {

const QColor kDisabledShade(24, 20, 52, 165);
constexpr int kSmallestText = 7;
constexpr double kDisabledCaption = 0.45;  // opacity
constexpr double kRim = 2.5;

/// The lamp is out and the sign lies in the shade.
QPixmap Shaded(QPixmap picture) {
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
  painter.fillRect(picture.rect(), kDisabledShade);
  return picture;
}

}  // namespace

PictureButton::PictureButton(const ControlLayout& layout, const QString& tip, QWidget* parent)
    : QAbstractButton(parent), layout_(layout) {
  setGeometry(layout.rect);
  SetTip(tip);
  setAccessibleName(layout.caption.isEmpty() ? tip : layout.caption);
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void PictureButton::SetFlashing(bool flashing) {
  if (flashing_ == flashing) return;
  flashing_ = flashing;
  update();
}

void PictureButton::SetGrey(bool grey) {
  grey_ = grey;
  setEnabled(!grey);
  update();
}

void PictureButton::SetTip(const QString& tip) {
  setToolTip(tip);
  setAccessibleDescription(tip);
}

void PictureButton::SetMnemonic(QChar letter) {
  mnemonicAt_ = static_cast<int>(layout_.caption.indexOf(letter, 0, Qt::CaseInsensitive));
  setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(letter.toUpper().unicode())));
}

QString PictureButton::State() const {
  const bool over = isEnabled() && (underMouse() || flashing_);
  if (grey_ && isChecked()) return "grey";
  if (isCheckable()) return QString(isChecked() ? "on" : over ? "" : "off") + (over ? "over" : "");
  if (isDown()) return "down";
  return over ? "over" : "off";
}

void PictureButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPixmap picture = Picture(layout_.picture + State(), size(), devicePixelRatioF());
  // What lies in the grey already needs no shade.
  painter.drawPixmap(rect(), isEnabled() || (grey_ && isChecked()) ? picture : Shaded(picture));
  if (!isEnabled()) painter.setOpacity(kDisabledCaption);
  if (!layout_.caption.isEmpty()) PaintCaption(painter);
  if (!hasFocus()) return;
  // Inside the rim, where a button has one.
  const double inset = isCheckable() ? 0 : kRim * layout_.scale;
  PaintFocusRing(painter, QRectF(rect()).adjusted(inset, inset, -inset, -inset), layout_.scale);
}

void PictureButton::PaintCaption(QPainter& painter) const {
  QFont font = FontOf(layout_);
  const int room = layout_.captionRect.width();
  while (QFontMetrics(font).horizontalAdvance(layout_.caption) > room && font.pixelSize() > kSmallestText)
    font.setPixelSize(font.pixelSize() - 1);
  painter.setFont(font);
  painter.setPen(layout_.colour);
  QString caption = layout_.caption;
  if (mnemonicAt_ >= 0) caption.insert(mnemonicAt_, '&');
  const int nudge = isDown() ? 1 : 0;
  painter.drawText(layout_.captionRect.translated(nudge, nudge), Qt::AlignCenter | Qt::TextShowMnemonic,
                   caption);
}

void PictureButton::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  update();
}

void PictureButton::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  update();
}

void PictureButton::focusInEvent(QFocusEvent* event) {
  QAbstractButton::focusInEvent(event);
  update();
}

void PictureButton::focusOutEvent(QFocusEvent* event) {
  QAbstractButton::focusOutEvent(event);
  update();
}

void PictureButton::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // On a tick box Enter means the default button.
  if (enter && isCheckable())
    event->ignore();
  else if (enter)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

}  // namespace quillon
