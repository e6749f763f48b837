// Copying, moving and removing on the platform, by paths in the form of its calls.
#pragma once

#include <functional>
#include <string>

#include "core/host/FileSystem.h"

namespace quillon {

/// Copies a file with its time and attributes; a link is followed. `idle` is called meanwhile and may throw.
FileCode CopyBytes(const std::wstring& from, const std::wstring& to, const std::function<void()>& idle);

/// Gives a file or folder another name, which must be free. A file may come to lie on another disk.
FileCode MoveNamed(const std::wstring& from, const std::wstring& to, bool folder,
                   const std::function<void()>& idle);

/// Removes a folder in which nothing is, or a link to a folder, read-only or not.
FileCode RemoveEmptyFolder(const std::wstring& folder);

}  // namespace quillon
