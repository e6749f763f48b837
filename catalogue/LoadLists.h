// current.tsl and default.tsl: what the loaded route has placed in the working folder, and what it covers.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// Both lists as they stand on the disk when the object is made. Lines that lie below a game folder that is
/// gone are read below the present one; blank ones are left out. Raises RunTimeErrors.
class LoadLists {
 public:
  explicit LoadLists(Program& program);

  /// Full paths of files that the loaded route has placed.
  const std::vector<std::string>& Current() const { return current_; }
  /// Full paths of `ts-bak-` files.
  const std::vector<std::string>& Backups() const { return backups_; }

  /// The place of the default file that a backup was.
  static std::string TargetOf(std::string_view backup);
  /// Files that current.tsl names although their backup was never made: a load that was cut short has not
  /// placed them. In upper case.
  std::unordered_set<std::string> NeverPlaced() const;

  /// Writes both for a route that is about to be placed: `current` its files, `backups` what they will cover.
  /// Whenever it is cut short, the lists name nothing that the system has not placed.
  static void Write(Program& program, const std::vector<std::string>& current,
                    const std::vector<std::string>& backups);

 private:
  std::string Here(std::string line) const;

  Program& program_;
  std::vector<std::string> current_, backups_;
};

}  // namespace quillon
