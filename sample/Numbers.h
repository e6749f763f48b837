// Random numbers that are the same in every run and with every standard library: seeded by a name, no
// distributions.
#pragma once

#include <cstdint>
#include <random>
#include <string_view>

namespace quillon {

class Numbers {
 public:
  explicit Numbers(std::string_view name) : engine_(Hash(name)) {}

  /// 32 random bits.
  std::uint32_t Bits() { return static_cast<std::uint32_t>(engine_()); }
  /// From `least` to `most`, both included.
  int Between(int least, int most) {
    return least + static_cast<int>(Bits() % static_cast<std::uint32_t>(most - least + 1));
  }
  /// From 0 up to, but not including, 1.
  double Share() { return Bits() / 4294967296.0; }

 private:
  static std::uint32_t Hash(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash;
  }

  std::mt19937 engine_;
};

}  // namespace quillon
