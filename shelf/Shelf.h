// The shelf: what the system would have deleted for good, kept by route and date until there is newer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Program.h"

namespace quillon {

/// The rescues in `rescued\<zip>\<date time>`: the files as they lay below the game and below the application
/// folder, in `game` and `app`, and one line of reason in `shelf.txt`.
class Shelf {
 public:
  static constexpr std::size_t kMostOfARoute = 10;  // rescues

  explicit Shelf(Program& program) : program_(program), files_(program.files) {}

  /// All rescues that hold a file, the newest first.
  std::vector<ShelfEntry> List() const;
  /// The rescue with this number; none when there is no such.
  std::optional<ShelfEntry> Find(int number) const;

  /// Copies the files back to where they came from, and renames back what was renamed; the rescue stays.
  /// Raises error 58, and does nothing, where another file stands than the rescued one.
  void PutBack(const ShelfEntry& entry) const;
  /// What stands in the way of PutBack; empty when nothing does.
  std::string ObstacleOf(const ShelfEntry& entry) const;
  void Drop(const ShelfEntry& entry) const;

  /// A new rescue stands in the folder `newest`. Tells of it, and takes the oldest away until at most ten are
  /// left of a route and all take no more than a tenth of the disk, nor 2 GB; the new one stays, whatever it
  /// takes.
  void Settle(std::string_view newest) const;

  /// Which of the rescues of one second the folder of this name is, from 1.
  static int CountOf(std::string_view folderName);
  /// Where a rescued file lies below its rescue's folder.
  std::string PlaceOf(std::string_view path) const;

 private:
  struct Move {
    std::string from, to;
  };
  std::vector<Move> WayBack(const ShelfEntry& entry) const;
  /// The last rename first; what has gone or is back is passed over.
  std::vector<Move> RenamesBack(const ShelfEntry& entry) const;
  std::vector<ShelfEntry> All() const;

  Program& program_;
  Files& files_;
};

// What stands in a rescue's folder beside the files.
inline constexpr const char* kShelfReason = "\\shelf.txt";
/// What was renamed: the old path and the new one, a line each, with a bar between them.
inline constexpr const char* kShelfRenames = "\\renames.tsl";
/// Of a removed route: its names, for the catalogue.
inline constexpr const char* kShelfRoute = "\\route.ini";

}  // namespace quillon
