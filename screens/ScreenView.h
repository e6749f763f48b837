// What all views have in common: a picture, and widgets that are kept equal to the controls of a model.
#pragma once

#include <QLabel>
#include <QPixmap>
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
#include "screens/controls/ScrolledText.h"

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
  /// Puts the window around `centre`, as far as `room` lets it stand whole: `scale` times as large as drawn,
  /// or as `room` can hold. WasMoved and WasResized tell what the user has done to it since.
  void PlaceAt(QPoint centre, const QRect& room, double scale);
  bool WasMoved() const;
  virtual bool WasResized() const { return size() != placedSize_; }
  /// The size of the window against what was drawn.
  double Scale() const { return layout_.Scale(); }
  /// The model goes: nothing touches it from now on.
  void Retire();

 protected:
  using Action = std::function<void()>;

  /// How large PlaceAt makes the window.
  virtual QSize SizeIn(const QSize& room, double scale) { return layout_.SizeIn(room, scale); }
  const ControlLayout& LayoutOf(const char* control) const { return layout_.Of(control); }
  bool HasLayoutOf(const char* control) const { return layout_.Has(control); }
  /// Runs a handler of the model.
  void Do(const Action& action) {
    if (!retired_) desk_.Handle(action);
  }
  Desk& TheDesk() { return desk_; }

  // Each makes the widget of one control where the layout has it. The widgets belong to the view.
  PictureButton* Bind(const char* control, const Button& button, const QString& tip, const Action& click);
  QLabel* Bind(const char* control, const Label& label);
  /// For a text of any length: it is scrolled where it doesn't fit.
  ScrolledText* BindScrolled(const char* control, const Label& label);
  HoverList* Bind(const char* control, List& list, const QString& name);
  CaptionedBar* Bind(const char* control, const ProgressBar& bar);
  /// A box that shows `ticked`; a click calls `toggle`.
  PictureButton* BindTick(const char* control, const bool& ticked, const QString& name, const Action& toggle);
  void Bind(const Timer& timer, const Action& tick);
  QLabel* AddText(const char* control, const QString& text);
  /// Shows all of a text of the system, however long: in smaller letters where they are needed, with paths
  /// and long words broken. What doesn't fit even so is left out in the middle, and told by the tooltip.
  void ShowWhole(QLabel& label, const std::string& text) const;
  /// Shows a picture of art/ in a label of its size.
  void ShowPicture(QLabel& label, const QString& name) const;
  /// `dress` gives a widget its place and looks: now, and whenever the window has another size or display.
  void Dress(const Action& dress);

  /// The button of the Enter key, and of closing the window and the Esc key.
  void SetDefault(PictureButton* button);
  void SetCancel(PictureButton* button) { cancel_ = button; }
  virtual void Escape();
  /// The close button of the window was pressed. What can't close now says why.
  virtual void CloseAsked();

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLabel* NewLabel(const char* control);
  PictureButton* NewButton(const char* control, const QString& tip, const Action& click);
  void ChooseMnemonic(PictureButton& button, const QString& caption);
  void DressAll();
  void DressLabel(QLabel& label) const;
  void Settle();
  void PaintSurroundings(QPainter& painter, const QPixmap& picture);

  Desk& desk_;
  ScreenLayout layout_;
  std::vector<Action> syncs_, dresses_;
  PictureButton *default_ = nullptr, *cancel_ = nullptr;
  QString mnemonics_;
  QPoint placed_;
  QSize placedSize_;
  // What the widgets are dressed for.
  QSize dressedSize_;
  qreal dressedRatio_ = 1;
  QPixmap surroundings_;
  QTimer settling_;
  bool retired_ = false;
};

}  // namespace quillon
