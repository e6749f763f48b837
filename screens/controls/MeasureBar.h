// A thin bar that shows how much of a work is really done.
#pragma once

#include <QProgressBar>

#include "screens/Layout.h"

namespace quillon {

class MeasureBar : public QProgressBar {
 public:
  /// `layout` outlives the bar.
  MeasureBar(const ControlLayout& layout, QWidget* parent);

  /// The share that is done, 0 to 1; hidden below 0, where nothing is measured.
  void Show(double share);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ControlLayout& layout_;
};

}  // namespace quillon
