// What the window would show beside its events: told on the error output, with what to type.
#pragma once

#include <string>

#include "headless/CommandLine.h"

namespace quillon {

class Hints {
 public:
  /// Both outlive the hints.
  Hints(struct Program& program, const Options& options) : program_(program), options_(options) {}

  /// A line, and the `command` that helps as it has to be typed: with the options of this call.
  void Say(const std::string& text, const std::string& command = {}) const;

  /// Why nothing happened, where a user of the window would see it on the screen.
  void AfterRefusal(const Command& command) const;

  /// The rights that loads will need, empty where there are all. They may be given later: all goes on.
  void AboutRights(const std::string& missing, const std::string& game) const;

  /// A game that is not there is stored all the same: it may come.
  void AboutTheGame() const;

 private:
  struct Program& program_;
  const Options& options_;
};

}  // namespace quillon
