#include "sample/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <unordered_map>
#include <vector>

#include "core/pictures/Pictures.h"
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

int Blend(int from, int to, double share) {
  const auto channel = [&](int shift) {
    const int a = from >> shift & 0xFF, b = to >> shift & 0xFF;
    return static_cast<int>(std::lround(a + (b - a) * std::clamp(share, 0.0, 1.0)));
  };
  return channel(16) << 16 | channel(8) << 8 | channel(0);
}

class Landscape {
 public:
  Landscape(const std::string& name, const Palette& palette, int width, int height)
      : numbers_(name),
        palette_(palette),
        width_(width),
        height_(height),
        colours_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    DrawSky();
    DrawHills(palette.farHills, 0.42, 0.16);
    DrawHills(palette.nearHills, 0.53, 0.10);
    DrawMeadow();
    DrawTrack();
    AddGrain();
  }

  int width() const { return width_; }
  int height() const { return height_; }
  /// From the upper left one on, row by row, as 0xRRGGBB.
  const std::vector<int>& colours() const { return colours_; }

 private:
  int& At(int x, int y) {
    return colours_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                    static_cast<std::size_t>(x)];
  }

  void DrawSky() {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)
        At(x, y) = Blend(palette_.skyTop, palette_.skyBottom, y / (kHorizon * height_));
    DrawSun(width_ * numbers_.Between(15, 85) / 100, height_ / 5, height_ / 16.0);
  }

  void DrawSun(int middleX, int middleY, double radius) {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x)  // softly at the edge
        At(x, y) = Blend(At(x, y), palette_.sun, radius + 0.5 - std::hypot(x - middleX, y - middleY));
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
      for (int x = 0; x < width_; ++x) {
        const double share = numbers_.Share() * 0.09;
        At(x, y) = Blend(At(x, y), numbers_.Bits() & 1 ? 0xFFFFFF : 0, share);
      }
  }

  Numbers numbers_;
  const Palette& palette_;
  const int width_, height_;
  std::vector<int> colours_;
};

void AddNumber(std::string& bytes, std::size_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i);
}

std::string AsJpeg(const Landscape& landscape) {
  Picture picture({landscape.width(), landscape.height()});
  std::ranges::transform(landscape.colours(), picture.pixels().begin(), [](int colour) {
    return Pixel{static_cast<std::uint8_t>(colour >> 16), static_cast<std::uint8_t>(colour >> 8),
                 static_cast<std::uint8_t>(colour)};
  });
  return picture.ToJpeg(90);
}

std::string AsBmp(const Landscape& landscape) {
  const auto width = static_cast<std::size_t>(landscape.width()),
             height = static_cast<std::size_t>(landscape.height());
  const std::size_t row = (3 * width + 3) / 4 * 4, headers = 14 + 40;
  std::string bytes = "BM";
  for (const std::size_t value :
       {headers + height * row, std::size_t{0}, headers, std::size_t{40}, width, height})
    AddNumber(bytes, value, 4);
  AddNumber(bytes, 1, 2);
  AddNumber(bytes, 24, 2);
  bytes.resize(headers);
  for (std::size_t y = height; y-- > 0;) {
    for (std::size_t x = 0; x < width; ++x)
      AddNumber(bytes, static_cast<std::size_t>(landscape.colours()[y * width + x]), 3);
    bytes.resize(headers + (height - y) * row);
  }
  return bytes;
}

constexpr int kGifBits = 7;
constexpr std::size_t kGifColours = 1 << kGifBits;

int Channel(int colour, int shift) { return colour >> shift & 0xFF; }

/// Colours that are to become one.
struct Group {
  explicit Group(std::span<int> members) : colours(members) {
    for (const int channel : {16, 8, 0}) {
      const auto [least, most] =
          std::ranges::minmax(colours, {}, [&](int colour) { return Channel(colour, channel); });
      const int low = Channel(least, channel), high = Channel(most, channel);
      if (high - low > spread) spread = high - low, shift = channel, middle = (low + high) / 2;
    }
  }
  /// Takes the lower half away.
  Group Split() {
    const auto upper = std::partition(colours.begin(), colours.end(),
                                      [&](int colour) { return Channel(colour, shift) <= middle; });
    const Group lower({colours.begin(), upper});
    *this = Group({upper, colours.end()});
    return lower;
  }
  int Mean() const {
    int mean = 0;
    for (const int channel : {16, 8, 0}) {
      std::size_t sum = 0;
      for (const int colour : colours) sum += static_cast<std::size_t>(Channel(colour, channel));
      mean |= static_cast<int>(sum / colours.size()) << channel;
    }
    return mean;
  }

  std::span<int> colours;
  int spread = 0, shift = 0, middle = 0;  // of the channel in which they differ most
};

std::string AsGif(const Landscape& landscape) {
  std::vector<int> different = landscape.colours();
  std::ranges::sort(different);
  different.erase(std::unique(different.begin(), different.end()), different.end());
  std::vector<Group> groups{Group(different)};
  while (groups.size() < kGifColours) {
    Group& widest = *std::ranges::max_element(groups, {}, &Group::spread);
    if (widest.spread == 0) break;
    groups.push_back(widest.Split());
  }
  std::unordered_map<int, char> places;
  std::string table;
  for (const Group& group : groups) {
    for (const int colour : group.colours) places[colour] = static_cast<char>(table.size() / 3);
    const int mean = group.Mean();
    for (const int shift : {16, 8, 0}) table += static_cast<char>(mean >> shift);
  }
  table.resize(3 * kGifColours);

  std::string bytes = "GIF87a";
  const auto addSize = [&] {
    for (const int side : {landscape.width(), landscape.height()})
      AddNumber(bytes, static_cast<std::size_t>(side), 2);
  };
  addSize();
  bytes += {'\xF6', 0, 0};  // a table of 128 colours
  bytes += table + ',' + std::string(4, '\0');
  addSize();
  bytes += {'\0', kGifBits};
  // Grain can't be packed. As long as every block starts a new code table, a code is one byte: the colour.
  const auto& colours = landscape.colours();
  for (std::size_t i = 0; i < colours.size(); i += kGifColours - 2) {
    const std::size_t count = std::min(kGifColours - 2, colours.size() - i);
    bytes += {static_cast<char>(count + 1), '\x80'};
    for (std::size_t k = 0; k < count; ++k) bytes += places[colours[i + k]];
  }
  return bytes + std::string{1, '\x81', 0, ';'};
}

}  // namespace

std::string LandscapePicture(const std::string& name, int palette, int width, int height,
                             PictureFormat format) {
  const Landscape landscape(name, kPalettes[static_cast<std::size_t>(palette) % kPalettes.size()], width,
                            height);
  switch (format) {
    case PictureFormat::Gif: return AsGif(landscape);
    case PictureFormat::Bmp: return AsBmp(landscape);
    case PictureFormat::Jpeg: break;
  }
  return AsJpeg(landscape);
}

}  // namespace quillon
