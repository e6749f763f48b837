// What the host tells of one file, as the target platform would put it.
#pragma once

#include <sys/stat.h>

#include <string>

#include "core/host/FileSystem.h"

namespace quillon {

/// The mode bits decide, not what the user may do: to an administrator every file would be writable.
inline bool IsReadOnly(const struct stat& file) { return (file.st_mode & S_IWUSR) == 0; }

/// In nanoseconds since 1970.
inline std::int64_t ModifiedOf(const struct stat& file) {
  return std::int64_t{file.st_mtim.tv_sec} * 1'000'000'000 + file.st_mtim.tv_nsec;
}

/// Attributes and kind of what stands at `host`; 0 or an errno. A link has no read-only mark: to change the
/// mode of what it points to would reach out of the folder that is being worked on.
int Inspect(const std::string& host, FoundFile& file);

/// Follows links; one that leads nowhere stands for itself. 0 or an errno.
int Status(const std::string& host, struct stat& found);

/// Sets the read-only mark, or takes it away; links are left alone. 0 or an errno.
int SetReadOnly(const std::string& host, bool readOnly);

/// Renames only to a name that is free; 0 or an errno.
int RenameToFree(const std::string& from, const std::string& to);

}  // namespace quillon
