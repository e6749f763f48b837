#include <charconv>
#include <utility>

#include "core/host/ProfileFunctions.h"
#include "core/host/Registry.h"

namespace quillon {
namespace {

constexpr std::size_t kBuffer = 4096;
constexpr std::string_view kString = "string:", kDword = "dword:", kAbsent = "absent:";

std::string SectionOf(RegRoot root, std::string_view key) {
  return (root == RegRoot::LocalMachine ? "HKEY_LOCAL_MACHINE\\" : "HKEY_CLASSES_ROOT\\") + std::string(key);
}

/// Keys are sections of a profile file, values its keys, each with its type in front.
class ProfileRegistry : public Registry {
 public:
  ProfileRegistry(ProfileFunctions& profiles, std::string file)
      : profiles_(profiles), file_(std::move(file)) {}

  RegValue RegGetValue(RegRoot root, std::string_view key, std::string_view name) override {
    const std::string text = profiles_.GetString(SectionOf(root, key), KeyOf(name), kAbsent, kBuffer, file_);
    if (text.starts_with(kString)) return text.substr(kString.size()) + '\0';
    if (!text.starts_with(kDword)) return {};
    std::uint32_t number = 0;
    std::from_chars(text.data() + kDword.size(), text.data() + text.size(), number);
    return number;
  }

  void RegSetValue(RegRoot root, std::string_view key, std::string_view name,
                   const RegValue& value) override {
    if (!KeyExists(SectionOf(root, key))) return;
    if (const auto* text = std::get_if<std::string>(&value))
      Write(root, key, name, std::string(kString) + *text);
    else if (const auto* number = std::get_if<std::uint32_t>(&value))
      Write(root, key, name, std::string(kDword) + std::to_string(*number));
  }

  void CreateKey(RegRoot root, std::string_view key) override {
    const std::string section = SectionOf(root, key);
    if (KeyExists(section)) return;
    // A section stays when its last key goes.
    profiles_.WriteString(section, "@", "", file_);
    profiles_.WriteString(section, "@", {}, file_);
  }

 private:
  static std::string_view KeyOf(std::string_view name) { return name.empty() ? "@" : name; }

  bool KeyExists(const std::string& section) {
    const std::string wanted = section + '\0';
    const std::string names = '\0' + profiles_.GetString({}, {}, "", 1 << 20, file_);
    return names.find('\0' + wanted) != names.npos;
  }

  void Write(RegRoot root, std::string_view key, std::string_view name, const std::string& text) {
    profiles_.WriteString(SectionOf(root, key), KeyOf(name), text, file_);
  }

  ProfileFunctions& profiles_;
  const std::string file_;
};

}  // namespace

std::unique_ptr<Registry> MakeRegistry(ProfileFunctions& profiles, std::string standInFile) {
  return std::make_unique<ProfileRegistry>(profiles, std::move(standInFile));
}

}  // namespace quillon
