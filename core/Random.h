// Random numbers as the classic run-time gives them, from a source that can be seeded.
#pragma once

#include <cstdint>
#include <random>

namespace quillon {

class Random {
 public:
  /// Without a seed the numbers differ from run to run.
  Random() : engine_(std::random_device{}()) {}
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  /// A number from 0 up to, but not including, 1.
  double Rnd() { return static_cast<double>(engine_()) / 4294967296.0; }
  /// A whole number from 1 to `most`.
  int Whole(int most) { return static_cast<int>(most * Rnd()) + 1; }

 private:
  std::mt19937 engine_;
};

}  // namespace quillon
