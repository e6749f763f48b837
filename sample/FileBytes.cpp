#include "sample/FileBytes.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillon {
namespace {

void PutWord(char* at, std::uint32_t word) {
  for (int i = 0; i < 4; ++i) at[i] = static_cast<char>(word >> (8 * i));
}

void AppendWord(std::string& out, std::uint32_t word) {
  char bytes[4];
  PutWord(bytes, word);
  out.append(bytes, 4);
}

void FillWithNoise(Numbers& numbers, char* at, std::size_t size) {
  for (; size >= 4; at += 4, size -= 4) PutWord(at, numbers.Bits());
  std::fill_n(at, size, '\x7F');
}

void FillWithRows(Numbers& numbers, char* at, std::size_t size) {
  char row[64];
  FillWithNoise(numbers, row, sizeof row);
  while (size > 0) {
    const auto count = std::min(size, sizeof row);
    std::memcpy(at, row, count);
    at += count;
    size -= count;
  }
}

/// What the game has packed, in which nothing is left to pack.
std::string Packed(Numbers& numbers, std::size_t size) {
  constexpr std::string_view kHead("SIMISA@F\0\0\1\0@@@@", 16);
  std::string bytes(std::max(size, kHead.size()), '\0');
  std::copy(kHead.begin(), kHead.end(), bytes.begin());
  FillWithNoise(numbers, &bytes[kHead.size()], bytes.size() - kHead.size());
  return bytes;
}

/// Even areas with a little detail.
std::string Plain(Numbers& numbers, std::string_view head, std::size_t size) {
  constexpr std::size_t kBlock = 1024, kDetail = 31;
  std::string bytes(std::max(size, head.size()), '\0');
  std::copy(head.begin(), head.end(), bytes.begin());
  for (std::size_t at = head.size(); at < bytes.size();) {
    const auto block = std::min(bytes.size() - at, kBlock), detail = std::min(block, kDetail);
    FillWithNoise(numbers, &bytes[at], detail);
    FillWithRows(numbers, &bytes[at] + detail, block - detail);
    at += block;
  }
  return bytes;
}

}  // namespace

std::string TextureBytes(Numbers numbers, std::size_t size, bool packed) {
  if (packed) return Packed(numbers, size);
  return Plain(numbers, std::string_view("SIMISA@@@@@@@@@@\x01\0\0\0", 20), size);
}

std::string ShapeBytes(Numbers numbers, std::size_t size, bool packed) {
  return packed ? Packed(numbers, size) : Plain(numbers, "SIMISA@@@@@@@@@@JINX0s1b______\r\n", size);
}

std::string TerrainBytes(Numbers numbers, std::size_t size) {
  constexpr std::size_t kRow = 512;
  std::string bytes(size, '\0');
  std::uint32_t height = 0x2000;
  for (std::size_t at = 0; at + 4 <= size; at += 4) {
    // A hill here and there; between them the ground is as it was one row before.
    const bool hill = at < kRow || (at / kRow) % 4 == 0;
    if (!hill) {
      std::memcpy(&bytes[at], &bytes[at - kRow], 4);
      continue;
    }
    const std::uint32_t bits = numbers.Bits();
    height += (bits & 7) - 3;
    PutWord(&bytes[at], height << 16 | ((height + (bits >> 29 == 0)) & 0xFFFF));
  }
  return bytes;
}

std::string SoundBytes(Numbers numbers, std::size_t size) {
  constexpr std::uint32_t kRate = 22050;
  std::string bytes = "RIFF";
  AppendWord(bytes, static_cast<std::uint32_t>(size) - 8);
  bytes += "WAVEfmt ";
  for (const std::uint32_t word : {16u, 1u << 16 | 1u, kRate, kRate * 2, 16u << 16 | 2u})
    AppendWord(bytes, word);
  bytes += "data";
  AppendWord(bytes, static_cast<std::uint32_t>(size) - 44);
  // A wheel's beat: one turn after the other, every few turns a new one.
  constexpr std::size_t kTurn = 8192;
  while (bytes.size() + 4 <= size) {
    const bool sameTurn = bytes.size() > 44 + kTurn && bytes.size() / kTurn % 3 != 0;
    if (sameTurn)
      bytes.append(bytes, bytes.size() - kTurn, std::min<std::size_t>(64, size - bytes.size()));
    else
      AppendWord(bytes, numbers.Bits() & 0x03FF03FFu);
  }
  bytes.resize(size, '\0');
  return bytes;
}

}  // namespace quillon
