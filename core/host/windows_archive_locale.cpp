#include "core/host/ArchiveLocale.h"

namespace quillon {

// Windows' own text is UTF-16, and the program says of itself that its bytes are UTF-8.
ArchiveLocale::ArchiveLocale() = default;
ArchiveLocale::~ArchiveLocale() = default;

}  // namespace quillon
