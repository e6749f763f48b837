#include "core/archive/ArchiveNames.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestComponent = 255;  // bytes, what common file systems hold
constexpr std::size_t kLongestName = 2048;      // bytes, leaves room for the folders above

bool IsDevice(std::string_view component) {
  std::string_view bare = component.substr(0, component.find('.'));
  bare.remove_prefix(std::min(bare.find_first_not_of(' '), bare.size()));
  bare = bare.substr(0, bare.find_last_not_of(' ') + 1);
  if (bare.size() < 3 || bare.size() > 4) return false;
  const std::string stem = UpperCase(bare);
  static constexpr std::array<std::string_view, 4> kDevices = {"CON", "PRN", "AUX", "NUL"};
  if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
  return stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) && stem[3] >= '1' &&
         stem[3] <= '9';
}

// Asked about each letter of each name.
constexpr std::array<bool, 256> kForbidden = [] {
  std::array<bool, 256> letters{};
  for (std::size_t c = 0; c < 0x20; ++c) letters[c] = true;
  for (const char c : {'\x7F', '<', '>', ':', '"', '|', '?', '*', '\\', '/'})
    letters[static_cast<unsigned char>(c)] = true;
  return letters;
}();

bool IsForbidden(char c) { return kForbidden[static_cast<unsigned char>(c)]; }

/// Closing blanks and dots fall away on the target.
std::string_view WithoutTail(std::string_view component) {
  return component.substr(0, component.find_last_not_of(" .") + 1);
}

/// Whether a component can stay as it is, as nearly all can.
bool IsPlain(std::string_view component) {
  return !component.empty() && component.size() <= kLongestComponent && component.back() != ' ' &&
         component.back() != '.' &&
         std::all_of(component.begin(), component.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80 && !IsForbidden(c); }) &&
         !IsDevice(component);
}

/// The end of a long name is kept: it tells what the file is.
std::string Shortened(const std::string& name) {
  const std::string_view end = std::string_view(name).substr(std::min(name.rfind('.'), name.size()));
  std::size_t room = end.size() < 16 ? kLongestComponent - end.size() : kLongestComponent;
  while (room > 0 && (static_cast<unsigned char>(name[room]) & 0xC0) == 0x80) --room;
  return name.substr(0, room) + std::string(room + end.size() <= kLongestComponent ? end : "");
}

const char* HarmInComponent(std::string_view component) {
  if (component.starts_with("..") && WithoutTail(component).empty())
    return "an entry's name leads out of the folder";
  return WithoutTail(component).empty() ? "an entry has no usable name" : nullptr;
}

/// Shift-JIS: the first of two bytes.
bool IsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::size_t CharacterLength(char first) {
  const auto byte = static_cast<unsigned char>(first);
  return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

}  // namespace

std::string UsableFileName(std::string_view name) {
  if (IsPlain(name)) return std::string(name);
  std::string usable = WithoutStandIns(name);
  const std::size_t kept = WithoutTail(usable).size();
  std::replace_if(usable.begin(), usable.end(), IsForbidden, '_');
  std::fill(usable.begin() + static_cast<std::ptrdiff_t>(kept), usable.end(), '_');
  if (IsDevice(usable)) usable.insert(std::min(usable.find('.'), usable.size()), 1, '_');
  return usable.size() > kLongestComponent ? Shortened(usable) : usable;
}

std::string NormalStoredName(std::string_view stored) {
  const std::string composed = Composed(stored);
  std::string_view rest = composed;
  if (rest.size() >= 2 && rest[1] == ':' && std::isalpha(static_cast<unsigned char>(rest[0])))
    rest.remove_prefix(2);
  std::string name;
  name.reserve(rest.size());
  while (!rest.empty()) {
    const std::size_t end = std::min(FirstSeparator(rest), rest.size());
    const std::string_view component = rest.substr(0, end);
    const bool closed = end < rest.size();
    rest.remove_prefix(closed ? end + 1 : end);
    if (component.empty() || component == ".") continue;
    // What is all blanks and dots is left for HarmIn to see.
    if (IsPlain(component) || HarmInComponent(component) != nullptr)
      name += component;
    else
      name += UsableFileName(component);
    if (closed) name += '\\';
  }
  return name;
}

std::string LegacyStoredName(std::string_view raw, std::string_view decoded, bool backslashSeparates) {
  std::string name;
  std::size_t at = 0;
  bool second = false;
  for (const char byte : raw) {
    const std::size_t length = CharacterLength(at < decoded.size() ? decoded[at] : ' ');
    const bool half = second && (byte == '|' || (byte == '\\' && !backslashSeparates));
    if (half || static_cast<unsigned char>(byte) < 0x20)
      name += '_';
    else
      name += decoded.substr(std::min(at, decoded.size()), length);
    second = !second && IsLeadByte(byte);
    at += length;
  }
  // A zero ends the bytes, not the name.
  return at < decoded.size() ? name + "_" + std::string(decoded.substr(at)) : name;
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

bool IsSystemsOwn(std::string_view normalName) {
  if (FileNameOf(normalName).starts_with("._")) return true;
  constexpr std::string_view kMacFolder = "__MACOSX\\";
  if (!Contains(normalName, "__")) return false;
  const std::string upper = UpperCase(normalName);
  const auto at = upper.find(kMacFolder);
  return at == 0 || (at != std::string::npos && upper[at - 1] == '\\');
}

bool IsUsableStem(std::string_view stem) {
  const std::string_view name = WithoutTail(stem);
  return !name.empty() && UsableFileName(name) == name;
}

}  // namespace quillon
