// What a long pipeline tells of itself while it runs.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillon {

/// Bar colours: red, green and blue with red in the low byte.
inline constexpr int kGreen = 49152, kRed = 221;

/// The bar of one progress screen. The values of the classic bars mostly measure nothing; Detail tells the
/// truth.
class Progress {
 public:
  virtual ~Progress() = default;
  virtual void Caption(std::string_view text) = 0;
  virtual void Value(int value) = 0;
  virtual void Maximum(int maximum) = 0;
  virtual void Colour(int colour) = 0;
  /// The true measure: `done` of `total` of something countable, such as "files" or "bytes". Without a unit
  /// nothing is measured any longer.
  virtual void Detail(std::uint64_t done, std::uint64_t total, std::string_view unit) = 0;
  /// Gives the event loop, if there is one, a turn. Called often while long work runs. Throws GivenUp when
  /// the user has given the work up, and may.
  virtual void Yield() = 0;
  /// Whether the user may give the work up now.
  virtual void AllowGivingUp(bool allowed) = 0;
};

/// The user has given the work up. Whoever allows it catches this and takes back what was done.
struct GivenUp {};

/// While it lives the work may be given up.
class MayBeGivenUp {
 public:
  explicit MayBeGivenUp(Progress& progress) : progress_(progress) { progress_.AllowGivingUp(true); }
  ~MayBeGivenUp() { progress_.AllowGivingUp(false); }
  MayBeGivenUp(const MayBeGivenUp&) = delete;
  MayBeGivenUp& operator=(const MayBeGivenUp&) = delete;

 private:
  Progress& progress_;
};

/// The files of one step, told as they are done. Nothing is left of the measure when the step has ended.
class FileCount {
 public:
  /// Without a total there is nothing to tell.
  FileCount(Progress& progress, std::uint64_t total) : progress_(progress), total_(total) {}
  ~FileCount() { progress_.Detail(0, 0, {}); }
  FileCount(const FileCount&) = delete;
  FileCount& operator=(const FileCount&) = delete;

  /// One more is done.
  void operator()() {
    if (++done_ <= total_) progress_.Detail(done_, total_, "files");
    progress_.Yield();
  }

 private:
  Progress& progress_;
  const std::uint64_t total_;
  std::uint64_t done_ = 0;
};

}  // namespace quillon
