// Pictures in memory: read from BMP, GIF, JPEG, PNG or WebP, written as JPEG.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

struct Pixel {
  std::uint8_t red = 0, green = 0, blue = 0;
  std::uint8_t alpha = 255;  // 255 hides what is behind
  bool operator==(const Pixel&) const = default;
};

/// A picture of at least one pixel.
class Picture {
 public:
  struct Size {
    int width = 0, height = 0;  // pixels
  };

  /// One that has this colour everywhere.
  explicit Picture(Size size, Pixel colour = {});

  /// The content decides what kind of file it is; what is transparent gets white, in a GIF the colour that
  /// the file gives it. Throws RunTimeError 481 that names `path` when `bytes` are no readable picture, or a
  /// huge one.
  static Picture Load(std::string_view bytes, std::string_view path);
  /// True when the header claims more pixels, or pixels that take more memory, than are ever unpacked.
  static bool IsHuge(std::string_view bytes);
  /// The size of a picture that can be read, or that a huge one claims. Throws as Load does.
  static Size Measure(std::string_view bytes, std::string_view path);

  Size size() const { return size_; }
  Pixel& At(int x, int y) { return Row(y)[x]; }
  const Pixel& At(int x, int y) const { return pixels_[Index(y) + static_cast<std::size_t>(x)]; }
  Pixel* Row(int y) { return &pixels_[Index(y)]; }
  /// All pixels, from the upper left one on, row by row.
  std::vector<Pixel>& pixels() { return pixels_; }

  /// `quality` from 1 to 100. Throws RunTimeError 481 when a side has more than 65500 pixels.
  std::string ToJpeg(int quality) const;

 private:
  std::size_t Index(int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width);
  }

  Size size_;
  std::vector<Pixel> pixels_;
};

}  // namespace quillon
