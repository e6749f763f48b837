#include "screens/frmTimetable.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "screens/Art.h"
#include "screens/Fonts.h"

namespace quillon {
namespace {

constexpr QSize kSmallest(760, 480);
constexpr int kSizeDelay = 300, kSideWidth = 270;                           // milliseconds, pixels
constexpr int kPictureHeight = 176, kMostDescription = 160, kMostRows = 4;  // of the details: pixels, rows
constexpr int kOneRow = 1000;     // pixels that all buttons beside each other need
constexpr int kUnderCancel = 18;  // pixels
constexpr const char* kSection = "Timetable";

// The colours of the enamel signs, the brass and the flaps.
constexpr const char* kStyle = R"(
  QWidget { font-family: 'DejaVu Sans', Verdana, sans-serif; font-size: 13px; }
  QLabel { color: #FFF9D5; background: transparent; }
  QLabel#lblHead { color: #FFF9D5; background: #000080; border: 2px solid #C9A24A; border-radius: 6px;
    padding: 4px 18px; font-size: 17px; font-weight: bold; }
  QLabel#lblName { font-size: 16px; font-weight: bold; }
  QLabel#lblNothing { color: #FFF3A8; font-size: 15px; padding: 24px; }
  QLabel#imgRoute { background: #101010; border: 3px solid #C9A24A; border-radius: 3px; }
  QLineEdit { color: #000080; background: #FFF9D5; border: 2px solid #C9A24A; border-radius: 4px; padding: 4px 8px;
    selection-background-color: #000080; selection-color: #FFF9D5; }
  QLineEdit:focus { border-color: #FFE08A; background: #FFFFFF; }
  QFrame#frame { background: #06060A; border: 3px solid #C9A24A; border-radius: 5px; }
  QTableView { background: #06060A; border: none; outline: none; }
  QTableCornerButton::section { background: #000050; border: none; }
  QHeaderView { background: #000050; border: none; }
  QHeaderView::section { color: #FFF9D5; background: #000080; border: none; border-right: 1px solid #C9A24A;
    border-bottom: 2px solid #C9A24A; padding: 5px 6px; font-weight: bold; }
  QHeaderView::up-arrow { image: url(:/art/frmTimetable/sortup.svg); width: 11px; height: 11px; }
  QHeaderView::down-arrow { image: url(:/art/frmTimetable/sortdown.svg); width: 11px; height: 11px; }
  QHeaderView::section:hover { background: #2A2AB8; }
  QPlainTextEdit, QListWidget { color: #000080; background: #FFF9D5; border: 1px solid #C9A24A; border-radius: 3px;
    selection-background-color: #000080; selection-color: #FFF9D5; outline: none; }
  QListWidget::item:selected { color: #FFF9D5; background: #000080; }
  QPushButton { color: #FFF9D5; background: #000080; border: 2px solid #B8892B; border-radius: 4px; padding: 5px 10px;
    font-weight: bold; }
  QPushButton:hover, QPushButton:focus { background: #2A2AB8; border-color: #FFE08A; }
  QPushButton:focus { outline: 1px dashed #FFF3A8; outline-offset: -4px; }
  QPushButton:pressed { background: #000050; }
  QPushButton:disabled { color: #8C88A8; background: #1A1A48; border-color: #5A4A2A; }
  QPushButton#btnLoad { padding: 5px 22px; }
  QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; border: none; }
  QSplitter::handle { background: transparent; }
  QScrollBar:vertical { background: #101018; width: 14px; margin: 0; }
  QScrollBar:horizontal { background: #101018; height: 14px; margin: 0; }
  QScrollBar::handle { background: #B8892B; border-radius: 4px; margin: 2px; min-height: 28px; min-width: 28px; }
  QScrollBar::handle:hover { background: #F2DC9A; }
  QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
  QScrollBar::add-page, QScrollBar::sub-page { background: none; }
  QMenu { color: #000080; background: #FFF9D5; border: 2px solid #C9A24A; }
  QMenu::item { padding: 5px 22px; }
  QMenu::item:selected { color: #FFF9D5; background: #000080; }
  QMenu::item:disabled { color: #A8A088; }
  QToolTip { color: #000080; background: #FFF9D5; border: 1px solid #C9A24A; }
)";

QFont BoardFont() {
  ControlLayout usual;
  usual.size = 13;
  return FontOf(usual);
}

QString Text(const std::string& text) { return QString::fromStdString(text); }

QString Head(const char* what, std::size_t count) { return QStringLiteral("%1: %2").arg(what).arg(count); }

}  // namespace

frmTimetable::frmTimetable(TimetableScreen& model, Desk& desk) : ScreenView(model, desk), model_(model) {
  setWindowTitle("Quillon: all routes");
  setFont(BoardFont());
  setMinimumSize(kSmallest);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  content_ = new QWidget(this);
  content_->setStyleSheet(kStyle);  // not of the window: the boxes over it have their own
  whole->addWidget(content_);
  auto* rows = new QVBoxLayout(content_);
  rows->setContentsMargins(14, 20, 14, 18);
  rows->setSpacing(10);
  rows->addWidget(MakeHead());
  auto* middle = new QSplitter(content_);
  middle->setHandleWidth(10);
  middle->setChildrenCollapsible(false);
  middle->addWidget(MakeBoard());
  middle->addWidget(MakeSide());
  middle->setStretchFactor(0, 1);
  rows->addWidget(middle, 1);
  rows->addWidget(MakeButtons());
  MakeCancel();
  BindKeys();
  sizeTimer_ = new QTimer(this);
  sizeTimer_->setSingleShot(true);
  connect(sizeTimer_, &QTimer::timeout, this, [this] { RememberSize(); });
  clock_.start();
  board_->setFocus();
}

QLabel* frmTimetable::NewText(const char* name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QWidget* frmTimetable::MakeHead() {
  auto* head = new QWidget(content_);
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(12);
  row->addWidget(NewText("lblHead", "All routes", head));
  filter_ = new QLineEdit(head);
  filter_->setObjectName("txtFilter");
  filter_->setPlaceholderText("Find by name, zip name or description");
  filter_->setAccessibleName("Find routes by words of their name, zip name or description");
  filter_->setClearButtonEnabled(true);
  filter_->installEventFilter(this);
  connect(filter_, &QLineEdit::textChanged, this,
          [this](const QString& text) { Do([&] { model_.Filter(text.toStdString()); }); });
  row->addWidget(filter_, 1);
  count_ = NewText("lblCount", {}, head);
  row->addWidget(count_);
  return head;
}

QWidget* frmTimetable::MakeBoard() {
  auto* frame = new QFrame(content_);
  frame->setObjectName("frame");
  auto* inside = new QVBoxLayout(frame);
  inside->setContentsMargins(3, 3, 3, 3);
  const std::string thumbnails = TheDesk().TheProgram().app.Thumbnails();
  board_ = new FlapBoard(
      model_, TheDesk().HostPath(thumbnails),
      [this](const std::string& path) { return TheDesk().HostPath(path); }, frame);
  board_->setObjectName("ListTimetable");
  board_->setAccessibleName("All routes");
  inside->addWidget(board_);
  auto* over = new QVBoxLayout(board_->viewport());
  nothing_ = NewText("lblNothing", {}, board_->viewport());
  nothing_->setAlignment(Qt::AlignCenter);
  nothing_->setWordWrap(true);
  nothing_->setAttribute(Qt::WA_TransparentForMouseEvents);
  over->addWidget(nothing_);
  board_->OnChoose = [this](std::vector<int> chosen, int current) {
    Do([&] { model_.Choose(std::move(chosen), current); });
  };
  board_->OnSort = [this](TimetableScreen::Column column) { Do([&] { model_.SortBy(column); }); };
  board_->OnType = [this](const QString& letters) {
    Do([&] { model_.TypeAhead(letters.toStdString(), clock_.elapsed()); });
  };
  board_->OnEnter = [this] { Call(&TimetableScreen::btnLoadClick); };
  board_->OnDelete = [this] { Call(&TimetableScreen::btnRemoveClick); };
  board_->OnMenu = [this](QPoint global) { ShowMenu(global); };
  connect(board_, &QTableView::doubleClicked, this, [this] { Call(&TimetableScreen::btnLoadClick); });
  return frame;
}

QListWidget* frmTimetable::NewList(const char* name, const QString& accessible) {
  auto* list = new QListWidget(side_);
  list->setObjectName(name);
  list->setAccessibleName(accessible);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setTextElideMode(Qt::ElideMiddle);
  list->setUniformItemSizes(true);
  return list;
}

QWidget* frmTimetable::MakeSide() {
  auto* area = new QScrollArea(content_);
  area->setWidgetResizable(true);
  area->setMinimumWidth(kSideWidth);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  side_ = new QWidget(area);
  auto* column = new QVBoxLayout(side_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(5);
  picture_ = NewText("imgRoute", {}, side_);
  picture_->setAccessibleName("Preview of the route");
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFixedHeight(kPictureHeight);
  name_ = NewText("lblName", {}, side_);
  name_->setWordWrap(true);
  facts_ = NewText("lblFacts", {}, side_);
  facts_->setWordWrap(true);
  description_ = new QPlainTextEdit(side_);
  description_->setObjectName("lblDescription");
  description_->setAccessibleName("Description of the route");
  description_->setReadOnly(true);
  description_->setMinimumHeight(70);
  description_->setMaximumHeight(kMostDescription);
  documentsHead_ = NewText("lblDocuments", {}, side_);
  documents_ = NewList("ListDocuments", "Documents of the route");
  savesHead_ = NewText("lblSaves", {}, side_);
  saves_ = NewList("ListSaves", "Saved activities of the route");
  shelfHead_ = NewText("lblShelf", {}, side_);
  shelf_ = NewList("ListShelf", "Rescued files of the route");
  for (QWidget* widget : std::initializer_list<QWidget*>{picture_, name_, facts_}) column->addWidget(widget);
  column->addWidget(description_);
  for (const auto& [head, list] :
       {std::pair{documentsHead_, documents_}, {savesHead_, saves_}, {shelfHead_, shelf_}}) {
    column->addWidget(head);
    column->addWidget(list);
  }
  column->addStretch(1);
  connect(documents_, &QListWidget::itemActivated, this,
          [this] { Do([&] { model_.ListDocumentsPress(documents_->currentRow()); }); });
  connect(documents_, &QListWidget::currentRowChanged, this,
          [this](int row) { model_.ListDocuments.current = row; });
  area->setWidget(side_);
  return area;
}

QPushButton* frmTimetable::NewButton(const char* name, const QString& caption, const QString& tip,
                                     const Button& button, Handler click) {
  auto* widget = new QPushButton(caption, content_);
  widget->setObjectName(name);
  widget->setToolTip(tip);
  widget->setAccessibleDescription(tip);
  widget->setAutoDefault(false);
  connect(widget, &QPushButton::clicked, this, [this, click] { Call(click); });
  buttons_.emplace_back(widget, &button);
  return widget;
}

QWidget* frmTimetable::MakeButtons() {
  auto* bar = new QWidget(content_);
  buttonRows_ = new QBoxLayout(QBoxLayout::LeftToRight, bar);
  buttonRows_->setContentsMargins(0, 0, 0, 0);
  auto *acts = new QHBoxLayout, *others = new QHBoxLayout;
  for (QBoxLayout* row : {static_cast<QBoxLayout*>(acts), static_cast<QBoxLayout*>(others)}) {
    row->setSpacing(6);
    buttonRows_->addLayout(row);
  }
  TimetableScreen& m = model_;
  using T = TimetableScreen;
  acts->addWidget(NewButton("btnLoad", "&Load", "Load the route into Train Simulator (Enter).", m.btnLoad,
                            &T::btnLoadClick));
  acts->addWidget(NewButton("btnDocuments", "&Documents",
                            "Open the chosen document, or the folder of them all.", m.btnDocuments,
                            &T::btnDocumentsClick));
  acts->addWidget(NewButton("btnFolder", "&Folder", "Open the folder of the route files.", m.btnFolder,
                            &T::btnFolderClick));
  acts->addWidget(NewButton("btnCheckup", "&Checkup",
                            "Find out which activities of the chosen routes can be played.", m.btnCheckup,
                            &T::btnCheckupClick));
  acts->addWidget(NewButton("btnPutBack", "&Put back", "Put the newest rescued files of the route back.",
                            m.btnPutBack, &T::btnPutBackClick));
  acts->addWidget(NewButton("btnPermanent", "Make per&manent",
                            "Make the loaded route an ordinary route of the game.", m.btnPermanent,
                            &T::btnPermanentClick));
  acts->addWidget(NewButton("btnRemove", "&Remove", "Remove the chosen routes from Quillon (Del).",
                            m.btnRemove, &T::btnRemoveClick));
  acts->addStretch(1);
  others->addStretch(1);
  others->addWidget(NewButton("btnVerify", "&Verify", "Compare the catalogue with the files, and repair it.",
                              m.btnVerify, &T::btnVerifyClick));
  others->addWidget(NewButton("btnHelp", "&Help", "Need help?", m.btnHelp, &T::btnHelpClick));
  others->addWidget(NewButton("btnOK", "&OK", "Back to the main screen (Esc).", m.btnOK, &T::btnOKClick));
  return bar;
}

/// Over the others, which rest while the board works.
void frmTimetable::MakeCancel() {
  cancel_ = new QPushButton("Cancel", this);
  cancel_->setObjectName("btnCancel");
  cancel_->setToolTip("Stop here and leave everything as it was (Esc).");
  cancel_->setAccessibleDescription(cancel_->toolTip());
  cancel_->setStyleSheet(kStyle);
  cancel_->hide();
  connect(cancel_, &QPushButton::clicked, this, [this] { Stop(); });
}

void frmTimetable::Call(Handler handler) {
  board_->TellNow();
  Do([&model = model_, handler] { (model.*handler)(); });
}

void frmTimetable::ShowMenu(QPoint global) {
  board_->TellNow();
  QMenu menu(content_);
  for (const auto& [widget, button] : buttons_) {
    const QString name = widget->objectName();
    if (name == "btnHelp" || name == "btnOK") continue;
    if (name == "btnVerify") menu.addSeparator();
    QAction* action = menu.addAction(widget->text());
    action->setEnabled(button->enabled);
    connect(action, &QAction::triggered, widget, &QPushButton::click, Qt::QueuedConnection);
  }
  menu.exec(global);
}

void frmTimetable::BindKeys() {
  const auto toFilter = [this] {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
  };
  for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_F3)})
    connect(new QShortcut(keys, this), &QShortcut::activated, this, toFilter);
}

/// From the line to the rows, and Enter loads what they show.
bool frmTimetable::eventFilter(QObject* watched, QEvent* event) {
  if (watched != filter_ || event->type() != QEvent::KeyPress) return ScreenView::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown || key == Qt::Key_Return ||
      key == Qt::Key_Enter) {
    board_->setFocus(Qt::TabFocusReason);
    return true;
  }
  return ScreenView::eventFilter(watched, event);
}

void frmTimetable::keyPressEvent(QKeyEvent* event) {
  auto* button = qobject_cast<QPushButton*>(focusWidget());
  if (event->key() == Qt::Key_Escape)
    Escape();
  else if (button != nullptr && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
    button->click();
  else
    QWidget::keyPressEvent(event);
}

/// First all routes come back, then the screen goes.
void frmTimetable::Escape() {
  if (model_.working) return Stop();
  if (!filter_->text().isEmpty()) {
    filter_->clear();
    board_->setFocus(Qt::OtherFocusReason);
  } else {
    Call(&TimetableScreen::btnOKClick);
  }
}

void frmTimetable::closeEvent(QCloseEvent* event) {
  event->ignore();
  model_.working ? Stop() : Call(&TimetableScreen::btnOKClick);
}

/// What can't be given up says so.
void frmTimetable::Stop() {
  if (model_.btnCancel.enabled)
    model_.btnCancelClick();
  else
    count_->setText("Quillon is at work. One moment.");
}

void frmTimetable::Sync() {
  ScreenView::Sync();
  ShowWork();
  if (model_.working) return;
  for (const auto& [widget, button] : buttons_) widget->setEnabled(button->enabled);
  count_->setText(Text(model_.lblCount.text));
  nothing_->setText(Text(model_.lblNothing.text));
  nothing_->setVisible(model_.lblNothing.visible);
  board_->Sync();
  ShowSide();
}

/// What is disabled loses the keyboard, and gets it back.
void frmTimetable::ShowWork() {
  cancel_->setVisible(model_.btnCancel.visible);
  cancel_->setEnabled(model_.btnCancel.enabled);
  if (content_->isEnabled() != model_.working) return;
  if (model_.working) focused_ = focusWidget();
  content_->setEnabled(!model_.working);
  if (!model_.working)
    (focused_ ? focused_.data() : static_cast<QWidget*>(board_))->setFocus(Qt::OtherFocusReason);
}

void frmTimetable::Measure(unsigned long long done, unsigned long long total, const std::string& unit) {
  count_->setText(QStringLiteral("%1 of %2 %3")
                      .arg(unit == "bytes" ? done >> 20 : done)
                      .arg(unit == "bytes" ? total >> 20 : total)
                      .arg(unit == "bytes" ? "MB" : Text(unit)));
}

void frmTimetable::Fill(QListWidget& list, const List& rows) {
  const QSignalBlocker quiet(&list);
  list.clear();
  for (const auto& row : rows.rows) {
    auto* item = new QListWidgetItem(Text(row), &list);
    item->setToolTip(item->text());
  }
  const int shown = std::min(list.count(), kMostRows);
  list.setFixedHeight(shown * list.sizeHintForRow(0) + 2 * list.frameWidth() + 2);
  list.setVisible(shown > 0);
}

void frmTimetable::ShowSide() {
  side_->setVisible(model_.Current() >= 0);
  const std::string mark = model_.imgRoute + "\n" + std::to_string(model_.Revision());
  if (shown_ == mark) return;
  shown_ = mark;
  name_->setText(Text(model_.lblName.text));
  facts_->setText(Text(model_.lblFacts.text));
  description_->setPlainText(Text(model_.lblDescription.text));
  description_->setPlaceholderText("The route has no description.");
  Fill(*documents_, model_.ListDocuments);
  Fill(*saves_, model_.ListSaves);
  Fill(*shelf_, model_.ListShelf);
  documentsHead_->setText(Head("Documents", model_.ListDocuments.rows.size()));
  savesHead_->setText(Head("Saved activities", model_.ListSaves.rows.size()));
  shelfHead_->setText(Head("Rescued files", model_.ListShelf.rows.size()));
  ShowPicture();
}

void frmTimetable::ShowPicture() {
  if (model_.imgRoute.empty()) return picture_->clear();
  QImageReader reader(TheDesk().HostPath(model_.imgRoute));
  reader.setDecideFormatFromContent(true);
  QImage picture = reader.read();
  if (picture.isNull()) {
    picture_->setText("No picture");
    return;
  }
  const QSize room = (QSizeF(kSideWidth - 8, picture_->height() - 8) * devicePixelRatioF()).toSize();
  picture = picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture_->setPixmap(QPixmap::fromImage(picture));
}

void frmTimetable::paintEvent(QPaintEvent*) {
  QPainter(this).drawPixmap(rect(), Picture("frmTimetable/background", size(), devicePixelRatioF()));
}

QSize frmTimetable::SizeIn(const QSize& room, double) {
  const QSize smallest = kSmallest.boundedTo(room);
  setMinimumSize(smallest);
  Program& program = TheDesk().TheProgram();
  const QStringList stored =
      Text(program.ini.ReadIni(kSection, "Size", "1310,740", program.app.SettingsIni())).split(',');
  return QSize(stored.value(0).toInt(), stored.value(1).toInt()).boundedTo(room).expandedTo(smallest);
}

void frmTimetable::resizeEvent(QResizeEvent* event) {
  ScreenView::resizeEvent(event);
  buttonRows_->setDirection(width() < kOneRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  cancel_->adjustSize();
  cancel_->move((width() - cancel_->width()) / 2, height() - cancel_->height() - kUnderCancel);
  if (isVisible()) sizeTimer_->start(kSizeDelay);
}

void frmTimetable::RememberSize() {
  Program& program = TheDesk().TheProgram();
  program.ini.WriteIni(kSection, "Size", std::to_string(width()) + "," + std::to_string(height()),
                       program.app.SettingsIni());
}

}  // namespace quillon
