// Caches in one flat file: numbers and texts, one behind the other, between a mark and a checksum.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

void AddNumber(std::string& bytes, std::uint64_t number);
void AddText(std::string& bytes, std::string_view text);

/// Makes a file of its mark and its content, which `bytes` holds. Another form of what is in it gets another
/// mark.
void Seal(std::string& bytes);
/// The content of a file; none when it is damaged or has another mark.
std::optional<std::string_view> Unsealed(std::string_view mark, std::string_view bytes);

/// What was added, read in the same order. A right checksum does not vouch for the content: whatever it is,
/// nothing is read behind the end, where numbers are 0 and texts empty.
class FlatReader {
 public:
  /// `bytes` outlives the object and the texts.
  explicit FlatReader(std::string_view bytes) : rest_(bytes) {}

  std::uint64_t Number();
  std::uint32_t Small() { return static_cast<std::uint32_t>(Number()); }
  /// How many of something follow, each of at least one byte: never more than bytes are left.
  std::size_t Count() {
    const std::uint64_t count = Number();
    return static_cast<std::size_t>(std::min<std::uint64_t>(count, rest_.size()));
  }
  std::string_view Text();
  bool Empty() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

/// Whether the next change of a file may still get the same time: such a one is not to be kept in a cache.
/// `modified` in nanoseconds since 1970.
bool IsYoung(std::int64_t modified);

}  // namespace quillon
