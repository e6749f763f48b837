// Pictures of every kind, decoded, and written as previews are.
#include "core/pictures/Pictures.h"

#include "fuzz/Target.h"

namespace quillon::fuzz {

constexpr int kMostPixels = 1 << 18;  // more is only slow

void Try(std::string_view bytes) {
  Picture::IsHuge(bytes);
  const auto [width, height] = Picture::Measure(bytes, "\\a.bmp");
  Require(width > 0 && height > 0, "a picture without pixels");
  if (width > kMostPixels / height) return;
  const Picture picture = Picture::Load(bytes, "\\a.bmp");
  Require(picture.size().width == width && picture.size().height == height, "another size than told");
  if (width < 256 && height < 256) Picture::Load(picture.ToJpeg(75), "\\a.jpg");
}

}  // namespace quillon::fuzz
