#include <webp/decode.h>

#include <algorithm>

#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

const std::uint8_t* Data(std::string_view bytes) {
  return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

}  // namespace

Claim ClaimOfWebP(std::string_view bytes) {
  WebPBitstreamFeatures features;
  if (WebPGetFeatures(Data(bytes), bytes.size(), &features) != VP8_STATUS_OK) return {};
  const std::int64_t pixels = std::int64_t{features.width} * features.height;
  const bool onlyLossy = features.format == 1 && !features.has_alpha;
  // What is packed without loss, transparency too, may bring a set of code tables for every 16 pixels: up to
  // 21 kilobytes in memory, from no more than 20 bits of the file for the smallest set.
  const std::int64_t tables =
      std::min<std::int64_t>(1300 * pixels, 2400 * static_cast<std::int64_t>(bytes.size()));
  return {{features.width, features.height}, onlyLossy ? 0 : 5 * pixels + tables};
}

Picture DecodeWebP(const PictureFile& file) {
  const auto [size, memory] = ClaimOfWebP(file.bytes);
  if (size.width < 1) file.Refuse("it can't be read as a WebP");
  Picture picture(size);
  auto* const target = reinterpret_cast<std::uint8_t*>(picture.pixels().data());
  const int row = size.width * static_cast<int>(sizeof(Pixel));
  if (!WebPDecodeRGBAInto(Data(file.bytes), file.bytes.size(), target,
                          picture.pixels().size() * sizeof(Pixel), row))
    file.Refuse("it is damaged, or an animation");
  return picture;
}

}  // namespace quillon
