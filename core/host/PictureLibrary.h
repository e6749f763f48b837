// The library that reads and writes pictures, fetched when the first picture comes: it drags in half a
// hundred others, and few runs need it.
#pragma once

#include <gd.h>

namespace quillon {

/// Functions of the library by their names, without "gdImage" or "gd" in front.
struct PictureLibrary {
  decltype(&::gdImageCreateFromGifPtr) CreateFromGifPtr;
  decltype(&::gdImageCreateFromBmpPtr) CreateFromBmpPtr;
  decltype(&::gdImageCreateFromJpegPtrEx) CreateFromJpegPtrEx;
  decltype(&::gdImageCreateTrueColor) CreateTrueColor;
  decltype(&::gdImageDestroy) Destroy;
  decltype(&::gdImageFilledEllipse) FilledEllipse;
  decltype(&::gdImageTrueColorToPalette) TrueColorToPalette;
  decltype(&::gdImageJpegPtr) JpegPtr;
  decltype(&::gdImageGifPtr) GifPtr;
  decltype(&::gdImageBmpPtr) BmpPtr;
  decltype(&::gdFree) Free;
  decltype(&::gdSetErrorMethod) SetErrorMethod;
};

/// Raises error 53 when the machine does not have it.
const PictureLibrary& Gd();

}  // namespace quillon
