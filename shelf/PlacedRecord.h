// When the system itself changed the working route: what changed at other times is the user's own.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/Program.h"
#include "core/text/Text.h"

namespace quillon {

/// The spans of time, by the disk's clock, in which clean-ups and loads have worked in the working route
/// since it was made. A run that was cut short leaves none.
class PlacedRecord {
 public:
  explicit PlacedRecord(Program& program);

  /// Whether a file that was last touched at `changed`, nanoseconds since 1970, was touched by the system.
  bool Covers(std::int64_t changed) const;

  /// Whether it was touched since a load began that has not ended.
  bool IsOfAnOpenLoad(std::int64_t changed) const;

  /// A user's own files that a load covers: they come back later, by the system's hand.
  void NoteOwn(const std::vector<std::string>& paths);
  bool IsNotedOwn(const std::string& path) const { return !own_.empty() && own_.contains(UpperCase(path)); }

  /// Files of the loaded route's stores that could not be copied into the game: the stores have the only
  /// ones.
  void NoteMissing(const std::vector<std::string>& paths);
  bool IsNotedMissing(const std::string& path) const {
    return !missing_.empty() && missing_.contains(UpperCase(path));
  }

  /// A load begins to change the working route.
  void LoadBegins();
  void LoadEnds();
  /// The working route is new from end to end.
  void CleanUpEnds();
  /// Nothing is known of the working route any more.
  void Forget();

 private:
  using Span = std::pair<std::int64_t, std::int64_t>;
  std::int64_t WriteAndTellTime();

  Program& program_;
  std::vector<Span> spans_;
  std::set<std::string> own_, missing_;  // upper case
};

}  // namespace quillon
