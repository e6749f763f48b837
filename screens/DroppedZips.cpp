#include "screens/DroppedZips.h"

#include <QDropEvent>
#include <QMimeData>
#include <QProgressDialog>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <utility>

#include "core/Program.h"
#include "intake/Downloads.h"

namespace quillon {
namespace {

constexpr int kNameWidth = 400;  // pixels
constexpr int kPatience = 500;   // milliseconds without a window of its own

}  // namespace

DroppedZips::DroppedZips(QWidget& window, Desk& desk) : QObject(&window), desk_(desk), window_(window) {
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
  for (const QUrl& url : drop->mimeData()->urls()) waiting_.push_back(url.toLocalFile().toStdString());
  drop->setDropAction(Qt::CopyAction);
  drop->accept();
  // Whoever dropped them waits for this event's end.
  QTimer::singleShot(0, this, &DroppedZips::Take);
  return true;
}

void DroppedZips::Take() {
  if (waiting_.empty()) return;
  QProgressDialog progress(&window_, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
  progress.setWindowTitle("Quillon is copying files");
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setCancelButton(nullptr);
  progress.setMinimumDuration(kPatience);
  const auto tell = [&](std::size_t done, std::size_t total, const std::string& name) {
    if (done == total) return progress.reset();
    progress.setMaximum(static_cast<int>(total));
    progress.setLabelText(QStringLiteral("Copying file %1 of %2 to your downloads:\n%3")
                              .arg(done + 1)
                              .arg(total)
                              .arg(progress.fontMetrics().elidedText(QString::fromStdString(name),
                                                                     Qt::ElideMiddle, kNameWidth)));
    progress.setValue(static_cast<int>(done));
  };
  desk_.Handle([&] {
    Program& program = desk_.TheProgram();
    const Wait wait(program.watcher, "Copying files to your downloads...");
    TakeDownloads(program, std::exchange(waiting_, {}), tell);
  });
  if (!waiting_.empty()) QTimer::singleShot(kPatience, this, &DroppedZips::Take);  // something else was done
}

}  // namespace quillon
