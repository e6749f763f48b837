// Path texts of the system as the platform's calls take them.
#pragma once

#include <string>
#include <string_view>

#include "core/host/PathText.h"

namespace quillon {

/// A path text, absolute and normal.
struct WindowsPath {
  std::wstring root;  // with its closing backslash: "C:\", "\\server\share\"
  PathText text;      // below the root

  /// The whole path in the form that no length and no name of a device stands in the way of: with "\\?\" in
  /// front. Without its last name it is the path of the folder.
  std::wstring Call(bool withName = true) const;
  /// The whole path as people write it.
  std::wstring Text() const;
  /// The same for the shell and for libraries: in the form above where it is too long for them.
  std::wstring Plain() const;
  /// The last name; empty for the root.
  std::string Name() const { return text.names.empty() ? std::string() : text.names.back(); }
  bool Named() const { return text.code == FileCode::Ok; }
};

/// A relative path starts in the current folder, one without a drive on the current one.
WindowsPath TakeApart(std::string_view path, bool wildcards = false);

/// `hostPath`, which may have any form, for a call.
std::wstring CallPath(std::string_view hostPath);

}  // namespace quillon
