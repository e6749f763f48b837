#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cstdlib>

#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kOldHeader = 12;  // bytes; it has sizes of 16 bits and colours of three bytes

enum Packing : std::uint32_t { kPlain = 0, kRle8 = 1, kRle4 = 2, kFields = 3, kFieldsAndAlpha = 6 };

using Palette = std::array<Pixel, 256>;

struct Header {
  std::uint32_t length = 0;  // bytes, without the file's header
  Picture::Size size;
  bool topDown = false;
  int bits = 0;  // a pixel
  std::uint32_t packing = kPlain;
  std::size_t colours = 0;              // in the palette
  std::size_t palette = 0, pixels = 0;  // where they begin

  bool HasMasks() const { return packing == kFields || packing == kFieldsAndAlpha; }
  bool HasPalette() const { return bits <= 8; }
  std::size_t BytesOfColour() const { return length == kOldHeader ? 3 : 4; }
};

/// Why a file with this header can't be read; nothing when it can.
const char* Fault(const Header& header) {
  const auto [width, height] = header.size;
  if (width < 1 || height < 1) return "its header is damaged";
  const auto is = [&](std::initializer_list<int> bits) {
    return std::ranges::find(bits, header.bits) != bits.end();
  };
  const bool known = header.packing == kPlain  ? is({1, 2, 4, 8, 16, 24, 32})
                     : header.packing == kRle8 ? is({8})
                     : header.packing == kRle4 ? is({4})
                                               : header.HasMasks() && is({16, 32});
  return known ? nullptr : "it is a bitmap of an unknown kind";
}

Header ReadHeader(std::string_view bytes) {
  Header header;
  header.length = LittleEndian(bytes, kFileHeader, 4);
  // The shortest of the newer ones ends behind the bits of a pixel.
  if (header.length != kOldHeader && header.length < 16) return {};
  if (bytes.size() < kFileHeader + header.length) return {};
  const std::string_view fields = bytes.substr(kFileHeader, header.length);  // those it lacks are 0
  std::size_t colours = 0;
  if (header.length == kOldHeader) {
    header.size = {static_cast<int>(LittleEndian(fields, 4, 2)),
                   static_cast<int>(LittleEndian(fields, 6, 2))};
    header.bits = static_cast<int>(LittleEndian(fields, 10, 2));
  } else {
    const auto height = static_cast<int>(LittleEndian(fields, 8, 4));
    if (height == INT_MIN) return {};
    header.topDown = height < 0;
    header.size = {static_cast<int>(LittleEndian(fields, 4, 4)), std::abs(height)};
    header.bits = static_cast<int>(LittleEndian(fields, 14, 2));
    header.packing = LittleEndian(fields, 16, 4);
    colours = LittleEndian(fields, 32, 4);
  }
  // The masks are a part of the longer headers and lie at the same place behind one of 40 bytes.
  const std::size_t masks = header.length != 40 || !header.HasMasks() ? 0
                            : header.packing == kFields               ? 12
                                                                      : 16;
  header.palette = kFileHeader + header.length + masks;
  if (header.HasPalette()) {
    const std::size_t most = std::size_t{1} << header.bits;
    header.colours = colours == 0 ? most : std::min(most, colours);
  }
  header.pixels = LittleEndian(bytes, 10, 4);
  // Some programs leave that out, others make the palette as short as what is used of it.
  if (header.pixels < header.palette)
    header.pixels = header.palette + header.colours * header.BytesOfColour();
  else
    header.colours = std::min(header.colours, (header.pixels - header.palette) / header.BytesOfColour());
  return header;
}

/// Colours that the file does not have are black.
Palette ReadPalette(const Header& header, std::string_view bytes) {
  Palette palette{};
  for (std::size_t i = 0; i < header.colours; ++i) {
    const std::size_t at = header.palette + i * header.BytesOfColour();
    palette[i] = {ByteAt(bytes, at + 2), ByteAt(bytes, at + 1), ByteAt(bytes, at)};
  }
  return palette;
}

/// One of the three colours of a pixel of 16 bits or more.
struct Channel {
  explicit Channel(std::uint32_t bits)
      : mask(bits), shift(bits == 0 ? 0 : std::countr_zero(bits)), most(bits >> shift) {}

  std::uint8_t Of(std::uint32_t pixel) const {
    if (most == 0) return 0;
    return static_cast<std::uint8_t>((std::uint64_t{(pixel & mask) >> shift} * 255 + most / 2) / most);
  }

  std::uint32_t mask;
  int shift;
  std::uint32_t most;
};

struct Channels {
  Channel red, green, blue;
};

Channels ReadChannels(const Header& header, std::string_view bytes) {
  constexpr std::size_t kMasks = kFileHeader + 40;
  const auto mask = [&](std::size_t i) { return Channel(LittleEndian(bytes, kMasks + 4 * i, 4)); };
  if (header.HasMasks()) return {mask(0), mask(1), mask(2)};
  if (header.bits == 16) return {Channel(0x7C00), Channel(0x03E0), Channel(0x001F)};
  return {Channel(0xFF0000), Channel(0x00FF00), Channel(0x0000FF)};
}

/// Rows of whole pixels. Rows, or ends of rows, that the file lacks stay black.
void DrawPlain(const Header& header, std::string_view bytes, Picture& picture) {
  const Palette palette = ReadPalette(header, bytes);
  const Channels channels = ReadChannels(header, bytes);
  const auto bits = static_cast<std::size_t>(header.bits);
  const std::size_t rowBytes = (static_cast<std::size_t>(header.size.width) * bits + 31) / 32 * 4;
  for (int i = 0; i < header.size.height; ++i) {
    const std::size_t start = header.pixels + static_cast<std::size_t>(i) * rowBytes;
    if (start >= bytes.size()) return;
    const std::string_view row = bytes.substr(start, rowBytes);
    Pixel* const target = picture.Row(header.topDown ? i : header.size.height - 1 - i);
    for (std::size_t x = 0; x < static_cast<std::size_t>(header.size.width); ++x) {
      const std::size_t at = x * bits / 8;
      if (at + std::max<std::size_t>(bits / 8, 1) > row.size()) break;
      if (header.HasPalette()) {
        target[x] = palette[ByteAt(row, at) >> (8 - bits - x * bits % 8) & ((1u << bits) - 1)];
      } else {
        const std::uint32_t pixel = LittleEndian(row, at, header.bits / 8);
        target[x] = {channels.red.Of(pixel), channels.green.Of(pixel), channels.blue.Of(pixel)};
      }
    }
  }
}

/// Runs of pixels of the same colour, or pairs of colours where a pixel has four bits.
void DrawRuns(const Header& header, std::string_view bytes, Picture& picture) {
  const Palette palette = ReadPalette(header, bytes);
  const int width = header.size.width, height = header.size.height;
  std::ranges::fill(picture.pixels(), palette[0]);  // pixels may be passed over
  const bool pairs = header.bits == 4;
  int x = 0, y = 0;
  const auto draw = [&](int colours, int i) {
    const int index = !pairs ? colours : i % 2 == 0 ? colours >> 4 : colours & 15;
    if (x < width)
      picture.At(x++, header.topDown ? y : height - 1 - y) = palette[static_cast<std::size_t>(index)];
  };
  for (std::size_t at = header.pixels; at + 1 < bytes.size() && y < height; at += 2) {
    const int count = ByteAt(bytes, at), what = ByteAt(bytes, at + 1);
    if (count > 0) {
      for (int i = 0; i < count; ++i) draw(what, i);
    } else if (what == 0) {  // the row ends
      x = 0;
      ++y;
    } else if (what == 1) {  // the picture ends
      return;
    } else if (what == 2) {  // a step to the right and on
      x = std::min(width, x + ByteAt(bytes, at + 2));
      y += ByteAt(bytes, at + 3);
      at += 2;
    } else {  // so many pixels, each with a colour of its own, up to an even byte
      for (int i = 0; i < what; ++i)
        draw(ByteAt(bytes, at + 2 + static_cast<std::size_t>(pairs ? i / 2 : i)), i);
      const int used = pairs ? (what + 1) / 2 : what;
      at += static_cast<std::size_t>(used + used % 2);
    }
  }
}

}  // namespace

Claim ClaimOfBmp(std::string_view bytes) {
  const Header header = ReadHeader(bytes);
  return {Fault(header) == nullptr ? header.size : Picture::Size{}};
}

Picture DecodeBmp(const PictureFile& file) {
  const Header header = ReadHeader(file.bytes);
  if (const char* const fault = Fault(header)) file.Refuse(fault);
  if (header.pixels >= file.bytes.size()) file.Refuse("it is cut short");
  Picture picture(header.size);
  (header.packing == kRle8 || header.packing == kRle4 ? DrawRuns : DrawPlain)(header, file.bytes, picture);
  return picture;
}

}  // namespace quillon
