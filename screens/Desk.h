// What a view may ask of the program around it.
#pragma once

#include <QString>
#include <functional>

namespace quillon {

struct Program;

class Desk {
 public:
  virtual ~Desk() = default;
  /// Runs a user's action on the models; afterwards all views are equal to them again. Errors end the
  /// program.
  virtual void Handle(const std::function<void()>& action) = 0;
  /// Lets the user choose a folder; empty when they did not. `start` is a text of the system.
  virtual QString PickFolder(const QString& title, const std::string& start) = 0;
  /// The host's name of a text of the system.
  virtual QString HostPath(const std::string& text) = 0;
  virtual Program& TheProgram() = 0;
};

}  // namespace quillon
