#include "core/FlatFile.h"

#include <libdeflate.h>

#include <chrono>
#include <cstring>

namespace quillon {
namespace {

constexpr std::int64_t kYoung = 3'000'000'000;  // nanoseconds: the coarsest disk counts two seconds

}  // namespace

void AddNumber(std::string& bytes, std::uint64_t number) {
  for (; number > 0x7F; number >>= 7) bytes += static_cast<char>((number & 0x7F) | 0x80);
  bytes += static_cast<char>(number);
}

void AddText(std::string& bytes, std::string_view text) {
  AddNumber(bytes, text.size());
  bytes += text;
}

void Seal(std::string& bytes) {
  const std::uint32_t checksum = libdeflate_crc32(0, bytes.data(), bytes.size());
  bytes.append(reinterpret_cast<const char*>(&checksum), sizeof checksum);
}

std::optional<std::string_view> Unsealed(std::string_view mark, std::string_view bytes) {
  std::uint32_t checksum = 0;
  if (!bytes.starts_with(mark) || bytes.size() < mark.size() + sizeof checksum) return {};
  std::memcpy(&checksum, bytes.data() + bytes.size() - sizeof checksum, sizeof checksum);
  bytes.remove_suffix(sizeof checksum);
  if (libdeflate_crc32(0, bytes.data(), bytes.size()) != checksum) return {};
  return bytes.substr(mark.size());
}

std::uint64_t FlatReader::Number() {
  std::uint64_t number = 0;
  for (int shift = 0; shift < 64 && !rest_.empty(); shift += 7) {
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    number |= std::uint64_t{byte & 0x7Fu} << shift;
    if (byte < 0x80) break;
  }
  return number;
}

std::string_view FlatReader::Text() {
  const std::string_view text = rest_.substr(0, static_cast<std::size_t>(Number()));
  rest_.remove_prefix(text.size());
  return text;
}

bool IsYoung(std::int64_t modified) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return modified > std::chrono::nanoseconds(now).count() - kYoung;
}

}  // namespace quillon
