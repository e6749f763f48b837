#include "screens/ScreenView.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "screens/Art.h"
#include "screens/Fonts.h"
#include "screens/LineBreaks.h"

namespace quillon {
namespace {

constexpr int kFrameSlack = 48;  // pixels that a window manager may add
constexpr int kSmallestText = 9, kSmallestReadable = 7;
constexpr int kSettleTime = 150;   // milliseconds after which a window is taken to keep its size
constexpr int kShortestTick = 16;  // milliseconds: no display shows more
const QColor kSurroundShade(8, 8, 40, 120);

void Announce(QWidget& widget) {
  QAccessibleEvent told(&widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
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
  setMinimumSize(layout_.Size() * kSmallestScale);
  resize(layout_.Size());
  dressedSize_ = placedSize_ = size();
  dressedRatio_ = devicePixelRatioF();
  setAttribute(Qt::WA_OpaquePaintEvent);
  settling_.setSingleShot(true);
  connect(&settling_, &QTimer::timeout, this, &ScreenView::Settle);
}

void ScreenView::PlaceAt(QPoint centre, const QRect& room, double scale) {
  resize(SizeIn(room.size(), scale));
  placedSize_ = size();
  placed_ = {
      std::clamp(centre.x() - width() / 2, room.left(), std::max(room.left(), room.right() - width() + 1)),
      std::clamp(centre.y() - height() / 2, room.top(), std::max(room.top(), room.bottom() - height() + 1))};
  move(placed_);
  DressAll();
}

/// A frame around the window is no move.
bool ScreenView::WasMoved() const { return (pos() - placed_).manhattanLength() > kFrameSlack; }

void ScreenView::Retire() {
  retired_ = true;
  HurryPictures(false);
  syncs_.clear();
  for (QTimer* timer : findChildren<QTimer*>()) timer->stop();
  for (QObject* child : children()) child->blockSignals(true);
  hide();
}

void ScreenView::Sync() {
  for (const auto& sync : syncs_) sync();
}

void ScreenView::Dress(const Action& dress) {
  dress();
  dresses_.push_back(dress);
}

void ScreenView::DressAll() {
  if (retired_ || (size() == dressedSize_ && devicePixelRatioF() == dressedRatio_)) return;
  dressedSize_ = size();
  dressedRatio_ = devicePixelRatioF();
  surroundings_ = {};
  layout_.Fit(size());
  for (const auto& dress : dresses_) dress();
  Sync();
  update();
}

/// The pictures follow the window's edge as well as they can, and are drawn anew when it rests.
void ScreenView::resizeEvent(QResizeEvent*) {
  if (isVisible()) {
    HurryPictures(true);
    settling_.start(kSettleTime);
  }
  DressAll();
}

void ScreenView::Settle() {
  HurryPictures(false);
  dressedSize_ = {};
  DressAll();
}

void ScreenView::paintEvent(QPaintEvent*) {
  // The window has come to a display of another resolution.
  if (devicePixelRatioF() != dressedRatio_) QTimer::singleShot(0, this, &ScreenView::DressAll);
  QPainter painter(this);
  const QRect place = layout_.Place();
  const QPixmap picture = Picture(layout_.Background(), place.size(), devicePixelRatioF());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (place != rect()) PaintSurroundings(painter, picture);
  painter.drawPixmap(place, picture);
}

/// Where the window has another shape than the picture: the picture's own colours, out of focus and in the
/// shade.
void ScreenView::PaintSurroundings(QPainter& painter, const QPixmap& picture) {
  if (surroundings_.isNull()) {
    const QSize coarse(12, 8), smooth(192, 128);
    surroundings_ = picture.scaled(coarse, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                        .scaled(smooth, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    surroundings_.setDevicePixelRatio(1);
    QPainter(&surroundings_).fillRect(QRect(QPoint(), smooth), kSurroundShade);
  }
  painter.drawPixmap(rect(), surroundings_);
}

PictureButton* ScreenView::NewButton(const char* control, const QString& tip, const Action& click) {
  const ControlLayout& layout = layout_.Of(control);
  auto* button = new PictureButton(layout, tip, this);
  button->setObjectName(control);
  dresses_.push_back([button, &layout] { button->setGeometry(layout.rect); });
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
  label->setWordWrap(true);
  label->setAlignment(layout.align);
  label->setTextFormat(Qt::PlainText);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, layout.colour);
  label->setPalette(palette);
  Dress([this, label] { DressLabel(*label); });
  return label;
}

void ScreenView::DressLabel(QLabel& label) const {
  const ControlLayout& layout = layout_.Of(label.objectName());
  label.setGeometry(layout.rect);
  label.setFont(FontOf(layout));
  const QVariant text = label.property("plain"), picture = label.property("picture");
  label.setProperty("plain", {});
  label.setProperty("picture", {});
  if (text.isValid()) ShowWhole(label, text.toString().toStdString());
  if (picture.isValid()) ShowPicture(label, picture.toString());
}

void ScreenView::ShowPicture(QLabel& label, const QString& name) const {
  if (label.property("picture") == name) return;
  label.setProperty("picture", name);
  label.setScaledContents(true);
  label.setPixmap(Picture(name, label.size(), devicePixelRatioF()));
}

QLabel* ScreenView::AddText(const char* control, const QString& text) {
  QLabel* label = NewLabel(control);
  if (!text.isEmpty()) ShowWhole(*label, text.toStdString());
  return label;
}

QLabel* ScreenView::Bind(const char* control, const Label& label) {
  QLabel* widget = NewLabel(control);
  syncs_.push_back([this, widget, &label] {
    ShowWhole(*widget, label.text);
    widget->setVisible(label.visible);
  });
  return widget;
}

void ScreenView::ShowWhole(QLabel& label, const std::string& text) const {
  const QString plain = QString::fromStdString(text).remove('\r');
  if (label.property("plain") == plain) return;
  label.setProperty("plain", plain);
  const ControlLayout& layout = layout_.Of(label.objectName());
  const QFont usual = FontOf(layout);
  const int smallest = std::max(kSmallestReadable, static_cast<int>(kSmallestText * layout.scale));
  QFont font = usual;
  QString shown;
  const auto fits = [&] {
    const QRect place(0, 0, label.width(), 0);
    const QSize room = QFontMetrics(font).boundingRect(place, Qt::TextWordWrap, shown).size();
    return room.width() <= label.width() && room.height() <= label.height();
  };
  const auto fit = [&](const QString& candidate) {
    shown = candidate;
    for (font = usual; !fits() && font.pixelSize() > smallest;) font.setPixelSize(font.pixelSize() - 1);
    return fits();
  };
  shown = plain;
  const bool whole = fits() || fit(BreakableAtSeparators(plain)) || fit(BreakableAnywhere(plain));
  if (!whole && !fit(Elided(plain, ' ', usual, label.width())))
    shown = Elided(plain, '\n', font, label.width());
  label.setFont(font);
  label.setText(shown);
  label.setToolTip(whole ? QString() : plain);
  label.setAccessibleName(plain);
  if (label.isVisible() && !plain.isEmpty()) Announce(label);
}

ScrolledText* ScreenView::BindScrolled(const char* control, const Label& label) {
  auto* widget = new ScrolledText(layout_.Of(control), this);
  widget->setObjectName(control);
  dresses_.push_back([widget] { widget->Dress(); });
  syncs_.push_back([widget, &label] { widget->SetText(QString::fromStdString(label.text).remove('\r')); });
  return widget;
}

HoverList* ScreenView::Bind(const char* control, List& list, const QString& name) {
  auto* widget = new HoverList(layout_.Of(control), name, this);
  widget->setObjectName(control);
  widget->hide();
  dresses_.push_back([widget] { widget->Dress(); });
  syncs_.push_back([widget, &list] { widget->Sync(list); });
  return widget;
}

CaptionedBar* ScreenView::Bind(const char* control, const ProgressBar& bar) {
  auto* widget = new CaptionedBar(layout_.Of(control), this);
  widget->setObjectName(control);
  const ControlLayout& layout = layout_.Of(control);
  dresses_.push_back([widget, &layout] { widget->setGeometry(layout.rect); });
  syncs_.push_back([widget, &bar] { widget->Sync(bar); });
  return widget;
}

void ScreenView::Bind(const Timer& timer, const Action& tick) {
  auto* ticker = new QTimer(this);
  ticker->setTimerType(Qt::PreciseTimer);
  connect(ticker, &QTimer::timeout, this, [this, &timer, tick] {
    // A timer that is quicker than the eye moves as far in fewer steps.
    const int ticks = std::max(1, kShortestTick / std::max(1, timer.interval));
    Do([&] {
      for (int i = 0; i < ticks && timer.enabled; ++i) tick();
    });
  });
  syncs_.push_back([ticker, &timer] {
    if (timer.enabled && !ticker->isActive()) ticker->start(std::max(timer.interval, kShortestTick));
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
  CloseAsked();
}

void ScreenView::CloseAsked() {
  if (cancel_ != nullptr && cancel_->isEnabled()) return cancel_->click();
  PassingNotice("Quillon is at work. This window can be closed when it has finished.");
  Sync();
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
