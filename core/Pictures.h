// Pictures in memory: read from BMP, GIF or JPEG, written as JPEG.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// A decoded picture.
class Picture {
 public:
  /// Throws RunTimeError 481 that names `path` when `bytes` are no readable picture.
  static Picture Load(std::string_view bytes, std::string_view path);

  struct Size {
    int width = 0, height = 0;  // pixels
  };
  /// True when the header claims more pixels than are ever unpacked.
  static bool IsHuge(std::string_view bytes);
  /// The size of a picture that can be read. Throws as Load does.
  static Size Measure(std::string_view bytes, std::string_view path);

  /// `quality` from 1 to 100.
  std::string ToJpeg(int quality) const;

 private:
  struct Image;
  struct Destroy {
    void operator()(Image* image) const;
  };
  explicit Picture(std::unique_ptr<Image, Destroy> image);
  std::unique_ptr<Image, Destroy> image_;
};

}  // namespace quillon
