// A progress bar with its caption drawn on it.
#pragma once

#include <QProgressBar>

#include "core/Controls.h"
#include "screens/Layout.h"

namespace quillon {

class CaptionedBar : public QProgressBar {
 public:
  /// `layout` outlives the bar.
  CaptionedBar(const ControlLayout& layout, QWidget* parent);

  /// Makes it equal to the model's.
  void Sync(const ProgressBar& bar);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ControlLayout& layout_;
  QString caption_;
  QColor filled_;
};

}  // namespace quillon
