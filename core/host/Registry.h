// The class of settings that the platform keeps beside the files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace quillon {

class ProfileFunctions;

enum class RegRoot { LocalMachine, ClassesRoot };

/// Empty, a text, or a double word. A text that was read keeps its closing NUL.
using RegValue = std::variant<std::monostate, std::string, std::uint32_t>;

class Registry {
 public:
  virtual ~Registry() = default;

  /// Empty when key or value are missing, or the value is of another type. `name` empty is the key's default
  /// value.
  virtual RegValue RegGetValue(RegRoot root, std::string_view key, std::string_view name) = 0;
  /// Does nothing when the key is missing.
  virtual void RegSetValue(RegRoot root, std::string_view key, std::string_view name,
                           const RegValue& value) = 0;
  /// Makes a key with its parents; an existing one is left alone.
  virtual void CreateKey(RegRoot root, std::string_view key) = 0;

  /// The value as text without its closing NUL; empty when there is none.
  std::string RegGetText(RegRoot root, std::string_view key, std::string_view name) {
    const RegValue value = RegGetValue(root, key, name);
    const auto* text = std::get_if<std::string>(&value);
    return text ? text->substr(0, text->find('\0')) : std::string();
  }
};

/// The registry of this machine; where the platform has none, a profile file at `standInFile`. `profiles`
/// outlives it.
std::unique_ptr<Registry> MakeRegistry(ProfileFunctions& profiles, std::string standInFile);

inline constexpr std::string_view kLarkmoorKey = "SOFTWARE\\Ostrand\\Larkmoor";
inline constexpr std::string_view kQuillonKey = "SOFTWARE\\Ostrand\\Larkmoor\\Quillon";

}  // namespace quillon
