#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>

#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

constexpr std::size_t kFirstChunk = 8;
constexpr std::size_t kAroundChunk = 12;  // bytes of its length, its name and its sum
constexpr std::string_view kStart = "\x89PNG\r\n\x1A\n";

enum Colours { kGrey = 0, kTrue = 2, kPalette = 3, kGreyAndAlpha = 4, kTrueAndAlpha = 6 };

/// Which pixels a pass brings.
struct Pass {
  int x, y, stepX, stepY;
};
constexpr std::array<Pass, 1> kOnePass = {{{0, 0, 1, 1}}};
constexpr std::array<Pass, 7> kSevenPasses = {
    {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

struct Header {
  Picture::Size size;
  int depth = 0;  // bits
  int colours = kGrey;
  bool interlaced = false;

  int Samples() const {
    return colours == kTrue ? 3 : colours == kTrueAndAlpha ? 4 : colours == kGreyAndAlpha ? 2 : 1;
  }
  std::size_t RowBytes(int width) const {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(Samples() * depth) + 7) / 8;
  }
  /// Calls `use` with every pass that has pixels and its size.
  template <typename Use>
  void ForEachPass(const Use& use) const {
    const auto call = [&](const Pass& pass) {
      if (size.width <= pass.x || size.height <= pass.y) return;
      use(pass, Picture::Size{(size.width - pass.x - 1) / pass.stepX + 1,
                              (size.height - pass.y - 1) / pass.stepY + 1});
    };
    if (interlaced)
      std::ranges::for_each(kSevenPasses, call);
    else
      std::ranges::for_each(kOnePass, call);
  }
  /// Bytes of all rows, each with its filter in front.
  std::size_t UnpackedBytes() const {
    std::size_t bytes = 0;
    ForEachPass([&](const Pass&, Picture::Size part) {
      bytes += static_cast<std::size_t>(part.height) * (1 + RowBytes(part.width));
    });
    return bytes;
  }
};

Header ReadHeader(std::string_view bytes) {
  const std::uint32_t width = BigEndian(bytes, 16, 4), height = BigEndian(bytes, 20, 4);
  const Header header{{static_cast<int>(width), static_cast<int>(height)},
                      ByteAt(bytes, 24),
                      ByteAt(bytes, 25),
                      ByteAt(bytes, 28) != 0};
  constexpr std::uint32_t kMost = 0x7FFFFFFF;
  const auto depthIs = [&](std::initializer_list<int> depths) {
    return std::ranges::find(depths, header.depth) != depths.end();
  };
  const bool known =
      header.colours == kGrey      ? depthIs({1, 2, 4, 8, 16})
      : header.colours == kPalette ? depthIs({1, 2, 4, 8})
      : header.colours == kTrue || header.colours == kGreyAndAlpha || header.colours == kTrueAndAlpha
          ? depthIs({8, 16})
          : false;
  const bool whole = bytes.starts_with(kStart) && bytes.substr(kFirstChunk).size() >= 13 + kAroundChunk &&
                     bytes.substr(12, 4) == "IHDR";
  return whole && known && width > 0 && width <= kMost && height > 0 && height <= kMost ? header : Header{};
}

/// What the chunks of a file hold.
struct Chunks {
  std::string_view palette, transparency;
  std::string data;  // packed
};

Chunks ReadChunks(const PictureFile& file) {
  Chunks chunks;
  for (std::size_t at = kFirstChunk; at + kAroundChunk <= file.bytes.size();) {
    const std::size_t length = BigEndian(file.bytes, at, 4);
    const std::string_view name = file.bytes.substr(at + 4, 4), content = file.bytes.substr(at + 8, length);
    if (name == "IEND") break;
    if (name == "PLTE") chunks.palette = content;
    if (name == "tRNS") chunks.transparency = content;
    if (name == "IDAT") chunks.data += content;
    at += kAroundChunk + length;
  }
  return chunks;
}

std::vector<std::uint8_t> Unpack(const PictureFile& file, const std::string& data, std::size_t size) {
  std::vector<std::uint8_t> rows(size);
  const std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> decompressor(
      libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
  if (libdeflate_zlib_decompress(decompressor.get(), data.data(), data.size(), rows.data(), size, nullptr) !=
      LIBDEFLATE_SUCCESS)
    file.Refuse("its data are damaged");
  return rows;
}

/// Of the neighbours to the left, above, and to the left above, the one nearest to their plane.
int Nearest(int left, int above, int corner) {
  const int plane = left + above - corner;
  const int toLeft = std::abs(plane - left), toAbove = std::abs(plane - above),
            toCorner = std::abs(plane - corner);
  if (toLeft <= toAbove && toLeft <= toCorner) return left;
  return toAbove <= toCorner ? above : corner;
}

/// Undoes the filter of a row. `above` is the row before, empty before the first one; `step` is the distance
/// of two pixels in bytes. False when the filter is unknown.
bool Unfilter(int filter, std::uint8_t* row, const std::uint8_t* above, std::size_t length,
              std::size_t step) {
  if (filter > 4) return false;
  for (std::size_t i = 0; i < length; ++i) {
    const int a = i < step ? 0 : row[i - step], b = above == nullptr ? 0 : above[i];
    const int c = i < step || above == nullptr ? 0 : above[i - step];
    const std::array<int, 5> guess = {0, a, b, (a + b) / 2, filter == 4 ? Nearest(a, b, c) : 0};
    row[i] = static_cast<std::uint8_t>(row[i] + guess[static_cast<std::size_t>(filter)]);
  }
  return true;
}

/// Makes pixels of samples.
class Pixels {
 public:
  Pixels(const Header& header, const Chunks& chunks) : header_(header), chunks_(chunks) {}

  Pixel At(const std::uint8_t* row, int x) const {
    const int at = x * header_.Samples();
    if (header_.colours == kPalette) return Colour(static_cast<std::size_t>(Sample(row, at)));
    const bool grey = header_.Samples() < 3;
    const int red = Sample(row, at), green = grey ? red : Sample(row, at + 1),
              blue = grey ? red : Sample(row, at + 2);
    Pixel pixel{Scaled(red), Scaled(green), Scaled(blue)};
    if (header_.colours == kGreyAndAlpha || header_.colours == kTrueAndAlpha)
      pixel.alpha = Scaled(Sample(row, at + header_.Samples() - 1));
    else if (IsTransparent(red, 0) && (grey || (IsTransparent(green, 1) && IsTransparent(blue, 2))))
      pixel.alpha = 0;
    return pixel;
  }

 private:
  int Sample(const std::uint8_t* row, std::ptrdiff_t i) const {
    if (header_.depth == 16) return row[2 * i] << 8 | row[2 * i + 1];
    if (header_.depth == 8) return row[i];
    const std::ptrdiff_t bit = i * header_.depth;
    return row[bit / 8] >> (8 - header_.depth - bit % 8) & Most();
  }

  int Most() const { return (1 << header_.depth) - 1; }
  std::uint8_t Scaled(int sample) const {
    return static_cast<std::uint8_t>((sample * 255 + Most() / 2) / Most());
  }

  /// Colours that the file does not have are black.
  Pixel Colour(std::size_t i) const {
    const std::string_view palette = chunks_.palette, alpha = chunks_.transparency;
    return {ByteAt(palette, 3 * i), ByteAt(palette, 3 * i + 1), ByteAt(palette, 3 * i + 2),
            i < alpha.size() ? ByteAt(alpha, i) : std::uint8_t{255}};
  }

  bool IsTransparent(int sample, std::size_t i) const {
    return chunks_.transparency.size() >= 2 * i + 2 &&
           static_cast<int>(BigEndian(chunks_.transparency, 2 * i, 2)) == sample;
  }

  const Header& header_;
  const Chunks& chunks_;
};

}  // namespace

Claim ClaimOfPng(std::string_view bytes) {
  const Header header = ReadHeader(bytes);
  return {header.size, static_cast<std::int64_t>(header.UnpackedBytes() + bytes.size())};
}

Picture DecodePng(const PictureFile& file) {
  const Header header = ReadHeader(file.bytes);
  if (header.size.width == 0) file.Refuse("its header is damaged");
  const Chunks chunks = ReadChunks(file);
  std::vector<std::uint8_t> data = Unpack(file, chunks.data, header.UnpackedBytes());
  const Pixels pixels(header, chunks);
  const auto step = static_cast<std::size_t>(std::max(1, header.Samples() * header.depth / 8));
  Picture picture(header.size);
  std::uint8_t* row = data.data();
  header.ForEachPass([&](const Pass& pass, Picture::Size part) {
    const std::size_t length = header.RowBytes(part.width);
    const std::uint8_t* above = nullptr;
    for (int y = 0; y < part.height; ++y, row += length) {
      const int filter = *row++;
      if (!Unfilter(filter, row, above, length, step)) file.Refuse("its data are damaged");
      above = row;
      Pixel* const target = picture.Row(pass.y + y * pass.stepY);
      for (int x = 0; x < part.width; ++x) target[pass.x + x * pass.stepX] = pixels.At(row, x);
    }
  });
  return picture;
}

}  // namespace quillon
