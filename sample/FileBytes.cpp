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

/// Blocks of noise between blocks of one row repeated, the way pictures have detail and plain areas.
std::string Mixed(Numbers numbers, std::string_view head, std::size_t size, int noisePercent) {
  std::string bytes(std::max(size, head.size()), '\0');
  std::copy(head.begin(), head.end(), bytes.begin());
  for (std::size_t at = head.size(); at < bytes.size();) {
    const auto block = std::min<std::size_t>(bytes.size() - at, 1024);
    const auto noise = block * static_cast<std::size_t>(noisePercent) / 100;
    FillWithNoise(numbers, &bytes[at], noise);
    FillWithRows(numbers, &bytes[at] + noise, block - noise);
    at += block;
  }
  return bytes;
}

}  // namespace

std::string TextureBytes(Numbers numbers, std::size_t size) {
  return Mixed(numbers, std::string_view("SIMISA@@@@@@@@@@\x01\0\0\0", 20), size, 47);
}

std::string ShapeBytes(Numbers numbers, std::size_t size) {
  return Mixed(numbers, "SIMISA@@@@@@@@@@JINX0s1b______\r\n", size, 46);
}

std::string TerrainBytes(Numbers numbers, std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t height = 0x2000;
  for (std::size_t at = 0; at + 4 <= size; at += 4) {
    // Two neighbours that differ little: the high byte hardly ever changes.
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
  // Loud and quiet stretches: the low byte is noise, the high byte small.
  while (bytes.size() + 4 <= size) {
    const std::uint32_t noise = numbers.Bits();
    AppendWord(bytes, noise & 0x03FF03FFu);
  }
  bytes.resize(size, '\0');
  return bytes;
}

}  // namespace quillon
