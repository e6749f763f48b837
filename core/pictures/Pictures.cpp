#include "core/pictures/Pictures.h"

#include <algorithm>

#include "core/RunTimeError.h"
#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

constexpr std::int64_t kMostPixels = 16'000'000;  // more is unpacked for no preview
constexpr std::int64_t kMostMemory = 180'000'000;
constexpr int kLongestSide = 65500;  // of a JPEG

struct Decoder {
  std::string_view start;  // of every such file
  Claim (*claim)(std::string_view bytes);
  Picture (*decode)(const PictureFile& file);
};
constexpr Decoder kDecoders[] = {
    {"BM", ClaimOfBmp, DecodeBmp},      {"GIF87a", ClaimOfGif, DecodeGif},
    {"GIF89a", ClaimOfGif, DecodeGif},  {"\xFF\xD8", ClaimOfJpeg, DecodeJpeg},
    {"\x89PNG", ClaimOfPng, DecodePng}, {"RIFF", ClaimOfWebP, DecodeWebP},
};

const Decoder* DecoderOf(std::string_view bytes) {
  const auto* const found = std::ranges::find_if(
      kDecoders, [&](const Decoder& decoder) { return bytes.starts_with(decoder.start); });
  return found == std::end(kDecoders) ? nullptr : found;
}

Claim ClaimOf(std::string_view bytes) {
  const Decoder* const decoder = DecoderOf(bytes);
  return decoder == nullptr ? Claim{} : decoder->claim(bytes);
}

bool TooMuch(const Claim& claim, std::size_t fileSize) {
  const auto [width, height] = claim.size;
  const std::int64_t pixels = std::int64_t{width} * height;
  return std::max(width, height) > kLongestSide || pixels > kMostPixels ||
         static_cast<std::int64_t>(fileSize + sizeof(Pixel) * static_cast<std::size_t>(pixels)) +
                 claim.memory >
             kMostMemory;
}

std::uint8_t OverWhite(std::uint8_t channel, std::uint8_t alpha) {
  return static_cast<std::uint8_t>((channel * alpha + 255 * (255 - alpha) + 127) / 255);
}

}  // namespace

void PictureFile::Refuse(const char* reason) const {
  throw RunTimeError(ErrorNumber::InvalidPicture, std::string(path), reason);
}

Picture::Picture(Size size, Pixel colour)
    : size_(size),
      pixels_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height), colour) {}

Picture Picture::Load(std::string_view bytes, std::string_view path) {
  const PictureFile file{bytes, path};
  if (IsHuge(bytes)) file.Refuse("it is too large");
  const Decoder* const decoder = DecoderOf(bytes);
  if (decoder == nullptr) file.Refuse("it can't be read as a picture");
  Picture picture = decoder->decode(file);
  for (Pixel& pixel : picture.pixels_)
    if (const std::uint8_t alpha = pixel.alpha; alpha != 255)
      pixel = {OverWhite(pixel.red, alpha), OverWhite(pixel.green, alpha), OverWhite(pixel.blue, alpha)};
  return picture;
}

bool Picture::IsHuge(std::string_view bytes) { return TooMuch(ClaimOf(bytes), bytes.size()); }

Picture::Size Picture::Measure(std::string_view bytes, std::string_view path) {
  if (const Claim claim = ClaimOf(bytes); TooMuch(claim, bytes.size())) return claim.size;
  return Load(bytes, path).size();
}

}  // namespace quillon
