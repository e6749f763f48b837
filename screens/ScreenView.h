// What all views have in common: a picture, and widgets that are kept equal to the controls of a model.
#pragma once

#include <QLabel>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "core/Controls.h"
#include "core/Screen.h"
#include "screens/Desk.h"
#include "screens/Layout.h"
#include "screens/controls/CaptionedBar.h"
#include "screens/controls/HoverList.h"
#include "screens/controls/PictureButton.h"

namespace quillon {

class ScreenView : public QWidget {
 public:
  /// Both outlive the view.
  ScreenView(Screen& model, Desk& desk);

  /// Makes all widgets equal to the model.
  virtual void Sync();
  /// The true measure of the work that the screen shows.
  virtual void Measure(unsigned long long, unsigned long long, const std::string&) {}
  /// Something that a user should know and that does not end the work.
  virtual void Notice(const QString&) {}
  /// The same, for so long that it can be read.
  virtual void PassingNotice(const QString&) {}
  /// What is being done and takes a while; empty when it is done.
  virtual void ShowWait(const QString&) {}
  /// Puts the window there; WasMoved tells whether the user has moved it away since.
  void PlaceAt(QPoint position);
  bool WasMoved() const;
  /// The model goes: nothing touches it from now on.
  void Retire();

 protected:
  using Action = std::function<void()>;

  const ControlLayout& LayoutOf(const char* control) const { return layout_.Of(control); }
  bool HasLayoutOf(const char* control) const { return layout_.Has(control); }
  /// Runs a handler of the model.
  void Do(const Action& action) { desk_.Handle(action); }
  Desk& TheDesk() { return desk_; }

  // Each makes the widget of one control where the layout has it. The widgets belong to the view.
  PictureButton* Bind(const char* control, const Button& button, const QString& tip, const Action& click);
  QLabel* Bind(const char* control, const Label& label);
  HoverList* Bind(const char* control, List& list, const QString& name);
  CaptionedBar* Bind(const char* control, const ProgressBar& bar);
  /// A box that shows `ticked`; a click calls `toggle`.
  PictureButton* BindTick(const char* control, const bool& ticked, const QString& name, const Action& toggle);
  void Bind(const Timer& timer, const Action& tick);
  QLabel* AddText(const char* control, const QString& text);
  /// Shows all of a text of the system, however long: in smaller letters where they are needed, with paths
  /// broken at their separators. What doesn't fit even so is left out in the middle, and told by the tooltip.
  void ShowWhole(QLabel& label, const std::string& text) const;

  /// The button of the Enter key, and of closing the window and the Esc key.
  void SetDefault(PictureButton* button);
  void SetCancel(PictureButton* button) { cancel_ = button; }
  virtual void Escape();

  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLabel* NewLabel(const char* control);
  PictureButton* NewButton(const char* control, const QString& tip, const Action& click);
  void ChooseMnemonic(PictureButton& button, const QString& caption);

  Desk& desk_;
  const ScreenLayout layout_;
  std::vector<Action> syncs_;
  PictureButton *default_ = nullptr, *cancel_ = nullptr;
  QString mnemonics_;
  QPoint placed_;
};

}  // namespace quillon
