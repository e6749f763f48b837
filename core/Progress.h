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
  /// The true measure: `done` of `total` of something countable, such as "files" or "bytes".
  virtual void Detail(std::uint64_t done, std::uint64_t total, std::string_view unit) = 0;
  /// Gives the event loop, if there is one, a turn. Called often while long work runs.
  virtual void Yield() = 0;
};

}  // namespace quillon
