#include "core/archive/Inflate64.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillon {
namespace {

constexpr std::size_t kWindow = 65536;  // bytes
constexpr int kLongestCode = 15;        // bits
constexpr int kEnd = 256;               // the symbol that closes a block
constexpr std::array<std::uint16_t, 29> kLengths = {3,  4,  5,  6,   7,   8,   9,   10,  11, 13,
                                                    15, 17, 19, 23,  27,  31,  35,  43,  51, 59,
                                                    67, 83, 99, 115, 131, 163, 195, 227, 3};
constexpr std::array<std::uint8_t, 29> kLengthBits = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                      2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 16};
constexpr std::array<std::uint8_t, 19> kOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                 11, 4,  12, 3, 13, 2, 14, 1, 15};

struct Corrupt {};

class Bits {
 public:
  explicit Bits(const std::function<std::string_view()>& more) : more_(more) {}

  unsigned Take(int count) {
    while (held_ < count) {
      value_ |= std::uint64_t{Byte()} << held_;
      held_ += 8;
    }
    const auto taken = static_cast<unsigned>(value_ & ((std::uint64_t{1} << count) - 1));
    value_ >>= count;
    held_ -= count;
    return taken;
  }
  /// What is left of a byte that was begun.
  void ToByte() { Take(held_ % 8); }

 private:
  unsigned char Byte() {
    if (piece_.empty()) piece_ = more_();
    if (piece_.empty()) throw Corrupt();
    const auto byte = static_cast<unsigned char>(piece_.front());
    piece_.remove_prefix(1);
    return byte;
  }

  const std::function<std::string_view()>& more_;
  std::string_view piece_;
  std::uint64_t value_ = 0;
  int held_ = 0;
};

/// Codes by their lengths: of equal length they rise with their symbols.
class Code {
 public:
  explicit Code(const std::vector<std::uint8_t>& lengths) : symbols_(lengths.size()) {
    for (const auto length : lengths) ++counts_[length];
    int left = 1;
    for (int length = 1; length <= kLongestCode; ++length) {
      left = left * 2 - counts_[static_cast<std::size_t>(length)];
      if (left < 0) throw Corrupt();  // more codes than there are
    }
    std::array<std::uint16_t, kLongestCode + 2> at{};
    for (std::size_t length = 1; length <= kLongestCode; ++length)
      at[length + 1] = static_cast<std::uint16_t>(at[length] + counts_[length]);
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
      if (lengths[symbol] != 0) symbols_[at[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
  }

  int Read(Bits& bits) const {
    int code = 0, first = 0, index = 0;
    for (std::size_t length = 1; length <= kLongestCode; ++length) {
      code |= static_cast<int>(bits.Take(1));
      const int count = counts_[length];
      if (code - first < count) return symbols_[static_cast<std::size_t>(index + code - first)];
      index += count;
      first = (first + count) * 2;
      code *= 2;
    }
    throw Corrupt();
  }

 private:
  std::array<std::uint16_t, kLongestCode + 1> counts_{};
  std::vector<std::uint16_t> symbols_;
};

class Inflater {
 public:
  Inflater(std::uint64_t size, const std::function<std::string_view()>& more,
           const std::function<void(std::string_view)>& sink)
      : size_(size), sink_(sink), bits_(more), window_(kWindow) {}

  void Run() {
    bool last = false;
    while (!last) {
      last = bits_.Take(1) != 0;
      switch (bits_.Take(2)) {
        case 0: Stored(); break;
        case 1: Block(FixedCode(), Code(std::vector<std::uint8_t>(32, 5))); break;
        case 2: Dynamic(); break;
        default: throw Corrupt();
      }
    }
    Flush();
    if (done_ != size_) throw Corrupt();
  }

 private:
  static Code FixedCode() {
    std::vector<std::uint8_t> lengths(288, 8);
    std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
    std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
    return Code(lengths);
  }

  void Stored() {
    bits_.ToByte();
    const unsigned count = bits_.Take(16);
    if ((bits_.Take(16) ^ 0xFFFF) != count) throw Corrupt();
    for (unsigned i = 0; i < count; ++i) Put(static_cast<char>(bits_.Take(8)));
  }

  void Dynamic() {
    const unsigned literals = bits_.Take(5) + 257, distances = bits_.Take(5) + 1, ordered = bits_.Take(4) + 4;
    std::vector<std::uint8_t> lengths(kOrder.size());
    for (unsigned i = 0; i < ordered; ++i) lengths[kOrder[i]] = static_cast<std::uint8_t>(bits_.Take(3));
    const Code lengthCode(lengths);
    lengths.clear();
    while (lengths.size() < literals + distances) {
      const int symbol = lengthCode.Read(bits_);
      if (symbol < 16) {
        lengths.push_back(static_cast<std::uint8_t>(symbol));
        continue;
      }
      if (symbol == 16 && lengths.empty()) throw Corrupt();
      const std::uint8_t repeated = symbol == 16 ? lengths.back() : 0;
      const unsigned count = symbol == 16   ? 3 + bits_.Take(2)
                             : symbol == 17 ? 3 + bits_.Take(3)
                                            : 11 + bits_.Take(7);
      lengths.insert(lengths.end(), count, repeated);
    }
    if (lengths.size() > literals + distances) throw Corrupt();
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(literals);
    Block(Code({lengths.begin(), middle}), Code({middle, lengths.end()}));
  }

  void Block(const Code& literals, const Code& distances) {
    for (int symbol = literals.Read(bits_); symbol != kEnd; symbol = literals.Read(bits_)) {
      if (symbol < kEnd) {
        Put(static_cast<char>(symbol));
        continue;
      }
      const auto kind = static_cast<std::size_t>(symbol - kEnd - 1);
      if (kind >= kLengths.size()) throw Corrupt();
      const unsigned length = kLengths[kind] + bits_.Take(kLengthBits[kind]);
      const auto slot = static_cast<unsigned>(distances.Read(bits_));
      if (slot > 31) throw Corrupt();
      const unsigned distance =
          slot < 4 ? slot + 1
                   : ((2 + slot % 2) << (slot / 2 - 1)) + 1 + bits_.Take(static_cast<int>(slot / 2 - 1));
      if (distance > done_ + filled_) throw Corrupt();
      for (unsigned i = 0; i < length; ++i) Put(window_[(filled_ + kWindow - distance) % kWindow]);
    }
  }

  void Put(char byte) {
    if (done_ + filled_ >= size_) throw Corrupt();
    window_[filled_++] = byte;
    if (filled_ == kWindow) Flush();
  }

  void Flush() {
    sink_({window_.data(), filled_});
    done_ += filled_;
    filled_ = 0;
  }

  const std::uint64_t size_;
  const std::function<void(std::string_view)>& sink_;
  Bits bits_;
  std::vector<char> window_;
  std::uint64_t done_ = 0;  // bytes that the sink has
  std::size_t filled_ = 0;  // bytes of the window that it has not
};

}  // namespace

bool Inflate64(std::uint64_t size, const std::function<std::string_view()>& more,
               const std::function<void(std::string_view)>& sink) {
  try {
    Inflater(size, more, sink).Run();
    return true;
  } catch (const Corrupt&) {
    return false;
  }
}

}  // namespace quillon
