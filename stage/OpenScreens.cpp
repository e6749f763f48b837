#include "stage/OpenScreens.h"

#include <algorithm>

namespace quillon {

Screen* OpenScreens::Find(std::string_view name) const {
  const auto at =
      std::find_if(open_.begin(), open_.end(), [&](const auto& screen) { return screen->Name() == name; });
  return at == open_.end() ? nullptr : at->get();
}

Screen& OpenScreens::BringUp(std::string_view name, bool modal) {
  const auto at =
      std::find_if(open_.begin(), open_.end(), [&](const auto& screen) { return screen->Name() == name; });
  if (at != open_.end())
    std::rotate(at, at + 1, open_.end());
  else
    open_.push_back(factory_(name));
  // A front end may serve other screens' timers until this one is on view: they must not activate it.
  Screen& shown = *open_.back();
  bringingUp_ = true;
  presenter_.ScreenShown(shown, modal);
  bringingUp_ = false;
  return shown;
}

void OpenScreens::Show(std::string_view screen) { BringUp(screen, false); }

void OpenScreens::ShowModal(std::string_view screen) {
  Screen& shown = BringUp(screen, true);
  const auto isOpen = [this, &shown] {
    return !ended_ &&
           std::any_of(open_.begin(), open_.end(), [&](const auto& other) { return other.get() == &shown; });
  };
  if (isOpen()) Activate(shown);
  if (isOpen()) presenter_.RunModal(shown, isOpen);
}

void OpenScreens::Unload(std::string_view screen) {
  const auto at =
      std::find_if(open_.begin(), open_.end(), [&](const auto& other) { return other->Name() == screen; });
  if (at == open_.end()) return;
  const std::string name = (*at)->Name();
  unloaded_.push_back(std::move(*at));
  open_.erase(at);
  presenter_.ScreenUnloaded(name);
}

void OpenScreens::ShutDown(bool) {
  while (!open_.empty()) Unload(std::string(open_.back()->Name()));
  ended_ = true;
}

void OpenScreens::Activate(Screen& screen) {
  active_ = &screen;
  screen.Activate();
  if (!ended_) presenter_.ScreenActivated(screen);
}

void OpenScreens::Settle() {
  while (!bringingUp_ && !ended_ && Top() != nullptr && Top() != active_) Activate(*Top());
}

void OpenScreens::Do(const std::function<void()>& action) {
  struct Depth {
    explicit Depth(int& count) : depth(++count) {}
    ~Depth() { --depth; }
    int& depth;
  };
  {
    const Depth inside(depth_);
    action();
    Settle();
  }
  if (depth_ == 0) unloaded_.clear();
}

}  // namespace quillon
