// A list that selects what the pointer passes over, or what is pressed.
#pragma once

#include <QListView>
#include <QStringListModel>
#include <functional>
#include <string>
#include <vector>

#include "core/Controls.h"
#include "screens/Layout.h"

namespace quillon {

class HoverList : public QListView {
 public:
  /// `layout` outlives the list. `name` is for those who can't see it.
  HoverList(const ControlLayout& layout, const QString& name, QWidget* parent);

  /// The pointer is over a row, -1 for none, `y` pixels as drawn below the list's top; or a key has reached
  /// the row.
  std::function<void(int row, int y)> OnHover;
  std::function<void()> OnLeftPress, OnRightPress, OnEscape;
  /// The Enter key; without it that is a left press on the current row.
  std::function<void()> OnEnter;
  /// The menu key on a row; without it that is a right press.
  std::function<void()> OnMenuKey;

  /// When false, only presses and keys reach a row, and the screen tells elsewhere what a row leaves out.
  void SetFollowsPointer(bool follows) { followsPointer_ = follows; }

  /// Keys land on no row before this one.
  void SetFirstRow(int row) { firstRow_ = row; }
  /// The first key lands there while no row is the current one.
  void SetStart(int row) { start_ = row; }

  /// Takes on its place and looks, after the layout has changed.
  void Dress();
  /// Stands in the list while it has no rows: what would be there.
  void SetEmptyText(const QString& text) { emptyText_ = text; }

  /// Makes it equal to the model's. The list's own end limits `top`.
  void Sync(List& list);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void Colour();
  void TellWhole(const QModelIndex& row);
  int Drawn(int y) const { return static_cast<int>(y / layout_.scale); }
  void Hover(QPoint position);
  bool LandsOnRow();
  void ShowFrom(List& list);
  void Call(const std::function<void()>& handler) const {
    if (handler) handler();
  }

  const ControlLayout& layout_;
  std::vector<std::string> rows_;
  QStringListModel texts_;
  QString emptyText_;
  bool syncing_ = false, followsPointer_ = true;
  int top_ = 0, firstRow_ = 0, start_ = 0;
};

}  // namespace quillon
