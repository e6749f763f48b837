#include <clocale>

#include "core/host/ArchiveLocale.h"

namespace quillon {
namespace {

locale_t Utf8() {
  static const locale_t utf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return utf8;
}

}  // namespace

ArchiveLocale::ArchiveLocale() {
  if (Utf8() != nullptr) before_ = reinterpret_cast<std::intptr_t>(::uselocale(Utf8()));
}

ArchiveLocale::~ArchiveLocale() {
  if (before_ != 0) ::uselocale(reinterpret_cast<locale_t>(before_));
}

}  // namespace quillon
