#include <algorithm>
#include <array>

#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

constexpr std::size_t kHeader = 13;
constexpr int kMostCodes = 4096;

using Palette = std::array<Pixel, 256>;

/// The frame that is drawn.
struct Frame {
  int left = 0, top = 0, width = 0, height = 0;
  bool interlaced = false;
  Palette palette{};
  std::size_t data = 0;  // where its data begin

  /// Its rows in the order in which they come.
  std::vector<int> Rows() const {
    std::vector<int> rows;
    const auto add = [&](int first, int step) {
      for (int y = first; y < height; y += step) rows.push_back(top + y);
    };
    if (!interlaced) {
      add(0, 1);
    } else {
      add(0, 8);
      add(4, 8);
      add(2, 4);
      add(1, 2);
    }
    return rows;
  }
};

/// Reads a palette, if the flags tell of one, and steps over it.
void ReadPalette(const PictureFile& file, std::uint32_t flags, std::size_t& at, Palette& palette) {
  if ((flags & 0x80) == 0) return;
  palette = {};
  const std::size_t count = std::size_t{2} << (flags & 7);
  if (file.bytes.size() < at + 3 * count) file.Refuse("it is cut short");
  for (std::size_t i = 0; i < count; ++i, at += 3)
    palette[i] = {ByteAt(file.bytes, at), ByteAt(file.bytes, at + 1), ByteAt(file.bytes, at + 2)};
}

/// Finds the first frame. `palette` is the one for all frames.
Frame FindFrame(const PictureFile& file, Picture::Size canvas, std::size_t at, const Palette& palette) {
  while (at < file.bytes.size()) {
    const char kind = file.bytes[at++];
    if (kind == ';') break;
    if (kind == '!') {
      ++at;  // what kind of extension
      while (ByteAt(file.bytes, at) != 0) at += 1u + ByteAt(file.bytes, at);
      ++at;
    } else if (kind == ',') {
      const auto word = [&](std::size_t i) {
        return static_cast<int>(LittleEndian(file.bytes, at + 2 * i, 2));
      };
      Frame frame{word(0), word(1), word(2), word(3)};
      if (frame.width == 0 || frame.height == 0 || frame.left + frame.width > canvas.width ||
          frame.top + frame.height > canvas.height)
        file.Refuse("its header is damaged");
      const std::uint32_t flags = ByteAt(file.bytes, at + 8);
      frame.interlaced = (flags & 0x40) != 0;
      frame.palette = palette;
      frame.data = at + 9;
      ReadPalette(file, flags, frame.data, frame.palette);
      return frame;
    }  // else there is something between the blocks that does not belong there
  }
  file.Refuse("there is no picture in it");
}

/// Codes of so many bits from a chain of blocks.
class Codes {
 public:
  Codes(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at) {}

  /// -1 at the end of the data, or of the file.
  int Next(int width) {
    while (held_ < width) {
      if (left_ == 0) left_ = ByteAt(bytes_, at_++);
      if (left_ == 0 || at_ >= bytes_.size()) return -1;
      bits_ |= std::uint32_t{ByteAt(bytes_, at_++)} << held_;
      held_ += 8;
      --left_;
    }
    const auto code = static_cast<int>(bits_ & ((1u << width) - 1));
    bits_ >>= width;
    held_ -= width;
    return code;
  }

 private:
  std::string_view bytes_;
  std::size_t at_;
  int left_ = 0;  // bytes of the block
  std::uint32_t bits_ = 0;
  int held_ = 0;
};

/// Unpacks a frame's colours; tells how many pixels got one. Damaged data give what they can.
class Unpacker {
 public:
  Unpacker(Picture& picture, const Frame& frame) : picture_(picture), frame_(frame), rows_(frame.Rows()) {}

  std::size_t Run(std::string_view bytes) {
    const int bits = ByteAt(bytes, frame_.data);
    if (bits > 11) return 0;
    Codes codes(bytes, frame_.data + 1);
    const int clear = 1 << bits, end = clear + 1;
    int width = bits + 1, next = clear + 2, before = -1;
    std::uint8_t first = 0;
    for (int code; !Full() && (code = codes.Next(width)) >= 0 && code != end;) {
      if (code == clear) {
        width = bits + 1;
        next = clear + 2;
        before = -1;
        continue;
      }
      if (before < 0) {  // a single colour; there are no strings yet
        before = code < clear ? code : 0;
        first = Colour(before);
        Draw(first);
        continue;
      }
      // A code that is not known yet stands for the string before and its first colour once more.
      const bool known = code < next;
      if (!known) string_[0] = first;
      std::size_t length = known ? 0 : 1;
      int at = known ? code : before;
      for (; at > end; at = before_[static_cast<std::size_t>(at)])
        string_[length++] = last_[static_cast<std::size_t>(at)];
      string_[length++] = first = Colour(at);
      while (length > 0) Draw(string_[--length]);
      const int made = next;
      if (next < kMostCodes) {
        before_[static_cast<std::size_t>(next)] = before;
        last_[static_cast<std::size_t>(next)] = first;
        if (++next == (1 << width) && width < 12) ++width;
      }
      before = known ? code : made;
    }
    return drawn_;
  }

 private:
  static std::uint8_t Colour(int code) { return static_cast<std::uint8_t>(code < 256 ? code : 0); }

  bool Full() const { return row_ == rows_.size(); }

  void Draw(std::uint8_t colour) {
    if (Full()) return;
    ++drawn_;
    picture_.At(frame_.left + x_, rows_[row_]) = frame_.palette[colour];
    if (++x_ < frame_.width) return;
    x_ = 0;
    ++row_;
  }

  Picture& picture_;
  const Frame& frame_;
  const std::vector<int> rows_;
  int x_ = 0;
  std::size_t row_ = 0, drawn_ = 0;
  // A string is a shorter one and a last colour.
  std::array<int, kMostCodes> before_{};
  std::array<std::uint8_t, kMostCodes> last_{};
  std::array<std::uint8_t, kMostCodes + 1> string_{};  // from its end on
};

}  // namespace

Claim ClaimOfGif(std::string_view bytes) {
  if (bytes.size() < kHeader) return {};
  return {{static_cast<int>(LittleEndian(bytes, 6, 2)), static_cast<int>(LittleEndian(bytes, 8, 2))}};
}

Picture DecodeGif(const PictureFile& file) {
  const Picture::Size size = ClaimOfGif(file.bytes).size;
  if (size.width < 1 || size.height < 1) file.Refuse("its header is damaged");
  const std::uint32_t flags = ByteAt(file.bytes, 10);
  Palette palette{};
  palette[1] = {255, 255, 255};  // of a file that brings no palette at all
  std::size_t at = kHeader;
  ReadPalette(file, flags, at, palette);
  const Frame frame = FindFrame(file, size, at, palette);
  Picture picture(size, (flags & 0x80) != 0 ? palette[ByteAt(file.bytes, 11)] : Pixel{255, 255, 255});
  for (const int y : frame.Rows())
    std::fill_n(picture.Row(y) + frame.left, frame.width, frame.palette[0]);  // where data are missing
  if (Unpacker(picture, frame).Run(file.bytes) == 0) file.Refuse("there is no picture in it");
  return picture;
}

}  // namespace quillon
