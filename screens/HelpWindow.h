// The window of the help: contents, index and find on the left, the page on the right.
#pragma once

#include <QHash>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/HelpBook.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace quillon {

class HelpWindow : public QWidget {
 public:
  /// The tabs on the left, in their order.
  enum class Tab { Contents, Index, Find };

  /// `hostPath` gives the host's name of a path of the system; it is not kept.
  HelpWindow(std::unique_ptr<HelpBook> book, const std::function<QString(const std::string&)>& hostPath);

  const HelpBook& Book() const { return *book_; }
  /// Brings a tab to the front, with the keyboard on it.
  void ShowTab(Tab tab);
  void ShowPage(const HelpPage& page, const QString& anchor = {});
  /// The page on view; null for what the book does not have.
  const HelpPage* PageOnView() const;

 protected:
  /// The letter of a tab leads into its line.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* MakeSign();
  QWidget* MakeContents();
  QWidget* MakeIndex();
  QWidget* MakeFind();
  QWidget* MakePage();
  void MakeKeys();
  void Filter(const QString& text);
  void Find(const QString& words);
  void ShowFinding(int row);
  const HelpPage* PageAt(const QUrl& place) const;
  void FollowPage(const QUrl& place);

  const std::unique_ptr<HelpBook> book_;
  QHash<const HelpPage*, QUrl> places_;
  QHash<const HelpPage*, QTreeWidgetItem*> items_;
  std::vector<HelpFinding> findings_;

  QTabWidget* tabs_;
  QTreeWidget* contents_;
  QLineEdit *filter_, *words_;
  QListWidget *index_, *found_;
  QLabel* findingsLabel_;
  QTextBrowser* page_;
};

}  // namespace quillon
