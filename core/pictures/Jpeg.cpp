#include <turbojpeg.h>

#include <memory>

#include "core/RunTimeError.h"
#include "core/pictures/Decoders.h"

namespace quillon {
namespace {

struct Destroy {
  void operator()(void* handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, Destroy>;

const unsigned char* Data(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

struct Header {
  Picture::Size size;
  int sampling = -1, colours = -1;
};

/// The library's own reading of it, so that what is claimed is what will be unpacked.
Header ReadHeader(tjhandle handle, std::string_view bytes) {
  Header header;
  auto& [size, sampling, colours] = header;
  // It also fails for what the decoder can do, such as rare samplings: what it has found out counts.
  tjDecompressHeader3(handle, Data(bytes), bytes.size(), &size.width, &size.height, &sampling, &colours);
  return colours < 0 ? Header{} : header;
}

bool IsCmyk(const Header& header) { return header.colours == TJCS_CMYK || header.colours == TJCS_YCCK; }

/// Adobe's programs store how much light passes, not how much ink there is.
bool IsInverted(const Header& header, std::string_view bytes) {
  using namespace std::string_view_literals;
  constexpr std::string_view kAdobe = "\xFF\xEE\0\16Adobe"sv;
  return header.colours == TJCS_YCCK || bytes.find(kAdobe) != std::string_view::npos;
}

void FromCmyk(Picture& picture, bool inverted) {
  const int flip = inverted ? 0 : 255;
  for (Pixel& pixel : picture.pixels()) {
    const int black = pixel.alpha ^ flip;
    const auto mix = [&](int ink) { return static_cast<std::uint8_t>((ink ^ flip) * black / 255); };
    pixel = {mix(pixel.red), mix(pixel.green), mix(pixel.blue)};
  }
}

const char* Reason(tjhandle handle) {
  const std::string_view told = tjGetErrorStr2(handle);
  return told.find("precision") == std::string_view::npos ? "it can't be read as a JPEG"
                                                          : "it has more than 8 bits a colour";
}

}  // namespace

Claim ClaimOfJpeg(std::string_view bytes) {
  const Handle handle(tjInitDecompress());
  const Header header = ReadHeader(handle.get(), bytes);
  // Files of several scans keep all coefficients, of two bytes each, until the last one has come. The two
  // lesser colours may have fewer of them.
  const int full = header.colours == TJCS_GRAY ? 1 : IsCmyk(header) ? 4 : 3;
  int quarters = 4 * full;
  if (header.sampling == TJSAMP_420 || header.sampling == TJSAMP_411) quarters -= 6;
  if (header.sampling == TJSAMP_422 || header.sampling == TJSAMP_440) quarters -= 4;
  return {header.size, std::int64_t{header.size.width} * header.size.height * quarters / 2};
}

Picture DecodeJpeg(const PictureFile& file) {
  const Handle handle(tjInitDecompress());
  const Header header = ReadHeader(handle.get(), file.bytes);
  if (header.size.width < 1 || header.size.height < 1) file.Refuse(Reason(handle.get()));
  Picture picture(header.size);
  const int format = IsCmyk(header) ? TJPF_CMYK : TJPF_RGBA;
  const int result = tjDecompress2(handle.get(), Data(file.bytes), file.bytes.size(),
                                   reinterpret_cast<unsigned char*>(picture.pixels().data()),
                                   header.size.width, 0, header.size.height, format, TJFLAG_LIMITSCANS);
  // Where data are missing or damaged, the library fills in.
  if (result != 0 && tjGetErrorCode(handle.get()) != TJERR_WARNING) file.Refuse(Reason(handle.get()));
  if (IsCmyk(header)) FromCmyk(picture, IsInverted(header, file.bytes));
  return picture;
}

std::string Picture::ToJpeg(int quality) const {
  const Handle handle(tjInitCompress());
  unsigned char* data = nullptr;
  unsigned long size = 0;
  const int result = tjCompress2(handle.get(), reinterpret_cast<const unsigned char*>(pixels_.data()),
                                 size_.width, 0, size_.height, TJPF_RGBX, &data, &size,
                                 quality < 90 ? TJSAMP_420 : TJSAMP_444, quality, TJFLAG_ACCURATEDCT);
  const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(data, tjFree);
  if (result != 0) throw RunTimeError(ErrorNumber::InvalidPicture, {}, "it is too large for a JPEG");
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace quillon
