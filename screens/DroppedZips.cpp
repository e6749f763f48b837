#include "screens/DroppedZips.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "intake/Downloads.h"

namespace quillon {

DroppedZips::DroppedZips(QWidget& window, Desk& desk) : QObject(&window), desk_(desk) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
}

bool DroppedZips::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::DragEnter) {
    auto* drag = static_cast<QDragEnterEvent*>(event);
    if (drag->mimeData()->hasUrls()) drag->acceptProposedAction();
    return true;
  }
  if (event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto* drop = static_cast<QDropEvent*>(event);
  std::vector<std::string> paths;
  for (const QUrl& url : drop->mimeData()->urls()) paths.push_back(url.toLocalFile().toStdString());
  drop->setDropAction(Qt::CopyAction);
  drop->accept();
  desk_.Handle([&] { TakeDownloads(desk_.TheProgram(), paths); });
  return true;
}

}  // namespace quillon
