#include "screens/HelpDesk.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "core/Program.h"

namespace quillon {
namespace {

constexpr std::array<std::pair<std::string_view, HelpWindow::Tab>, 3> kCommands = {{
    {"TOC", HelpWindow::Tab::Contents},
    {"INDEX", HelpWindow::Tab::Index},
    {"FIND", HelpWindow::Tab::Find},
}};

}  // namespace

HelpDesk::HelpDesk(Desk& desk, std::function<void()> askedByKey)
    : desk_(desk), askedByKey_(std::move(askedByKey)) {
  QApplication::instance()->installEventFilter(this);
}

void HelpDesk::Show(const std::string& file, std::string_view command) {
  const auto at = std::find_if(kCommands.begin(), kCommands.end(),
                               [&](const auto& known) { return known.first == command; });
  if (at == kCommands.end() || !Open(file)) return;
  Present();
  window_->ShowTab(at->second);
}

void HelpDesk::ShowPageOf(const std::string& file, std::string_view screen, const QString& anchor) {
  if (!Open(file)) return;
  const HelpPage* page = window_->Book().PageOf(screen);
  Present();  // a page that nobody sees can't be turned to an anchor
  if (page == nullptr)
    window_->ShowPage(window_->Book().Home());
  else
    window_->ShowPage(*page, anchor);
}

/// False, and said so, when there is no help.
bool HelpDesk::Open(const std::string& file) {
  if (window_) return true;
  if (telling_) return false;
  Program& program = desk_.TheProgram();
  try {
    window_ = std::make_unique<HelpWindow>(std::make_unique<HelpBook>(program.files, file),
                                           [this](const std::string& path) { return desk_.HostPath(path); });
    return true;
  } catch (const RunTimeError& error) {
    TellOf(error);
    return false;
  }
}

void HelpDesk::TellOf(const RunTimeError& error) {
  const std::string reason = error.reason().empty() ? "" : " (" + error.reason() + ")";
  telling_ = true;
  desk_.TheProgram().boxes.Tell("Quillon Help",
                                "The help can't be shown.\r\n\r\n" + error.text() + reason + ":\r\n" +
                                    desk_.HostPath(error.path()).toStdString() +
                                    "\r\n\r\nTake this file away if it is there, and lay the delivered files "
                                    "again with 'quillon setup'.");
  telling_ = false;
}

/// A window over a modal screen is only free when it belongs to it.
void HelpDesk::Present() {
  window_->show();
  const QWidget* modal = QApplication::activeModalWidget();
  window_->windowHandle()->setTransientParent(modal == nullptr ? nullptr : modal->windowHandle());
  window_->raise();
  window_->activateWindow();
}

/// Before any shortcut of the same key.
bool HelpDesk::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
    return QObject::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
    return QObject::eventFilter(watched, event);
  key->accept();
  if (event->type() == QEvent::KeyPress && !key->isAutoRepeat()) askedByKey_();
  return true;
}

}  // namespace quillon
