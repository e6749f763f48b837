// The departure board: a row of black flaps for each route.
#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <functional>

#include "catalogue/TimetableScreen.h"
#include "screens/controls/Thumbnails.h"

namespace quillon {

/// The rows of the screen's model; nothing is copied.
class FlapRows : public QAbstractTableModel {
 public:
  static constexpr int kLoaded = Qt::UserRole;

  FlapRows(const TimetableScreen& screen, QObject* parent) : QAbstractTableModel(parent), screen_(screen) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(TimetableScreen::kColumns.size());
  }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  /// The rows are others now.
  void Renew();
  /// How many the screen has by now.
  int Count() const { return screen_.RowCount(); }
  const RouteDetails& RouteAt(int row) const { return screen_.RouteAt(row); }
  std::string PreviewAt(int row) const { return screen_.PreviewOf(screen_.RouteAt(row)); }

 private:
  const TimetableScreen& screen_;
  int rows_ = 0;
};

class FlapBoard : public QTableView {
 public:
  /// `hostPath` gives the host's name of a text of the system. All outlive the board.
  FlapBoard(const TimetableScreen& screen, const QString& thumbnailFolder,
            std::function<QString(const std::string&)> hostPath, QWidget* parent);

  std::function<void(std::vector<int> rows, int current)> OnChoose;
  std::function<void(TimetableScreen::Column)> OnSort;
  std::function<void(const QString& letters)> OnType;
  std::function<void()> OnEnter, OnDelete;
  /// Where the menu is wanted.
  std::function<void(QPoint global)> OnMenu;

  /// Makes it equal to the screen's rows, order and choice.
  void Sync();

  /// What is chosen is told now, if it is yet to be told: before anything is done with it.
  void TellNow();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void keyboardSearch(const QString&) override {}
  void resizeEvent(QResizeEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void Dress();
  void SetColumnWidths();
  void TellChoice();
  void OpenMenu();
  void ShowChoice();

  const TimetableScreen& screen_;
  FlapRows* rows_;
  Thumbnails* thumbnails_;
  int revision_ = -1, nameWidth_ = 0;
  bool syncing_ = false, telling_ = false;
};

}  // namespace quillon
