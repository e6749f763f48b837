#include "core/archive/ArchiveNames.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestComponent = 255;  // bytes, what common file systems hold
constexpr std::size_t kLongestName = 2048;      // bytes, leaves room for the folders above

bool IsDevice(std::string_view component) {
  const std::string stem = UpperCase(Trim(component.substr(0, component.find('.'))));
  static constexpr std::array<std::string_view, 4> kDevices = {"CON", "PRN", "AUX", "NUL"};
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  return stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) && stem[3] >= '1' &&
         stem[3] <= '9';
}

/// Closing blanks and dots fall away on the target.
std::string_view WithoutTail(std::string_view component) {
  return component.substr(0, component.find_last_not_of(" .") + 1);
}

const char* HarmInComponent(std::string_view component) {
  if (component.starts_with("..") && WithoutTail(component).empty())
    return "an entry's name leads out of its folder";
  if (WithoutTail(component).empty()) return "an entry's name is blank";
  if (component.size() > kLongestComponent) return "an entry's name is too long";
  const auto forbidden = [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == '<' || c == '>' || c == ':' || c == '"' || c == '|' ||
           c == '?' || c == '*';
  };
  if (std::any_of(component.begin(), component.end(), forbidden))
    return "an entry's name has characters that no file name may have";
  if (IsDevice(component)) return "an entry has the name of a device";
  return nullptr;
}

}  // namespace

std::string NormalStoredName(std::string_view stored) {
  if (stored.size() >= 2 && stored[1] == ':' && std::isalpha(static_cast<unsigned char>(stored[0])))
    stored.remove_prefix(2);
  std::string name;
  name.reserve(stored.size());
  while (!stored.empty()) {
    const auto end = std::min(stored.find_first_of("/\\"), stored.size());
    const std::string_view component = stored.substr(0, end);
    const bool closed = end < stored.size();
    stored.remove_prefix(closed ? end + 1 : end);
    if (component.empty() || component == ".") continue;
    // What is all blanks and dots is left for HarmIn to see.
    name += WithoutTail(component).empty() ? component : WithoutTail(component);
    if (closed) name += '\\';
  }
  return name;
}

const char* HarmIn(std::string_view normalName) {
  if (normalName.size() > kLongestName) return "an entry's name is too long";
  while (!normalName.empty()) {
    const auto end = normalName.find('\\');
    if (const char* harm = HarmInComponent(normalName.substr(0, end))) return harm;
    if (end == normalName.npos) break;
    normalName.remove_prefix(end + 1);
  }
  return nullptr;
}

bool IsUsableStem(std::string_view stem) {
  return !stem.empty() && WithoutTail(stem) == stem && HarmIn(stem) == nullptr;
}

}  // namespace quillon
