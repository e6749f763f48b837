#include "core/host/PictureLibrary.h"

namespace quillon {

/// Linked into the program: nothing has to be fetched.
const PictureLibrary& Gd() {
  static const PictureLibrary library = {&gdImageCreateFromGifPtr,
                                         &gdImageCreateFromBmpPtr,
                                         &gdImageCreateFromJpegPtrEx,
                                         &gdImageCreateTrueColor,
                                         &gdImageDestroy,
                                         &gdImageFilledEllipse,
                                         &gdImageTrueColorToPalette,
                                         &gdImageJpegPtr,
                                         &gdImageGifPtr,
                                         &gdImageBmpPtr,
                                         &gdFree,
                                         &gdSetErrorMethod};
  return library;
}

}  // namespace quillon
