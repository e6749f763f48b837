#include "core/pictures/Pictures.h"

#include <gtest/gtest.h>

#include "core/RunTimeError.h"

namespace quillon {
namespace {

using namespace std::string_literals;

std::string Numbers(const std::vector<std::size_t>& values, int count = 4) {
  std::string bytes;
  for (const auto value : values)
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i);
  return bytes;
}

/// The rows of `kAll` below, for masks of colours.
std::string Direct(const std::vector<std::size_t>& m, int bytes) {
  return Numbers({m[0], m[1], m[2], 0, m[2], m[1], m[0], 0}, bytes);
}

/// A bitmap of 4 by 2 pixels, if it says nothing else.
struct Bmp {
  std::size_t header, bits, packing;
  std::string colours, pixels;  // masks are colours too
  std::size_t count = 0, width = 4, height = 2;
  bool tellsStart = true;
  std::string Bytes() const {
    std::string all = Numbers({header}) + Numbers({width, height}, header == 12 ? 2 : 4);
    all += Numbers({1, bits}, 2) + (header > 16 ? Numbers({packing, 0, 0, 0, count, 0}) : "");
    if (header > 40) all += colours;
    all.resize(header);
    if (header <= 40) all += colours;
    return "BM" + Numbers({0, 0, tellsStart ? 14 + all.size() : 0}) + all + pixels;
  }
};

/// A picture by letters for its colours, row by row; or why it can't be read.
std::string Drawn(std::string_view bytes) {
  try {
    Picture picture = Picture::Load(bytes, "a.jpg");
    std::string text;
    for (const Pixel& pixel : picture.pixels()) {
      if (!text.empty() && (&pixel - picture.pixels().data()) % picture.size().width == 0) text += '/';
      text += ".rgybmcw"[pixel.red / 254 + pixel.green / 254 * 2 + pixel.blue / 254 * 4];
    }
    return text;
  } catch (const RunTimeError& error) {
    return error.number() == 481 && error.path() == "a.jpg" ? error.reason() : "another error";
  }
}

const std::string k3 = "\0\0\0\0\0\xFF\0\xFF\0\xFF\0\0"s;  // black, red, green and blue of three bytes
const std::string k4 = "\0\0\0\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0"s;
const std::string kNibbles = "\x12\x30\0\0\x32\x10\0\0"s;
const std::string kBytes = "\1\2\3\0\3\2\1\0"s;  // the lower row comes first
const std::vector<std::size_t> kRgb = {0xFF0000, 0xFF00, 0xFF}, k555 = {0x7C00, 0x3E0, 0x1F};
const std::vector<std::size_t> k565 = {0xF800, 0x7E0, 0x1F}, kTens = {0x3FF, 0xFFC00, 0x3FF00000};
const std::string kAll = "bgr./rgb.", kBad = "its header is damaged";

TEST(Pictures, BitmapsOfAllKindsAreRead) {
  const std::vector<std::pair<Bmp, std::string>> cases = {
      {{12, 1, 0, k3.substr(0, 6), "\x60\0\0\0\xA0\0\0\0"s}, "r.r./.rr."},
      {{12, 4, 0, k3, kNibbles}, kAll},  // its palette is shorter than 16 colours
      {{12, 24, 0, "", Direct(kRgb, 3)}, kAll},
      {{16, 2, 0, k4, "\x6C\0\0\0\xE4\0\0\0"s}, kAll},
      {{40, 4, 0, k4, kNibbles, 4, 4, 2, false}, kAll},
      {{40, 8, 0, k4.substr(0, 12), kBytes, 3}, ".gr./rg.."},  // a colour that there is not
      {{40, 8, 0, k4, kBytes, 0, 4, 0xFFFFFFFE}, "rgb./bgr."},
      {{40, 8, 0, k4, kBytes.substr(0, 6)}, "bg../rgb."},
      {{40, 8, 0, k4, ""}, "it is cut short"},
      {{40, 16, 0, "", Direct(k555, 2)}, kAll},
      {{40, 24, 0, "", Direct(kRgb, 3).substr(0, 17)}, "b.../rgb."},
      {{40, 32, 0, "", Direct(kRgb, 4)}, kAll},
      {{40, 32, 6, Numbers(kTens) + "1234", Direct(kTens, 4)}, kAll},
      {{52, 32, 3, Numbers(kTens), Direct(kTens, 4)}, kAll},
      {{56, 16, 3, Numbers(k565), Direct(k565, 2)}, kAll},
      {{64, 24, 0, "", Direct(kRgb, 3)}, kAll},
      {{108, 32, 3, Numbers(kTens), Direct(kTens, 4)}, kAll},
      {{124, 16, 3, Numbers(k565), Direct(k565, 2)}, kAll},
      {{40, 8, 1, k4, "\1\1\0\3\2\3\0\0\0\0\1\3\1\2\1\1\0\2\1\0\0\1"s}, kAll},
      {{40, 4, 2, k4, "\0\4\x12\x30\0\0\3\x32\1\1\0\1"s}, "bgb./rgb."},
      {{40, 8, 1, k4, "\0\2\2\1\1\1"s}, "..r./...."},
      {{40, 8, 1, k4, "\xFF\1\0\2\xFF\xFF\xFF\1\0\xFF"s}, "..../rrrr"},
      {{40, 0, 4, "", "\xFF\xD8"}, "it is a bitmap of an unknown kind"},
      {{40, 8, 0, k4, kBytes, 0, 0xFFFFFFFC}, kBad},
      {{40, 8, 0, k4, kBytes, 0, 4, 0x80000000}, kBad},
      {{13, 8, 0, k4, kBytes}, kBad},
  };
  for (const auto& [bmp, expected] : cases) EXPECT_EQ(Drawn(bmp.Bytes()), expected) << bmp.bits;
  const std::string whole = Bmp{40, 24, 0, "", Direct(kRgb, 3)}.Bytes();
  for (std::size_t size = 2; size < 54; ++size) EXPECT_EQ(Drawn(whole.substr(0, size)), kBad) << size;
}

TEST(Pictures, OthersAreReadAndHugeOnesAreNot) {
  const std::string gif = "GIF89a\3\0\2\0\x81\0\0"s + k3, block = ",\1\0\0\0\2\0\2\0\0\2\3"s;
  const std::string png = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\2\0\0\0\1\b\6\0\0\0\0\0\0\0\0\0\0\x14IDAT"s;
  const std::string jpeg = Picture({4, 1}, {255}).ToJpeg(90);
  std::string hugePng = png, hugeJpeg = jpeg, hugeGif = "GIF89a\xFF\xFF\xFF\xFF\x80\0\0"s;
  hugePng.replace(16, 8, "\x7F\xFF\xFF\xFF\x7F\xFF\xFF\xFF");
  const std::size_t frame = jpeg.find("\xFF\xC0");
  hugeJpeg.replace(frame + 5, 4, "\x7F\xFF\x7F\xFF").insert(frame, "junk");
  EXPECT_EQ(Drawn(gif + "\0!\xF9\4\1\0\0\1\0"s + block + "\x8C\6\5\0"s), ".bg/.r.");
  EXPECT_EQ(Drawn(gif + block + "\x8C"s), ".b./...");
  EXPECT_EQ(Drawn(gif + block), "there is no picture in it");
  const std::string rows = "\x78\1\1\x09\0\xF6\xFF\0\xFF\0\0\xFF\0\0\xFF\0\x0E\xFA\2"s;
  EXPECT_EQ(Drawn(png + rows + "\xFE\0\0\0\0"s), "rw");
  EXPECT_EQ(Drawn(png + rows + "\xFF\0\0\0\0"s), "its data are damaged");
  EXPECT_EQ(Drawn(jpeg.substr(0, jpeg.size() - 2)), "rrrr");
  EXPECT_EQ(Drawn("\xFF\xD8\xFF\xC1"), "it can't be read as a JPEG");
  EXPECT_EQ(Drawn("\n\5\1\b"), "it can't be read as a picture");
  for (const auto& huge : {hugePng, hugeJpeg, hugeGif}) EXPECT_EQ(Drawn(huge), "it is too large");
  EXPECT_EQ(Picture::Measure(hugeJpeg, "").width, 0x7FFF);
}

}  // namespace
}  // namespace quillon
