// A text of any length: what doesn't fit its place is scrolled, by wheel and by keys.
#pragma once

#include <QScrollArea>

#include "screens/Layout.h"

class QLabel;

namespace quillon {

class ScrolledText : public QScrollArea {
 public:
  /// `layout` outlives the control.
  ScrolledText(const ControlLayout& layout, QWidget* parent);

  void SetText(const QString& text);
  /// Takes on its place and looks, after the layout has changed.
  void Dress();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void LetKeysScroll();

  const ControlLayout& layout_;
  QLabel* label_;
};

}  // namespace quillon
