#include "screens/controls/HoverList.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "screens/Fonts.h"

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
    const QString row = index.data().toString();
    const QStringList parts = layout_.columns.isEmpty() ? QStringList{row} : row.split('\t');
    for (qsizetype i = 0; i < parts.size(); ++i) {
      const QRect room = Column(i, option.rect).adjusted(kMargin, 0, -kMargin, 0);
      painter->drawText(room, Qt::AlignVCenter | Qt::TextSingleLine,
                        option.fontMetrics.elidedText(parts[i], Qt::ElideRight, room.width()));
    }
  }
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {0, layout_.rowHeight};
  }

 private:
  QRect Column(qsizetype i, const QRect& row) const {
    const int left = layout_.columns.value(i), right = layout_.columns.value(i + 1, row.width());
    return {row.left() + left, row.top(), right - left, row.height()};
  }

  const ControlLayout& layout_;
};

}  // namespace

HoverList::HoverList(const ControlLayout& layout, const QString& name, QWidget* parent)
    : QListView(parent), layout_(layout) {
  setGeometry(layout.rect);
  setAccessibleName(name);
  setFont(FontOf(layout));
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
}

/// Costs time, and most lists of a session are never seen.
void HoverList::Dress() {
  setStyleSheet(QStringLiteral("QListView { background: %1; }"
                               "QScrollBar:vertical { background: #1A1A1A; width: 12px; border: none; }"
                               "QScrollBar::handle:vertical { background: #B8892B; min-height: 14px;"
                               " border-radius: 4px; margin: 1px 2px; }"
                               "QScrollBar::add-line, QScrollBar::sub-line { height: 0; }")
                    .arg(layout_.background.name()));
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
  if (list.top != top_) verticalScrollBar()->setValue(list.top);
  top_ = list.top = verticalScrollBar()->value();
  setEnabled(list.enabled);
  setAccessibleDescription(rows_.empty() ? emptyText_ : QString());
  if (isVisibleTo(parentWidget()) != list.visible) {
    if (list.visible && styleSheet().isEmpty()) Dress();
    setVisible(list.visible);
    if (list.visible) raise();
    if (list.visible && list.enabled) setFocus();
  }
  syncing_ = false;
}

void HoverList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (!rows_.empty() || emptyText_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(layout_.colour);
  painter.drawText(viewport()->rect().adjusted(2 * kMargin, kMargin, -2 * kMargin, -kMargin),
                   Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void HoverList::Hover(QPoint position) {
  if (OnHover) OnHover(indexAt(position).row(), position.y());
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
  if (OnHover && followsPointer_) OnHover(indexAt(event->position().toPoint()).row(), height() / 2);
}

void HoverList::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) {
    if (OnEnter)
      OnEnter();
    else if (currentIndex().isValid())
      Call(OnLeftPress);
  } else if (key == Qt::Key_Escape) {
    Call(OnEscape);
  } else if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
    if (currentIndex().isValid()) Call(OnRightPress);
  } else {
    QListView::keyPressEvent(event);
  }
}

void HoverList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (!syncing_ && OnHover) OnHover(current.row(), height() / 2);
}

}  // namespace quillon
