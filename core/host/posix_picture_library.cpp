#include <dlfcn.h>

#include "core/RunTimeError.h"
#include "core/host/PictureLibrary.h"

namespace quillon {
namespace {

constexpr const char* kName = "libgd.so.3";

template <typename Function>
void Fetch(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  if (function == nullptr)
    throw RunTimeError(ErrorNumber::FileNotFound, kName, std::string("it has no ") + name);
}

PictureLibrary Open() {
  void* const library = ::dlopen(kName, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) throw RunTimeError(ErrorNumber::FileNotFound, kName, ::dlerror());
  PictureLibrary gd;
  Fetch(library, "gdImageCreateFromGifPtr", gd.CreateFromGifPtr);
  Fetch(library, "gdImageCreateFromBmpPtr", gd.CreateFromBmpPtr);
  Fetch(library, "gdImageCreateFromJpegPtrEx", gd.CreateFromJpegPtrEx);
  Fetch(library, "gdImageCreateTrueColor", gd.CreateTrueColor);
  Fetch(library, "gdImageDestroy", gd.Destroy);
  Fetch(library, "gdImageFilledEllipse", gd.FilledEllipse);
  Fetch(library, "gdImageTrueColorToPalette", gd.TrueColorToPalette);
  Fetch(library, "gdImageJpegPtr", gd.JpegPtr);
  Fetch(library, "gdImageGifPtr", gd.GifPtr);
  Fetch(library, "gdImageBmpPtr", gd.BmpPtr);
  Fetch(library, "gdFree", gd.Free);
  Fetch(library, "gdSetErrorMethod", gd.SetErrorMethod);
  return gd;
}

}  // namespace

const PictureLibrary& Gd() {
  static const PictureLibrary library = Open();
  return library;
}

}  // namespace quillon
