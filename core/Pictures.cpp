#include "core/Pictures.h"

#include <cstdint>
#include <cstdlib>
#include <utility>

#include "core/RunTimeError.h"
#include "core/host/PictureLibrary.h"

namespace quillon {
namespace {

constexpr std::int64_t kMostPixels = 16'000'000;  // more is unpacked for no preview

int LittleEndian(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = count; i-- > 0;)
    value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  return static_cast<int>(value);
}

int BigEndian16(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]) << 8 | static_cast<unsigned char>(bytes[at + 1]);
}

/// The frame header of a JPEG, found from marker to marker.
Picture::Size JpegSize(std::string_view bytes) {
  for (std::size_t at = 2; at + 9 < bytes.size();) {
    const auto marker = static_cast<unsigned char>(bytes[at + 1]);
    if (bytes[at] != '\xFF') break;
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    if (frame) return {BigEndian16(bytes, at + 7), BigEndian16(bytes, at + 5)};
    at += marker == 0xFF ? 1 : 2 + static_cast<std::size_t>(BigEndian16(bytes, at + 2));
  }
  return {};
}

bool IsGif(std::string_view bytes) { return bytes.starts_with("GIF8") && bytes.size() > 10; }
bool IsBmp(std::string_view bytes) { return bytes.starts_with("BM") && bytes.size() > 26; }
bool IsJpeg(std::string_view bytes) { return bytes.starts_with("\xFF\xD8"); }

/// What the header claims.
Picture::Size ClaimedSize(std::string_view bytes) {
  if (IsGif(bytes)) return {LittleEndian(bytes, 6, 2), LittleEndian(bytes, 8, 2)};
  // The oldest headers are 12 bytes long and have 16-bit sizes.
  if (IsBmp(bytes) && LittleEndian(bytes, 14, 4) == 12)
    return {LittleEndian(bytes, 18, 2), LittleEndian(bytes, 20, 2)};
  if (IsBmp(bytes)) return {std::abs(LittleEndian(bytes, 18, 4)), std::abs(LittleEndian(bytes, 22, 4))};
  return IsJpeg(bytes) ? JpegSize(bytes) : Picture::Size{};
}

bool TooManyPixels(Picture::Size size) { return std::int64_t{size.width} * size.height > kMostPixels; }

}  // namespace

struct Picture::Image {
  gdImagePtr gd;
};

void Picture::Destroy::operator()(Image* image) const {
  Gd().Destroy(image->gd);
  delete image;
}

Picture::Picture(std::unique_ptr<Image, Destroy> image) : image_(std::move(image)) {}

Picture Picture::Load(std::string_view bytes, std::string_view path) {
  if (IsHuge(bytes)) throw RunTimeError(ErrorNumber::InvalidPicture, std::string(path), "it is too large");
  // A stranger's broken picture is told of once, by the error below.
  Gd().SetErrorMethod([](int, const char*, va_list) {});
  const int size = static_cast<int>(bytes.size());
  void* data = const_cast<char*>(bytes.data());
  gdImagePtr image = nullptr;
  if (IsGif(bytes))
    image = Gd().CreateFromGifPtr(size, data);
  else if (IsBmp(bytes))
    image = Gd().CreateFromBmpPtr(size, data);
  else if (IsJpeg(bytes))
    image = Gd().CreateFromJpegPtrEx(size, data, 1);
  if (image == nullptr)
    throw RunTimeError(ErrorNumber::InvalidPicture, std::string(path), "it can't be read as a picture");
  return Picture(std::unique_ptr<Image, Destroy>(new Image{image}));
}

bool Picture::IsHuge(std::string_view bytes) { return TooManyPixels(ClaimedSize(bytes)); }

Picture::Size Picture::Measure(std::string_view bytes, std::string_view path) {
  if (const Size claimed = ClaimedSize(bytes); TooManyPixels(claimed)) return claimed;
  const Picture picture = Load(bytes, path);
  return {gdImageSX(picture.image_->gd), gdImageSY(picture.image_->gd)};
}

std::string Picture::ToJpeg(int quality) const {
  int size = 0;
  void* data = Gd().JpegPtr(image_->gd, &size, quality);
  if (data == nullptr) throw RunTimeError(ErrorNumber::InvalidPicture);
  std::string bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
  Gd().Free(data);
  return bytes;
}

}  // namespace quillon
