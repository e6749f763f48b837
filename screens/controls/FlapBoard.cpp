#include "screens/controls/FlapBoard.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

namespace quillon {
namespace {

using Column = TimetableScreen::Column;

constexpr int kRowHeight = 42, kThumbnailWidth = 48, kThumbnailHeight = 36, kGap = 6,
              kBesideHead = 30;   // pixels at 100 %; the last is for the arrow
constexpr int kLostAtTheEnd = 6;  // letters that a broken line may leave empty
constexpr QColor kHall(0x06, 0x06, 0x0A), kFlap(0x17, 0x17, 0x17), kLowerFlap(0x10, 0x10, 0x10),
    kSlit(0x00, 0x00, 0x00), kLetters(0xFF, 0xF3, 0xA8), kChosenFlap(0x3A, 0x3A, 0x10),
    kChosenLower(0x30, 0x30, 0x0A), kBright(0xFF, 0xFF, 0xFF), kLamp(0x4C, 0xE0, 0x6A),
    kFaint(0xB8, 0xAE, 0x80);

// What has to find room in a column; longer names are cut.
constexpr std::array kSamples = {"Coldharbour Kleinbahn",
                                 "coldharbour_1.2",
                                 "9999 MB",
                                 "9999 MB",
                                 "99999",
                                 "2026-12-31",
                                 "2026-12-31",
                                 "999 of 999",
                                 "999"};

bool IsNumber(int column) { return column >= static_cast<int>(Column::Packed); }

/// Paints a cell as two halves of a flap with its text across both.
class FlapPainter : public QStyledItemDelegate {
 public:
  FlapPainter(const FlapRows& rows, Thumbnails& thumbnails,
              std::function<QString(const std::string&)> hostPath, QObject* parent)
      : QStyledItemDelegate(parent), rows_(rows), thumbnails_(thumbnails), hostPath_(std::move(hostPath)) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool chosen = option.state.testFlag(QStyle::State_Selected);
    QRect flap = option.rect.adjusted(1, 1, -1, -1);
    painter->fillRect(option.rect, kHall);
    if (index.column() == 0) flap.setLeft(PaintPicture(*painter, option.rect, index.row()));
    PaintFlap(*painter, flap, chosen);
    QRect text = flap.adjusted(kGap, 0, -kGap, 0);
    if (index.column() == 0 && index.data(FlapRows::kLoaded).toBool())
      text = PaintLamp(*painter, option, text);
    PaintText(*painter, option, text, index, chosen);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
      painter->setPen(kLetters);
      painter->drawRect(flap.adjusted(0, 0, -1, -1));
    }
  }

 private:
  int PaintPicture(QPainter& painter, const QRect& cell, int row) const {
    const QRect frame(cell.left() + 3, cell.center().y() - kThumbnailHeight / 2 + 1, kThumbnailWidth,
                      kThumbnailHeight);
    painter.fillRect(frame, kFlap);
    if (row >= rows_.Count()) return frame.right() + 4;  // the rows are about to change
    const RouteDetails& route = rows_.RouteAt(row);
    const QPixmap picture =
        thumbnails_.Of(QString::fromStdString(route.zip), [&] { return hostPath_(rows_.PreviewAt(row)); });
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!picture.isNull()) painter.drawPixmap(frame, picture);
    return frame.right() + 4;
  }

  static void PaintFlap(QPainter& painter, const QRect& flap, bool chosen) {
    const int middle = flap.center().y();
    painter.fillRect(flap, chosen ? kChosenFlap : kFlap);
    painter.fillRect(QRect(flap.left(), middle, flap.width(), flap.bottom() - middle + 1),
                     chosen ? kChosenLower : kLowerFlap);
    painter.fillRect(flap.left(), middle, flap.width(), 1, kSlit);
  }

  /// The lamp and its word, at the right end; what is left of `text`.
  static QRect PaintLamp(QPainter& painter, const QStyleOptionViewItem& option, QRect text) {
    QFont font = option.font;
    font.setBold(true);
    font.setPixelSize(font.pixelSize() - 2);
    const QString word = "LOADED";
    const int width = QFontMetrics(font).horizontalAdvance(word), lamp = 10;
    const QRect place(text.right() - width, text.top(), width + 1, text.height());
    painter.setFont(font);
    painter.setPen(kLamp);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft, word);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(place.left() - lamp, place.center().y() + 1);
    QColor glow = kLamp;
    glow.setAlpha(70);
    painter.setPen(Qt::NoPen);
    painter.setBrush(glow);
    painter.drawEllipse(centre, 8, 8);
    painter.setBrush(kLamp);
    painter.drawEllipse(centre, 4.5, 4.5);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
    text.setRight(place.left() - 2 * lamp);
    return text;
  }

  /// A zip name has no blanks to be broken at.
  static int WrapOf(int column) { return column == 0 ? Qt::TextWordWrap : Qt::TextWrapAnywhere; }

  static void PaintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                        const QModelIndex& index, bool chosen) {
    QFont font = option.font;
    font.setBold(index.column() == 0);
    painter.setFont(font);
    painter.setPen(chosen ? kBright : index.column() == 1 ? kFaint : kLetters);
    const Qt::Alignment side = IsNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft;
    const QString text = index.data().toString();
    const QFontMetrics letters(font);
    const bool wraps = index.column() < 2 && letters.horizontalAdvance(text) > place.width();
    const int flags = int(Qt::AlignVCenter | side) | (wraps ? WrapOf(index.column()) : 0);
    int room = wraps ? 2 * place.width() - letters.averageCharWidth() * kLostAtTheEnd : place.width();
    QString shown = letters.elidedText(text, Qt::ElideRight, room);
    // Words that don't fit a line leave room in it.
    while (wraps && room > place.width() &&
           letters.boundingRect(place, flags, shown).height() > place.height()) {
      room -= letters.averageCharWidth();
      shown = letters.elidedText(text, Qt::ElideRight, room);
    }
    painter.drawText(place, flags, shown);
  }

  const FlapRows& rows_;
  Thumbnails& thumbnails_;
  const std::function<QString(const std::string&)> hostPath_;
};

}  // namespace

QVariant FlapRows::data(const QModelIndex& index, int role) const {
  const auto row = index.row();
  if (!index.isValid() || row >= screen_.RowCount()) return {};
  const RouteDetails& route = screen_.RouteAt(row);
  const auto text = [&] {
    return QString::fromStdString(TimetableScreen::TextOf(route, static_cast<Column>(index.column())));
  };
  if (role == Qt::DisplayRole) return text();
  if (role == kLoaded) return route.loaded;
  if (role == Qt::ToolTipRole && index.column() < 2) return text();
  if (role == Qt::AccessibleTextRole)
    return headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString() + ": " + text() +
           (index.column() == 0 && route.loaded ? ", loaded" : "");
  return {};
}

QVariant FlapRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole)
    return int(IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
  return role == Qt::DisplayRole ? TimetableScreen::HeadOf(static_cast<Column>(section)) : QVariant();
}

void FlapRows::Renew() {
  beginResetModel();
  rows_ = screen_.RowCount();
  endResetModel();
}

FlapBoard::FlapBoard(const TimetableScreen& screen, const QString& thumbnailFolder,
                     std::function<QString(const std::string&)> hostPath, QWidget* parent)
    : QTableView(parent),
      screen_(screen),
      rows_(new FlapRows(screen, this)),
      thumbnails_(new Thumbnails(thumbnailFolder, this)) {
  setModel(rows_);
  setItemDelegate(new FlapPainter(*rows_, *thumbnails_, std::move(hostPath), this));
  thumbnails_->OnReady = [this] { viewport()->update(); };
  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
    if (OnSort) OnSort(static_cast<Column>(column));
  });
  Dress();
  SetColumnWidths();
}

void FlapBoard::Dress() {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(kRowHeight);
  verticalScrollBar()->setSingleStep(kRowHeight / 2);
  horizontalScrollBar()->setSingleStep(kRowHeight);
  horizontalHeader()->setSectionsClickable(true);
  horizontalHeader()->setSortIndicatorShown(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setMinimumSectionSize(40);
  setFrameShape(NoFrame);
}

void FlapBoard::SetColumnWidths() {
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics letters(bold);
  for (int column = 0; column < rows_->columnCount(); ++column) {
    const int text = letters.horizontalAdvance(kSamples[static_cast<std::size_t>(column)]);
    const int head =
        letters.horizontalAdvance(rows_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    const int beside = column == 0 ? kThumbnailWidth + 2 * kGap : 0;
    setColumnWidth(column, std::max(text + 2 * kGap + 2 + beside, head + kBesideHead));
  }
  nameWidth_ = columnWidth(0);
}

/// The names get what the other columns leave.
void FlapBoard::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  int others = 0;
  for (int column = 1; column < rows_->columnCount(); ++column) others += columnWidth(column);
  setColumnWidth(0, std::max(nameWidth_, viewport()->width() - others));
}

void FlapBoard::Sync() {
  syncing_ = true;
  if (revision_ != screen_.Revision()) {
    revision_ = screen_.Revision();
    thumbnails_->LookAgain();
    rows_->Renew();
    horizontalHeader()->setSortIndicator(static_cast<int>(screen_.SortColumn()),
                                         screen_.Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
    ShowChoice();
  } else if (!telling_) {
    ShowChoice();
  }
  syncing_ = false;
}

void FlapBoard::ShowChoice() {
  const int current = screen_.Current();
  if (current == currentIndex().row() && !telling_ &&
      screen_.Chosen().size() == static_cast<std::size_t>(selectionModel()->selectedRows().size()))
    return;
  QItemSelection chosen;
  for (const int row : screen_.Chosen())
    chosen.select(rows_->index(row, 0), rows_->index(row, rows_->columnCount() - 1));
  if (current >= 0)
    selectionModel()->setCurrentIndex(rows_->index(current, 0), QItemSelectionModel::NoUpdate);
  selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
  if (current >= 0) scrollTo(rows_->index(current, 0), telling_ ? EnsureVisible : PositionAtCenter);
}

/// Once for a change of both.
void FlapBoard::TellChoice() {
  if (syncing_ || telling_) return;
  telling_ = true;
  QTimer::singleShot(0, this, [this] { TellNow(); });
}

void FlapBoard::TellNow() {
  if (!telling_) return;
  std::vector<int> rows;
  for (const auto& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  if (OnChoose) OnChoose(std::move(rows), currentIndex().row());
  telling_ = false;
}

void FlapBoard::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  TellChoice();
}

void FlapBoard::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  TellChoice();
}

/// From row to row; sideways the board is scrolled.
QModelIndex FlapBoard::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (action == MoveHome) return rows_->index(0, 0);
  if (action == MoveEnd) return rows_->index(rows_->rowCount() - 1, 0);
  if (action == MoveLeft || action == MoveRight) {
    QScrollBar& bar = *horizontalScrollBar();
    bar.triggerAction(action == MoveLeft ? QScrollBar::SliderSingleStepSub : QScrollBar::SliderSingleStepAdd);
    return currentIndex();
  }
  return QTableView::moveCursor(action, modifiers).siblingAtColumn(0);
}

void FlapBoard::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  const QString text = event->text();
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && OnEnter)
    OnEnter();
  else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
    OpenMenu();
  else if (event->key() == Qt::Key_Delete && OnDelete)
    OnDelete();
  else if (plain && !text.isEmpty() && text[0].isPrint() && OnType)
    OnType(text);
  else if (event->key() == Qt::Key_Escape)
    event->ignore();
  else
    QTableView::keyPressEvent(event);
}

void FlapBoard::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) return OpenMenu();
  if (OnMenu) OnMenu(event->globalPos());
}

/// At the current row.
void FlapBoard::OpenMenu() {
  if (OnMenu) OnMenu(viewport()->mapToGlobal(visualRect(currentIndex()).center()));
}

}  // namespace quillon
