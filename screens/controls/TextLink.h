// Words that lead somewhere when they are clicked.
#pragma once

#include <QAbstractButton>

#include "screens/Layout.h"

namespace quillon {

class TextLink : public QAbstractButton {
 public:
  /// `layout` outlives the link.
  TextLink(const ControlLayout& layout, QWidget* parent);

  /// Empty: the link can be reached and can't be seen.
  void ShowText(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const ControlLayout& layout_;
};

}  // namespace quillon
