// What tests do to the disk, and see on it, by host path or by the system's text.
#pragma once

#include <string>
#include <string_view>

#include "tests/world/TestFolder.h"

namespace quillon {

/// `path` and `folder` name things in any case; a missing thing gets the text's spelling.
class Disk {
 public:
  static std::string HostPath(std::string_view path);
  static bool Exists(std::string_view path);
  static std::string ReadBytes(std::string_view path);
  /// Replaces the file; makes its folders.
  static void Write(std::string_view path, std::string_view bytes);
  static void Remove(std::string_view path);
  /// Names in a folder, sorted, in lower case; folders end in "\".
  static Strings Names(std::string_view folder);
  /// All files below a folder: lower-case relative path with "\", and bytes.
  static NamedTexts Tree(std::string_view folder);
  /// All below a folder as it stands: files with bytes and read-only mark, folders and links, by their
  /// spelling.
  static NamedTexts State(std::string_view folder);
  /// What is not the same in two states, with what the second has.
  static Strings Changed(const NamedTexts& before, NamedTexts after);
  /// The entries of a zip: lower-case stored name with "\", and bytes.
  static NamedTexts Unzipped(std::string_view path);
};

}  // namespace quillon
