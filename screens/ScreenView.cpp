#include "screens/ScreenView.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>

#include "screens/Art.h"
#include "screens/Fonts.h"

namespace quillon {
namespace {

constexpr int kFrame = 48;  // pixels that a window manager may add
constexpr int kSmallestText = 9;

/// May be broken behind every separator.
QString Breakable(QString text) {
  const QChar gap(0x200B);
  return text.replace('\\', QString('\\') + gap).replace('/', QString('/') + gap);
}

/// Each line, or each word of it, in no more than `width`.
QString Elided(const QString& text, QChar separator, const QFont& font, int width) {
  QStringList lines = text.split('\n');
  for (QString& line : lines) {
    QStringList parts = line.split(separator);
    for (QString& part : parts) part = QFontMetrics(font).elidedText(part, Qt::ElideMiddle, width);
    line = parts.join(separator);
  }
  return lines.join('\n');
}

}  // namespace

ScreenView::ScreenView(Screen& model, Desk& desk)
    : desk_(desk), layout_(QString::fromStdString(model.Name())) {
  setObjectName(QString::fromStdString(model.Name()));
  setWindowTitle("Quillon");
  setFixedSize(layout_.Size());
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void ScreenView::PlaceAt(QPoint position) {
  placed_ = position;
  move(position);
}

/// A frame around the window is no move.
bool ScreenView::WasMoved() const { return (pos() - placed_).manhattanLength() > kFrame; }

void ScreenView::Retire() {
  syncs_.clear();
  for (QTimer* timer : findChildren<QTimer*>()) timer->stop();
  for (QObject* child : children()) child->blockSignals(true);
  hide();
}

void ScreenView::Sync() {
  for (const auto& sync : syncs_) sync();
}

void ScreenView::paintEvent(QPaintEvent*) {
  QPainter(this).drawPixmap(rect(), Picture(layout_.Background(), size(), devicePixelRatioF()));
}

PictureButton* ScreenView::NewButton(const char* control, const QString& tip, const Action& click) {
  const ControlLayout& layout = layout_.Of(control);
  auto* button = new PictureButton(layout, tip, this);
  button->setObjectName(control);
  connect(button, &QAbstractButton::clicked, this, [this, click] { Do(click); });
  if (!layout.caption.isEmpty()) ChooseMnemonic(*button, layout.caption);
  return button;
}

/// The first letter of the caption that no other button of the screen has.
void ScreenView::ChooseMnemonic(PictureButton& button, const QString& caption) {
  for (const QChar letter : caption) {
    if (!letter.isLetter() || mnemonics_.contains(letter, Qt::CaseInsensitive)) continue;
    mnemonics_ += letter;
    button.SetMnemonic(letter);
    return;
  }
}

PictureButton* ScreenView::Bind(const char* control, const Button& button, const QString& tip,
                                const Action& click) {
  PictureButton* widget = NewButton(control, tip, click);
  syncs_.push_back([widget, &button] {
    widget->setEnabled(button.enabled);
    widget->setVisible(button.visible);
    widget->SetFlashing(button.picture.ends_with("over"));
  });
  return widget;
}

PictureButton* ScreenView::BindTick(const char* control, const bool& ticked, const QString& name,
                                    const Action& toggle) {
  PictureButton* widget = NewButton(control, name, toggle);
  widget->setCheckable(true);
  syncs_.push_back([widget, &ticked] { widget->setChecked(ticked); });
  return widget;
}

QLabel* ScreenView::NewLabel(const char* control) {
  const ControlLayout& layout = layout_.Of(control);
  auto* label = new QLabel(this);
  label->setObjectName(control);
  label->setGeometry(layout.rect);
  label->setFont(FontOf(layout));
  label->setWordWrap(true);
  label->setAlignment(layout.align);
  label->setTextFormat(Qt::PlainText);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, layout.colour);
  label->setPalette(palette);
  return label;
}

QLabel* ScreenView::AddText(const char* control, const QString& text) {
  QLabel* label = NewLabel(control);
  label->setText(text);
  return label;
}

QLabel* ScreenView::Bind(const char* control, const Label& label) {
  QLabel* widget = NewLabel(control);
  syncs_.push_back([widget, &label] {
    // QLabel paints itself anew even when nothing changes.
    const QString text = QString::fromStdString(label.text).remove('\r');
    if (widget->text() != text) widget->setText(text);
    widget->setVisible(label.visible);
  });
  return widget;
}

void ScreenView::ShowWhole(QLabel& label, const std::string& text) const {
  const QString plain = QString::fromStdString(text).remove('\r');
  if (label.property("plain") == plain) return;
  label.setProperty("plain", plain);
  const QFont usual = FontOf(layout_.Of(label.objectName()));
  QFont font = usual;
  QString shown;
  const auto fits = [&] {
    const QRect place(0, 0, label.width(), 0);
    const QSize room = QFontMetrics(font).boundingRect(place, Qt::TextWordWrap, shown).size();
    return room.width() <= label.width() && room.height() <= label.height();
  };
  const auto fit = [&](const QString& candidate) {
    shown = candidate;
    for (font = usual; !fits() && font.pixelSize() > kSmallestText;) font.setPixelSize(font.pixelSize() - 1);
    return fits();
  };
  shown = plain;
  const bool whole = fits() || fit(Breakable(plain));
  if (!whole && !fit(Elided(plain, ' ', usual, label.width())))
    shown = Elided(plain, '\n', font, label.width());
  label.setFont(font);
  label.setText(shown);
  label.setToolTip(whole ? QString() : plain);
  label.setAccessibleName(plain);
}

HoverList* ScreenView::Bind(const char* control, List& list, const QString& name) {
  auto* widget = new HoverList(layout_.Of(control), name, this);
  widget->setObjectName(control);
  widget->hide();
  syncs_.push_back([widget, &list] { widget->Sync(list); });
  return widget;
}

CaptionedBar* ScreenView::Bind(const char* control, const ProgressBar& bar) {
  auto* widget = new CaptionedBar(layout_.Of(control), this);
  widget->setObjectName(control);
  syncs_.push_back([widget, &bar] { widget->Sync(bar); });
  return widget;
}

void ScreenView::Bind(const Timer& timer, const Action& tick) {
  auto* ticker = new QTimer(this);
  ticker->setTimerType(Qt::PreciseTimer);
  connect(ticker, &QTimer::timeout, this, [this, tick] { Do(tick); });
  syncs_.push_back([ticker, &timer] {
    if (timer.enabled && !ticker->isActive()) ticker->start(timer.interval);
    if (!timer.enabled) ticker->stop();
  });
}

void ScreenView::SetDefault(PictureButton* button) {
  default_ = button;
  button->setFocus();
  // A finished work hands the keyboard to its OK button.
  syncs_.push_back([button, enabled = button->isEnabled()]() mutable {
    if (button->isEnabled() && !enabled) button->setFocus();
    enabled = button->isEnabled();
  });
}

void ScreenView::Escape() {
  if (cancel_ != nullptr && cancel_->isEnabled()) cancel_->click();
}

void ScreenView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (cancel_ != nullptr && cancel_->isEnabled()) cancel_->click();
}

void ScreenView::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Escape)
    Escape();
  else if ((key == Qt::Key_Return || key == Qt::Key_Enter) && default_ != nullptr && default_->isEnabled())
    default_->click();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace quillon
