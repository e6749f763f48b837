#include "screens/HelpWindow.h"

#include <QEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "screens/Fonts.h"
#include "screens/HelpStyle.h"

namespace quillon {
namespace {

constexpr QSize kSize(920, 680), kSmallest(460, 320);
constexpr int kHelpFrame = 40;  // pixels that a window manager may add
constexpr int kLeftWidth = 250, kMargin = 10;
constexpr double kTextSize = 10.5;  // points
constexpr int kTitleRole = Qt::UserRole, kExcerptRole = Qt::UserRole + 1;

QString Text(const std::string& text) { return QString::fromStdString(text); }

QFont Face() {
  QFont font = FontOf(ControlLayout{.size = 13});
  font.setPointSizeF(kTextSize);  // the browser's zoom knows no pixels
  return font;
}

/// A finding: the page's title, and the words around what was searched for below it.
class FindingPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool current = (option.state & QStyle::State_Selected) != 0;
    if (current) painter->fillRect(option.rect, QColor(0x00, 0x00, 0x80));
    const QRect room = option.rect.adjusted(kGap, kGap / 2, -kGap, -kGap / 2);
    QFont bold = option.font;
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(current ? QColor(0xFF, 0xF9, 0xD5) : QColor(0x00, 0x00, 0x80));
    QRect title;
    painter->drawText(room, Qt::TextWordWrap, index.data(kTitleRole).toString(), &title);
    painter->setFont(option.font);
    painter->setPen(current ? QColor(0xFF, 0xF3, 0xA8) : QColor(0x14, 0x14, 0x50));
    painter->drawText(room.adjusted(0, title.height(), 0, 0), Qt::TextWordWrap,
                      index.data(kExcerptRole).toString());
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const auto* list = qobject_cast<const QListWidget*>(option.widget);
    const int width = list->viewport()->width() - 2 * kGap;
    QFont bold = list->font();
    bold.setBold(true);
    const auto height = [&](const QFont& font, int role) {
      return QFontMetrics(font)
          .boundingRect(QRect(0, 0, width, 1000), Qt::TextWordWrap, index.data(role).toString())
          .height();
    };
    return {width, height(bold, kTitleRole) + height(list->font(), kExcerptRole) + kGap};
  }

 private:
  static constexpr int kGap = 6;
};

QVBoxLayout* Column(QWidget* widget, int margin) {
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(6);
  return column;
}

/// Says so where a page is missing.
class PageBrowser : public QTextBrowser {
 public:
  QVariant loadResource(int type, const QUrl& name) override {
    const QString file = source().resolved(name).toLocalFile();
    if (type != QTextDocument::HtmlResource || QFileInfo(file).isFile())
      return QTextBrowser::loadResource(type, name);
    return QStringLiteral("<h2>This page is missing</h2><p>%1</p>").arg(file.toHtmlEscaped());
  }
};

QLineEdit* NewLine(const QString& name, const QString& hint) {
  auto* line = new QLineEdit;
  line->setObjectName(name);
  line->setAccessibleName(hint);
  line->setPlaceholderText(hint);
  line->setClearButtonEnabled(true);
  return line;
}

QListWidget* NewList(const QString& name, const QString& accessibleName) {
  auto* list = new QListWidget;
  list->setObjectName(name);
  list->setAccessibleName(accessibleName);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  return list;
}

}  // namespace

HelpWindow::HelpWindow(std::unique_ptr<HelpBook> book,
                       const std::function<QString(const std::string&)>& hostPath)
    : book_(std::move(book)) {
  for (const auto& chapter : book_->Chapters())
    for (const auto& page : chapter.pages)
      places_.insert(&page, QUrl::fromLocalFile(hostPath(book_->PathOf(page))));
  setObjectName("helpWindow");
  setWindowTitle(Text(book_->Title()));
  setStyleSheet(kHelpStyle);
  setMinimumSize(kSmallest);
  const QRect room = screen()->availableGeometry();
  resize(kSize.boundedTo(room.size() - QSize(kHelpFrame / 2, kHelpFrame)));
  move(room.center() - rect().center());

  QWidget* page = MakePage();  // the others turn to it
  auto* split = new QSplitter;
  tabs_ = new QTabWidget;
  tabs_->setAccessibleName("Ways to a page");
  tabs_->addTab(MakeContents(), "&Contents");
  tabs_->addTab(MakeIndex(), "&Index");
  tabs_->addTab(MakeFind(), "&Find");
  tabs_->tabBar()->installEventFilter(this);
  split->addWidget(tabs_);
  split->addWidget(page);
  split->setSizes({kLeftWidth, width() - kLeftWidth});
  split->setStretchFactor(1, 1);
  split->setChildrenCollapsible(false);
  split->setHandleWidth(kMargin);
  auto* body = new QWidget;
  Column(body, kMargin)->addWidget(split);
  auto* all = Column(this, 0);
  all->setSpacing(0);
  all->addWidget(MakeSign());
  all->addWidget(body, 1);
  MakeKeys();
  ShowPage(book_->Home());
  page_->setFocus();
}

QWidget* HelpWindow::MakeSign() {
  auto* sign = new QWidget;
  sign->setObjectName("sign");
  sign->setAttribute(Qt::WA_StyledBackground);
  auto* row = new QHBoxLayout(sign);
  row->setContentsMargins(kMargin, 8, kMargin + 4, 9);
  const auto add = [&](const char* name, const char* caption, const char* tip) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    button->setCursor(Qt::PointingHandCursor);
    row->addWidget(button);
    return button;
  };
  QPushButton *back = add("back", "&Back", "To the page before (Alt+Left)"),
              *forward = add("forward", "F&orward", "To the page after (Alt+Right)"),
              *home = add("home", "&Home", "To the first page (Alt+Home)");
  for (QPushButton* button : {back, forward}) button->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(back, &QPushButton::clicked, page_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, page_, &QTextBrowser::forward);
  connect(home, &QPushButton::clicked, this, [this] { ShowPage(book_->Home()); });
  row->addStretch(1);
  auto* text = new QLabel(Text(book_->Title()).toUpper());
  text->setObjectName("signText");
  row->addWidget(text);
  return sign;
}

QWidget* HelpWindow::MakeContents() {
  contents_ = new QTreeWidget;
  contents_->setObjectName("contents");
  contents_->setAccessibleName("Contents");
  contents_->setHeaderHidden(true);
  contents_->setIndentation(12);
  contents_->setTextElideMode(Qt::ElideRight);
  for (const auto& chapter : book_->Chapters()) {
    auto* head = new QTreeWidgetItem(contents_, {Text(chapter.title)});
    QFont bold = font();
    bold.setBold(true);
    head->setFont(0, bold);
    for (const auto& page : chapter.pages) {
      auto* item = new QTreeWidgetItem(head, {Text(page.title)});
      item->setToolTip(0, Text(page.title));
      items_.insert(&page, item);
    }
    head->setExpanded(true);
  }
  const auto show = [this](QTreeWidgetItem* item) {
    if (const HelpPage* page = items_.key(item)) ShowPage(*page);
  };
  connect(contents_, &QTreeWidget::currentItemChanged, this, show);
  connect(contents_, &QTreeWidget::itemClicked, this, show);
  return contents_;
}

QWidget* HelpWindow::MakeIndex() {
  auto* pane = new QWidget;
  filter_ = NewLine("filter", "Look up a keyword");
  index_ = NewList("index", "Keywords");
  for (const auto& keyword : book_->Index()) index_->addItem(Text(keyword.text));
  const auto show = [this](int row) {
    if (row < 0) return;
    const HelpKeyword& keyword = book_->Index().at(static_cast<std::size_t>(row));
    ShowPage(*keyword.page, Text(keyword.anchor));
  };
  connect(filter_, &QLineEdit::textChanged, this, &HelpWindow::Filter);
  connect(filter_, &QLineEdit::returnPressed, this, [this] { index_->setFocus(); });
  connect(index_, &QListWidget::currentRowChanged, this, show);
  connect(index_, &QListWidget::itemClicked, this, [this, show] { show(index_->currentRow()); });
  auto* column = Column(pane, 8);
  column->addWidget(filter_);
  column->addWidget(index_, 1);
  return pane;
}

QWidget* HelpWindow::MakeFind() {
  auto* pane = new QWidget;
  words_ = NewLine("words", "Find words in all pages");
  found_ = NewList("found", "Pages found");
  found_->setItemDelegate(new FindingPainter(found_));
  found_->setResizeMode(QListView::Adjust);
  findingsLabel_ = new QLabel;
  findingsLabel_->setObjectName("findings");
  findingsLabel_->setWordWrap(true);
  connect(words_, &QLineEdit::textChanged, this, &HelpWindow::Find);
  connect(words_, &QLineEdit::returnPressed, this, [this] {
    found_->setFocus();
    found_->setCurrentRow(0);
  });
  connect(found_, &QListWidget::currentRowChanged, this, &HelpWindow::ShowFinding);
  connect(found_, &QListWidget::itemClicked, this, [this] { ShowFinding(found_->currentRow()); });
  auto* column = Column(pane, 8);
  column->addWidget(words_);
  column->addWidget(findingsLabel_);
  column->addWidget(found_, 1);
  return pane;
}

QWidget* HelpWindow::MakePage() {
  page_ = new PageBrowser;
  page_->setObjectName("page");
  page_->setAccessibleName("Page");
  page_->setFont(Face());
  page_->document()->setDocumentMargin(kMargin);
  page_->setOpenExternalLinks(true);
  connect(page_, &QTextBrowser::sourceChanged, this, &HelpWindow::FollowPage);
  return page_;
}

void HelpWindow::MakeKeys() {
  const auto key = [this](const QKeySequence& keys, auto action) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
  };
  key(Qt::CTRL | Qt::Key_F, [this] { ShowTab(Tab::Find); });
  key(Qt::ALT | Qt::Key_Left, [this] { page_->backward(); });
  key(Qt::ALT | Qt::Key_Right, [this] { page_->forward(); });
  key(Qt::ALT | Qt::Key_Home, [this] { ShowPage(book_->Home()); });
  for (const auto plus : {Qt::Key_Plus, Qt::Key_Equal}) key(Qt::CTRL | plus, [this] { page_->zoomIn(); });
  key(Qt::CTRL | Qt::Key_Minus, [this] { page_->zoomOut(); });
  key(Qt::Key_Escape, [this] { close(); });
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Shortcut)
    QTimer::singleShot(0, this, [this] { ShowTab(static_cast<Tab>(tabs_->currentIndex())); });
  return QWidget::eventFilter(watched, event);
}

void HelpWindow::ShowTab(Tab tab) {
  tabs_->setCurrentIndex(static_cast<int>(tab));
  if (tab == Tab::Contents) contents_->setFocus();
  QLineEdit* line = tab == Tab::Index ? filter_ : words_;
  if (tab == Tab::Contents) return;
  line->setFocus();
  line->selectAll();
}

void HelpWindow::ShowPage(const HelpPage& page, const QString& anchor) {
  QUrl place = places_[&page];
  if (!anchor.isEmpty()) place.setFragment(anchor);
  page_->setSource(place);
}

const HelpPage* HelpWindow::PageAt(const QUrl& place) const {
  return places_.key(place.adjusted(QUrl::RemoveFragment));
}

const HelpPage* HelpWindow::PageOnView() const { return PageAt(page_->source()); }

/// The contents show where the reader has come to. The browser's own source lags behind.
void HelpWindow::FollowPage(const QUrl& place) {
  QTreeWidgetItem* item = items_.value(PageAt(place));
  const QSignalBlocker silent(contents_);
  contents_->setCurrentItem(item);
}

void HelpWindow::Filter(const QString& text) {
  for (int row = 0; row < index_->count(); ++row)
    index_->setRowHidden(row, !index_->item(row)->text().contains(text.trimmed(), Qt::CaseInsensitive));
}

void HelpWindow::Find(const QString& words) {
  findings_ = book_->Find(words.simplified().toStdString());
  found_->clear();
  for (const HelpFinding& finding : findings_) {
    auto* item = new QListWidgetItem(found_);
    item->setData(kTitleRole, Text(finding.page->title));
    item->setData(kExcerptRole, Text(finding.excerpt));
    item->setData(Qt::AccessibleTextRole, Text(finding.page->title + ": " + finding.excerpt));
  }
  const auto count = findings_.size();
  findingsLabel_->setText(words.trimmed().isEmpty() ? QString()
                          : count == 0              ? "No page holds all of these words."
                          : count == 1              ? "1 page"
                                                    : QStringLiteral("%1 pages").arg(count));
}

/// The first of the words is marked, with what stands before it in view.
void HelpWindow::ShowFinding(int row) {
  if (row < 0) return;
  ShowPage(*findings_.at(static_cast<std::size_t>(row)).page);
  page_->moveCursor(QTextCursor::Start);
  page_->find(words_->text().simplified().section(' ', 0, 0));
  page_->verticalScrollBar()->setValue(page_->verticalScrollBar()->value() + page_->cursorRect().top() -
                                       page_->viewport()->height() / 3);
}

}  // namespace quillon
