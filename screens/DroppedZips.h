// Zips dropped on a window go to the downloads.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "screens/Desk.h"

class QWidget;

namespace quillon {

class DroppedZips : public QObject {
 public:
  /// Belongs to `window`, which takes drops from now on.
  DroppedZips(QWidget& window, Desk& desk);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Take();

  Desk& desk_;
  QWidget& window_;
  std::vector<std::string> waiting_;  // host paths
};

}  // namespace quillon
