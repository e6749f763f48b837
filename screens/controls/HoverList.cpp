#include "screens/controls/HoverList.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "screens/Fonts.h"
#include "screens/controls/BarStyle.h"
#include "screens/controls/FocusRing.h"

namespace quillon {
namespace {

constexpr int kMargin = 4;

class RowPainter : public QStyledItemDelegate {
 public:
  RowPainter(const ControlLayout& layout, QObject* parent) : QStyledItemDelegate(parent), layout_(layout) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool current = (option.state & QStyle::State_Selected) != 0;
    if (current) painter->fillRect(option.rect, layout_.current);
    painter->setFont(option.font);
    painter->setPen(current ? layout_.currentColour : layout_.colour);
    const QStringList parts = Parts(index);
    for (qsizetype i = 0; i < parts.size(); ++i) {
      const QRect room = Column(i, option.rect);
      painter->drawText(room, Qt::AlignVCenter | Qt::TextSingleLine,
                        option.fontMetrics.elidedText(parts[i], Qt::ElideRight, room.width()));
    }
  }
  /// Whether nothing of a row in `room` is left out.
  bool IsWhole(const QModelIndex& index, const QRect& room, const QFontMetrics& metrics) const {
    const QStringList parts = Parts(index);
    for (qsizetype i = 0; i < parts.size(); ++i)
      if (metrics.horizontalAdvance(parts[i]) > Column(i, room).width()) return false;
    return true;
  }
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {0, layout_.rowHeight};
  }

 private:
  QRect Column(qsizetype i, const QRect& row) const {
    const int left = layout_.columns.value(i), right = layout_.columns.value(i + 1, row.width());
    return QRect(row.left() + left, row.top(), right - left, row.height()).adjusted(kMargin, 0, -kMargin, 0);
  }
  QStringList Parts(const QModelIndex& index) const {
    const QString row = index.data().toString();
    return layout_.columns.isEmpty() ? QStringList{row} : row.split('\t');
  }

  const ControlLayout& layout_;
};

}  // namespace

HoverList::HoverList(const ControlLayout& layout, const QString& name, QWidget* parent)
    : QListView(parent), layout_(layout) {
  setAccessibleName(name);
  setModel(&texts_);
  setItemDelegate(new RowPainter(layout, this));
  setUniformItemSizes(true);
  setFrameShape(NoFrame);
  setMouseTracking(true);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerItem);
  setAutoScroll(true);
  Dress();
}

void HoverList::Dress() {
  setGeometry(layout_.rect);
  setFont(FontOf(layout_));
  if (!styleSheet().isEmpty()) Colour();
  const int top = top_;
  doItemsLayout();
  if (top >= 0) verticalScrollBar()->setValue(top);
}

/// Costs time, and most lists of a session are never seen.
void HoverList::Colour() {
  setStyleSheet(QStringLiteral("QListView { background: %1; }").arg(layout_.background.name()) +
                BarStyle("#1A1A1A", layout_.scale));
}

void HoverList::Sync(List& list) {
  syncing_ = true;
  if (rows_ != list.rows) {
    rows_ = list.rows;
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(rows_.size()));
    for (const auto& row : rows_) texts << QString::fromStdString(row);
    texts_.setStringList(texts);
    top_ = -1;
  }
  const QModelIndex current = texts_.index(list.current, 0);
  if (currentIndex() != current || !selectionModel()->isSelected(current)) setCurrentIndex(current);
  setEnabled(list.enabled);
  setAccessibleDescription(rows_.empty() ? emptyText_ : QString());
  if (isVisibleTo(parentWidget()) != list.visible) {
    if (list.visible && styleSheet().isEmpty()) Colour();
    setVisible(list.visible);
    if (list.visible) raise();
    if (list.visible && list.enabled && focusPolicy() != Qt::NoFocus) setFocus();
  }
  ShowFrom(list);
  syncing_ = false;
}

/// A hidden list has no end yet.
void HoverList::ShowFrom(List& list) {
  if (list.visible) executeDelayedItemsLayout();
  if (list.top != top_) verticalScrollBar()->setValue(list.top);
  top_ = list.top = verticalScrollBar()->value();
}

void HoverList::Hover(QPoint position) {
  if (OnHover) OnHover(indexAt(position).row(), Drawn(position.y()));
}

bool HoverList::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
  TellWhole(indexAt(static_cast<QHelpEvent*>(event)->pos()));
  return true;
}

/// Says all of a row of which something is left out.
void HoverList::TellWhole(const QModelIndex& row) {
  const QRect place = visualRect(row);
  const auto* rows = static_cast<const RowPainter*>(itemDelegate());
  const bool whole = !row.isValid() || rows->IsWhole(row, place, fontMetrics());
  QToolTip::showText(viewport()->mapToGlobal(place.bottomLeft()),
                     whole ? QString() : row.data().toString().replace('\t', '\n'), this);
}

/// Where no row is the current one, the list itself shows that it has the keyboard.
void HoverList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  QPainter painter(viewport());
  if (hasFocus() && !currentIndex().isValid()) PaintFocusRing(painter, viewport()->rect(), layout_.scale);
  if (!rows_.empty() || emptyText_.isEmpty()) return;
  painter.setPen(layout_.colour);
  painter.drawText(viewport()->rect().adjusted(2 * kMargin, kMargin, -2 * kMargin, -kMargin),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void HoverList::mouseMoveEvent(QMouseEvent* event) {
  if (followsPointer_) Hover(event->pos());
}

void HoverList::mousePressEvent(QMouseEvent* event) {
  Hover(event->pos());
  if (!indexAt(event->pos()).isValid()) return;
  if (event->button() == Qt::LeftButton) Call(OnLeftPress);
  if (event->button() == Qt::RightButton) Call(OnRightPress);
}

void HoverList::wheelEvent(QWheelEvent* event) {
  QListView::wheelEvent(event);
  if (OnHover && followsPointer_) OnHover(indexAt(event->position().toPoint()).row(), Drawn(height() / 2));
}

void HoverList::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (OnEnter)
      OnEnter();
    else if (LandsOnRow())
      Call(OnLeftPress);
  } else if (key == Qt::Key_Escape) {
    Call(OnEscape);
  } else if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
    if (LandsOnRow()) Call(OnMenuKey ? OnMenuKey : OnRightPress);
  } else {
    QListView::keyPressEvent(event);
    if (followsPointer_) TellWhole(currentIndex());
  }
}

/// True when there is a current row, if need be the one to start from.
bool HoverList::LandsOnRow() {
  if (!currentIndex().isValid()) setCurrentIndex(moveCursor(MoveDown, {}));
  return currentIndex().isValid();
}

QModelIndex HoverList::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int last = texts_.rowCount() - 1, page = std::max(1, height() / layout_.rowHeight - 1);
  const int from = currentIndex().row();
  if (last < firstRow_) return {};
  const auto row = [&] {
    if (action == MoveHome) return firstRow_;
    if (action == MoveEnd) return last;
    if (from < 0) return start_;
    if (action == MovePageUp || action == MovePageDown) return from + (action == MovePageUp ? -page : page);
    const bool back = action == MoveUp || action == MoveLeft || action == MovePrevious;
    return from + (back ? -1 : 1);
  };
  return texts_.index(std::clamp(row(), firstRow_, last), 0);
}

void HoverList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (!syncing_ && OnHover) OnHover(current.row(), Drawn(height() / 2));
}

}  // namespace quillon
