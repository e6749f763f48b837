// What all screen models have in common.
#pragma once

#include <string>
#include <string_view>

#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

/// The logic of one screen. A front end draws it and calls its handlers.
class Screen {
 public:
  Screen(Program& program, std::string_view name) : program_(program), name_(name) {}
  virtual ~Screen() = default;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  const std::string& Name() const { return name_; }
  const SharedState& Shared() const { return program_.shared; }

  /// The screen has been shown and become the active one.
  virtual void Activate() {}

 protected:
  void SetLabel(std::string_view control, Label& label, std::string text, bool visible) {
    if (label.text == text && label.visible == visible) return;
    label = {std::move(text), visible};
    program_.watcher.LabelChanged(name_, control, label);
  }

  Program& program_;

 private:
  std::string name_;
};

/// A screen with a bar.
class ProgressScreen : public Screen, public Progress {
 public:
  using Screen::Screen;

  ProgressBar bar;
  /// A pipeline runs behind the screen: it can't be left.
  bool working = false;
  /// Gives the work up. On view while that can be done.
  Button btnCancel{.enabled = false, .visible = false};

  /// The work ends at its next turn, and nothing is left of it.
  void btnCancelClick() {
    givenUp_ = givenUp_ || btnCancel.enabled;
    btnCancel.enabled = false;
  }

  void Caption(std::string_view text) override {
    if (bar.caption == text) return;
    bar.caption = text;
    program_.watcher.BarChanged(Name(), bar, Watcher::BarChange::Caption);
  }
  void Value(int value) override {
    bar.value = value;
    program_.watcher.BarChanged(Name(), bar, Watcher::BarChange::Value);
  }
  void Maximum(int maximum) override {
    bar.maximum = maximum;
    program_.watcher.BarChanged(Name(), bar, Watcher::BarChange::Value);
  }
  void Colour(int colour) override {
    bar.colour = colour;
    program_.watcher.BarChanged(Name(), bar, Watcher::BarChange::Colour);
  }
  void Detail(std::uint64_t done, std::uint64_t total, std::string_view unit) override {
    program_.watcher.DetailChanged(Name(), done, total, unit);
  }
  void Yield() override {
    program_.watcher.Yield();
    if (givenUp_ && btnCancel.visible) throw GivenUp{};
  }
  void AllowGivingUp(bool allowed) override {
    btnCancel.enabled = btnCancel.visible = allowed;
    givenUp_ = false;
  }

 protected:
  /// For the time in which the pipeline runs.
  class Work {
   public:
    explicit Work(ProgressScreen& screen) : screen_(screen) { screen.working = true; }
    ~Work() { screen_.working = false; }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

   private:
    ProgressScreen& screen_;
  };

 private:
  bool givenUp_ = false;
};

}  // namespace quillon
