// The settings files of the system: sections, keys, values, and defaults that come back unchanged.
#pragma once

#include <string>
#include <string_view>

#include "core/host/ProfileFunctions.h"

namespace quillon {

/// The four INI operations. None of them ever reports a failure: a file that can't be read gives the default,
/// one that can't be written stays as it is.
class ProfileStore {
 public:
  explicit ProfileStore(ProfileFunctions& platform) : platform_(platform) {}

  /// The value, cut to 2047 characters; `defaultText` when file, section or key are missing; empty for an
  /// empty value.
  std::string ReadIni(std::string_view section, std::string_view key, std::string_view defaultText,
                      std::string_view file) {
    return platform_.GetString(section, key, defaultText, 2048, file);
  }
  /// Makes file, section or key when missing.
  void WriteIni(std::string_view section, std::string_view key, std::string_view value,
                std::string_view file) {
    platform_.WriteString(section, key, value, file);
  }
  void DeleteIniKey(std::string_view section, std::string_view key, std::string_view file) {
    platform_.WriteString(section, key, {}, file);
  }
  /// For passes that write many values; the caller holds it as long.
  ProfileFunctions::Batch Batch() { return ProfileFunctions::Batch(platform_); }
  void DeleteIniSection(std::string_view section, std::string_view file) {
    platform_.WriteString(section, {}, {}, file);
  }

 private:
  ProfileFunctions& platform_;
};

}  // namespace quillon
