// Zips dropped on a window go to the downloads.
#pragma once

#include <QObject>
#include <QStringList>

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
  Desk& desk_;
};

}  // namespace quillon
