// A button that is a picture in three states: off, over and down. One that can be ticked has on and off
// instead.
#pragma once

#include <QAbstractButton>

#include "screens/Layout.h"

namespace quillon {

class PictureButton : public QAbstractButton {
 public:
  /// `layout` outlives the button. `tip` is its tooltip and its name for those who can't see it.
  PictureButton(const ControlLayout& layout, const QString& tip, QWidget* parent);

  /// Shows the over picture without a pointer: the button flashes.
  void SetFlashing(bool flashing);
  /// A tick that can't be taken away.
  void SetGrey(bool grey);
  void SetTip(const QString& tip);
  /// Pressed together with Alt, it clicks; underlined in the caption. Null for none.
  void SetMnemonic(QChar letter);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString State() const;
  void PaintCaption(QPainter& painter) const;

  const ControlLayout& layout_;
  bool flashing_ = false, grey_ = false;
  int mnemonicAt_ = -1;
};

}  // namespace quillon
