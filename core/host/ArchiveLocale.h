// The names that a library reads out of archives, as UTF-8.
#pragma once

#include <cstdint>

namespace quillon {

/// While one lives, this thread's text is UTF-8 for libraries that ask the host's locale; the program's own
/// is not touched.
class ArchiveLocale {
 public:
  ArchiveLocale();
  ~ArchiveLocale();
  ArchiveLocale(const ArchiveLocale&) = delete;
  ArchiveLocale& operator=(const ArchiveLocale&) = delete;

 private:
  std::intptr_t before_ = 0;
};

}  // namespace quillon
