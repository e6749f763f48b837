#include "sample/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "core/RunTimeError.h"
#include "core/host/PictureLibrary.h"
#include "sample/Numbers.h"

namespace quillon {
namespace {

struct Palette {
  int skyTop, skyBottom, sun, farHills, nearHills, meadow;
};
constexpr std::array<Palette, 6> kPalettes = {{
    {0x3C78C8, 0xD8ECF8, 0xFFF8D0, 0x7A94A8, 0x4C7A4A, 0x8CB45A},  // a summer's day
    {0x2E3C74, 0xF4B078, 0xFFE090, 0x6A5A80, 0x46405A, 0x6E6A4A},  // evening
    {0x88A4BC, 0xE8EEF2, 0xFFFFFF, 0xB4C4D0, 0x8A9CA8, 0xF0F4F6},  // snow
    {0x5888B0, 0xF0E4C0, 0xFFF4C0, 0xB08A60, 0x9A5C38, 0xC89048},  // autumn
    {0x4890A8, 0xC8E8E0, 0xFFFFE8, 0x5A98A0, 0x2E6E66, 0x5A9C70},  // by the sea
    {0x98A0A8, 0xD0D4D4, 0xE8E8E0, 0x808C8C, 0x5C6A5C, 0x7A8858},  // drizzle
}};

constexpr double kHorizon = 0.62;  // share of the height

struct FreeImage {
  void operator()(gdImageStruct* image) const { Gd().Destroy(image); }
};
using Image = std::unique_ptr<gdImageStruct, FreeImage>;

int Blend(int from, int to, double share) {
  const auto channel = [&](int shift) {
    const int a = from >> shift & 0xFF, b = to >> shift & 0xFF;
    return static_cast<int>(std::lround(a + (b - a) * std::clamp(share, 0.0, 1.0)));
  };
  return gdTrueColor(channel(16), channel(8), channel(0));
}

class Landscape {
 public:
  Landscape(const std::string& name, const Palette& palette, int width, int height)
      : numbers_(name),
        palette_(palette),
        width_(width),
        height_(height),
        image_(Gd().CreateTrueColor(width, height)) {
    if (!image_) throw RunTimeError(ErrorNumber::InvalidPicture, name, "no picture of this size can be made");
    DrawSky();
    DrawHills(palette.farHills, 0.42, 0.16);
    DrawHills(palette.nearHills, 0.53, 0.10);
    DrawMeadow();
    DrawTrack();
    AddGrain();
  }

  gdImageStruct* Get() const { return image_.get(); }

 private:
  int& At(int x, int y) { return image_->tpixels[y][x]; }

  void DrawSky() {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        At(x, y) = Blend(palette_.skyTop, palette_.skyBottom, y / (kHorizon * height_));
    const int size = height_ / 8;
    Gd().FilledEllipse(Get(), width_ * numbers_.Between(15, 85) / 100, height_ / 5, size, size, palette_.sun);
  }

  void DrawHills(int colour, double level, double rise) {
    const double phase = 6.28 * numbers_.Share(), phase2 = 6.28 * numbers_.Share();
    for (int x = 0; x < width_; ++x) {
      const double along = 6.28 * x / width_;
      const double ridge =
          level - rise * (0.6 * std::sin(along + phase) + 0.3 * std::sin(2.7 * along + phase2));
      for (int y = static_cast<int>(ridge * height_); y < height_; ++y)
        At(x, y) = Blend(colour, palette_.skyBottom, (y - ridge * height_) / (0.5 * height_));
    }
  }

  void DrawMeadow() {
    for (int y = static_cast<int>(kHorizon * height_); y < height_; ++y)
      for (int x = 0; x < width_; ++x) At(x, y) = Blend(palette_.nearHills, palette_.meadow, 3 * Depth(y));
  }

  /// 0 at the horizon, 1 at the lower edge.
  double Depth(int y) const { return (static_cast<double>(y) / height_ - kHorizon) / (1 - kHorizon); }

  void DrawTrack() {
    const double far = numbers_.Between(35, 65) / 100.0 * width_, near = 0.5 * width_;
    for (int y = static_cast<int>(kHorizon * height_) + 1; y < height_; ++y) {
      const double depth = Depth(y), gauge = 0.17 * width_ * depth, middle = far + (near - far) * depth;
      const bool sleeper = std::fmod(2.2 / (depth + 0.06), 1.0) < 0.45;
      Stretch(y, middle, 1.9 * gauge, 0x9A9084);
      if (sleeper) Stretch(y, middle, 1.45 * gauge, 0x5A4636);
      for (const double rail : {middle - gauge, middle + gauge})
        Stretch(y, rail, 0.09 * gauge + 0.5, 0x3A3E46);
    }
  }

  void Stretch(int y, double middle, double half, int colour) {
    const int last = std::min(width_ - 1, static_cast<int>(middle + half));
    for (int x = std::max(0, static_cast<int>(middle - half)); x <= last; ++x) At(x, y) = colour;
  }

  // As on scanned photographs: it is what makes a picture's file as big as a real one's.
  void AddGrain() {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        At(x, y) = Blend(At(x, y), numbers_.Bits() & 1 ? 0xFFFFFF : 0, numbers_.Share() * 0.09);
  }

  Numbers numbers_;
  const Palette& palette_;
  const int width_, height_;
  Image image_;
};

}  // namespace

std::string LandscapePicture(const std::string& name, int palette, int width, int height,
                             PictureFormat format) {
  const Landscape landscape(name, kPalettes[static_cast<std::size_t>(palette) % kPalettes.size()], width,
                            height);
  int size = 0;
  void* data = nullptr;
  switch (format) {
    case PictureFormat::Jpeg: data = Gd().JpegPtr(landscape.Get(), &size, 90); break;
    case PictureFormat::Bmp: data = Gd().BmpPtr(landscape.Get(), &size, 0); break;
    case PictureFormat::Gif:
      Gd().TrueColorToPalette(landscape.Get(), 0, 128);
      data = Gd().GifPtr(landscape.Get(), &size);
      break;
  }
  if (data == nullptr) throw RunTimeError(ErrorNumber::InvalidPicture, name, "the picture can't be written");
  const std::unique_ptr<void, void (*)(void*)> owner(data, Gd().Free);
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

}  // namespace quillon
