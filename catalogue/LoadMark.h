// Where a load or a clean-up stands: written when all of the previous route is safe, gone when it has ended.
#pragma once

#include <string>
#include <string_view>

#include "catalogue/Catalogue.h"
#include "core/Program.h"

namespace quillon {

/// `[Current]` "PutAway" and "Loading" of routes.ini. All writes are on the disk when a call returns, and
/// raise a RunTimeError when they are not.
class LoadMark {
 public:
  explicit LoadMark(Program& program) : program_(program), catalogue_(program) {}

  /// A run was cut short after it had put the loaded route away: its stores are the only copy.
  bool Stands() const;
  /// The route that was coming in; "No Data!" for a clean-up.
  std::string Loading() const;
  /// What to tell a user when the mark stands and all has been put right.
  std::string Healed() const;
  bool CleanUpWasCut() const { return Stands() && Loading() == kNoData; }

  /// The loaded route is safe in its stores; `loading` comes next.
  void Set(std::string_view loading) const;
  /// `[Current]` "Loaded", and the mark goes, in one step.
  void Commit(std::string_view loaded) const;

 private:
  void Require(std::string_view key, std::string_view value) const;

  Program& program_;
  const Catalogue catalogue_;
};

}  // namespace quillon
