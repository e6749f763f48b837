// Where a user gets help: the one window of the help, and the F1 key in all others.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "screens/Desk.h"
#include "screens/HelpWindow.h"

namespace quillon {

class HelpDesk : public QObject {
 public:
  /// `desk` outlives the object. `askedByKey` is called when F1 is pressed in a window of the program.
  HelpDesk(Desk& desk, std::function<void()> askedByKey);

  /// Opens the book whose table is `file`, a path of the system, or brings it to the front: on the tab that
  /// the command word "TOC", "INDEX" or "FIND" means. Any other word does nothing. A book that can't be read
  /// is told of.
  void Show(const std::string& file, std::string_view command);
  /// The same, with the page that explains `screen`, at `anchor`, or the first one.
  void ShowPageOf(const std::string& file, std::string_view screen, const QString& anchor = {});
  /// Takes the window away.
  void Close() { window_.reset(); }
  /// The window; null before the first call.
  HelpWindow* Window() const { return window_.get(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool Open(const std::string& file);
  void TellOf(const RunTimeError& error);
  void Present();

  Desk& desk_;
  const std::function<void()> askedByKey_;
  std::unique_ptr<HelpWindow> window_;
  bool telling_ = false;  // F1 in that box asks for nothing new
};

}  // namespace quillon
