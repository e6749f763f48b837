// The kinds of picture files that can be read. Any bytes may come: what unpacking them takes is known first.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/pictures/Pictures.h"

namespace quillon {

struct PictureFile {
  std::string_view bytes, path;
  /// Throws RunTimeError 481.
  [[noreturn]] void Refuse(const char* reason) const;
};

/// What the header of a file tells. Nothing when it can't be read: then the decoder says why.
struct Claim {
  Picture::Size size;
  std::int64_t memory = 0;  // bytes that unpacking takes at most, besides the file and the picture
};

// A decoder is only given files whose claim is known and not too much.
Claim ClaimOfBmp(std::string_view bytes);
Picture DecodeBmp(const PictureFile& file);
Claim ClaimOfGif(std::string_view bytes);
Picture DecodeGif(const PictureFile& file);
Claim ClaimOfJpeg(std::string_view bytes);
Picture DecodeJpeg(const PictureFile& file);
Claim ClaimOfPng(std::string_view bytes);
Picture DecodePng(const PictureFile& file);
Claim ClaimOfWebP(std::string_view bytes);
Picture DecodeWebP(const PictureFile& file);

inline std::uint8_t ByteAt(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : std::uint8_t{0};
}

/// A number of up to four bytes; those behind the end are 0.
inline std::uint32_t LittleEndian(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = count; i-- > 0;) value = value << 8 | ByteAt(bytes, at + static_cast<std::size_t>(i));
  return value;
}

inline std::uint32_t BigEndian(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) value = value << 8 | ByteAt(bytes, at + static_cast<std::size_t>(i));
  return value;
}

}  // namespace quillon
