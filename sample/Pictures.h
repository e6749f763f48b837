// Landscapes with a railway, drawn for the routes' pictures.
#pragma once

#include <string>

namespace quillon {

enum class PictureFormat { Jpeg, Gif, Bmp };

/// A landscape in one of the palettes (counted from 0, any number will do), its hills laid out by `name`. The
/// bytes of a picture file.
std::string LandscapePicture(const std::string& name, int palette, int width, int height,
                             PictureFormat format);

}  // namespace quillon
