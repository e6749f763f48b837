#include "screens/controls/MeasureBar.h"

#include <QPainter>
#include <algorithm>

namespace quillon {
namespace {

constexpr int kWhole = 1000;

}  // namespace

MeasureBar::MeasureBar(const ControlLayout& layout, QWidget* parent) : QProgressBar(parent), layout_(layout) {
  setGeometry(layout.rect);
  setRange(0, kWhole);
  setTextVisible(false);
  setAccessibleName("Share of this step that is done");
  hide();
}

void MeasureBar::Show(double share) {
  setVisible(share >= 0);
  setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * kWhole));
}

void MeasureBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QRectF done = rect();
  painter.fillRect(done, layout_.background);
  done.setWidth(done.width() * value() / kWhole);
  painter.fillRect(done, layout_.colour);
}

}  // namespace quillon
