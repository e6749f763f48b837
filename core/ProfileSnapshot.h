// A profile file read once, for passes that ask it for thousands of values and write none.
#pragma once

#include <string>
#include <string_view>

#include "core/Files.h"
#include "core/host/ProfileText.h"

namespace quillon {

/// A file that can't be read is an empty one.
class ProfileSnapshot {
 public:
  ProfileSnapshot(Files& files, std::string_view path) : text_(BytesOf(files, path)) {}

  std::string Read(std::string_view section, std::string_view key, std::string_view defaultText) const {
    auto value = text_.Value(section, key);
    return value ? std::move(*value) : std::string(defaultText);
  }
  /// The names of all sections in order, each ended by a NUL.
  std::string SectionNames() const { return text_.SectionNames(); }

 private:
  static std::string BytesOf(Files& files, std::string_view path) {
    std::string bytes;
    files.Host().Read(path, bytes, kNoLimit);
    return bytes;
  }

  const ProfileText text_;
};

}  // namespace quillon
