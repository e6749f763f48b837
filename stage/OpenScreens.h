// The open screens of the program, from first to last, and how they follow one another.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Ports.h"
#include "core/Screen.h"

namespace quillon {

/// The front end's side of the stage: it puts screens on view.
class Presenter {
 public:
  virtual ~Presenter() = default;
  virtual void ScreenShown(Screen& screen, bool modal) = 0;
  /// The screen's activation handler has returned.
  virtual void ScreenActivated(Screen& screen) = 0;
  virtual void ScreenUnloaded(const std::string& name) = 0;
  /// Serves `screen`, which is on view, until `isOpen` says that it has been unloaded.
  virtual void RunModal(Screen& screen, const std::function<bool()>& isOpen) = 0;
};

class OpenScreens : public Stage {
 public:
  using Factory = std::function<std::unique_ptr<Screen>(std::string_view name)>;

  OpenScreens(Presenter& presenter, Factory factory) : presenter_(presenter), factory_(std::move(factory)) {}

  void Show(std::string_view screen) override;
  void ShowModal(std::string_view screen) override;
  void Unload(std::string_view screen) override;
  void ShutDown(bool force) override;
  Screen* Find(std::string_view screen) const override;
  bool Ended() const override { return ended_; }

  /// Runs a user's action and gives the activity to whichever screen is on top afterwards. Every event of a
  /// front end goes through here.
  void Do(const std::function<void()>& action);
  /// Lets the top screen's activation handler run again.
  void Reactivate() { active_ = nullptr; }

  /// The screen on top; null when none is open.
  Screen* Top() const { return open_.empty() ? nullptr : open_.back().get(); }

 private:
  Screen& BringUp(std::string_view name, bool modal);
  void Activate(Screen& screen);
  void Settle();

  Presenter& presenter_;
  const Factory factory_;
  std::vector<std::unique_ptr<Screen>> open_;
  std::vector<std::unique_ptr<Screen>> unloaded_;  // their handlers may still be running
  const Screen* active_ = nullptr;
  int depth_ = 0;
  bool bringingUp_ = false, ended_ = false;
};

}  // namespace quillon
