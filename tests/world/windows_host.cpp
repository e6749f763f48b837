#include <windows.h>

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

#include "core/host/windows_text.h"
#include "tests/world/Host.h"

namespace quillon {
namespace {

// The class of shortcuts, which the system makes.
constexpr const wchar_t* kShortcuts = L"CLSID\\{00021401-0000-0000-C000-000000000046}";
constexpr const wchar_t* kFolders =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

void Check(LSTATUS status, const char* what) {
  if (status != ERROR_SUCCESS) throw std::runtime_error(std::string("can't ") + what);
}

void MakeLink(const fs::path& target, const fs::path& link, DWORD kind) {
  constexpr DWORD kByAnyUser = 2;  // where the platform knows of that
  if (::CreateSymbolicLinkW(link.c_str(), target.c_str(), kind | kByAnyUser) == 0)
    throw std::runtime_error("can't make a link");
}

/// A place in the registry that stands for one of its roots.
struct Replaced {
  HKEY root;
  const wchar_t* name;
  HKEY key = nullptr;
};

using Roots = std::array<Replaced, 3>;

const Roots kRoots = {
    {{HKEY_LOCAL_MACHINE, L"machine"}, {HKEY_CLASSES_ROOT, L"classes"}, {HKEY_CURRENT_USER, L"user"}}};

/// What the roots stand for now, the last one last.
std::vector<Roots>& Nested() {
  static std::vector<Roots> all;
  return all;
}

void Apply(const Roots& roots) {
  for (const auto& replaced : roots)
    Check(::RegOverridePredefKey(replaced.root, replaced.key), "replace a root");
}

void SetText(HKEY key, const wchar_t* name, const std::wstring& text) {
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  Check(::RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), size),
        "write a value");
}

}  // namespace

bool UnderWine() {
  static const bool wine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return wine;
}

bool HasLinks() {
  static const bool has = [] {
    if (UnderWine()) return false;
    const fs::path link =
        fs::temp_directory_path() / ("quillon-link-" + std::to_string(::GetCurrentProcessId()));
    try {
      MakeFileLink("nowhere", link);
    } catch (const std::runtime_error&) {
      return false;  // the user has no right to
    }
    return ::DeleteFileW(link.c_str()) != 0;
  }();
  return has;
}

void MakeFolderLink(const fs::path& target, const fs::path& link) {
  MakeLink(target, link, SYMBOLIC_LINK_FLAG_DIRECTORY);
}
void MakeFileLink(const fs::path& target, const fs::path& link) { MakeLink(target, link, 0); }

bool MarksBindEverybody() { return !UnderWine(); }
bool HasDeviceNames() { return true; }
bool HasPermissions() { return false; }
std::string FullDisk() { return "B:\\new"; }
int SweepStep() { return 7; }

WithoutPrivileges::WithoutPrivileges(const fs::path&) : changed_(false) {}
WithoutPrivileges::~WithoutPrivileges() = default;

struct OwnDesktop::Before {
  std::wstring place;
};

OwnDesktop::OwnDesktop(fs::path home, fs::path app)
    : home_(std::move(home)), app_(std::move(app)), before_(std::make_unique<Before>()) {
  // Wine would make links of them to the host's home, and follow these when it deletes.
  for (const auto& folder : {Desktop(), Programs()}) fs::create_directories(folder);
  before_->place = L"Software\\quillon-test-" + std::to_wstring(::GetCurrentProcessId()) + L"-" +
                   std::to_wstring(Nested().size());
  Apply(kRoots);  // the places lie below the user's own root
  Roots roots = kRoots;
  for (auto& replaced : roots)
    Check(::RegCreateKeyW(HKEY_CURRENT_USER, (before_->place + L"\\" + replaced.name).c_str(), &replaced.key),
          "make a key");
  HKEY shortcuts = nullptr, copy = nullptr;
  Check(::RegOpenKeyW(HKEY_CLASSES_ROOT, kShortcuts, &shortcuts), "read a class");
  Check(::RegCreateKeyW(roots[1].key, kShortcuts, &copy), "make a key");
  Check(::RegCopyTreeW(shortcuts, nullptr, copy), "copy a class");
  for (const HKEY key : {shortcuts, copy}) ::RegCloseKey(key);
  Nested().push_back(roots);
  Apply(roots);
  HKEY folders = nullptr;
  Check(::RegCreateKeyW(HKEY_CURRENT_USER, kFolders, &folders), "make a key");
  SetText(folders, L"Desktop", Desktop().wstring());
  SetText(folders, L"Programs", Programs().wstring());
  ::RegCloseKey(folders);
}

OwnDesktop::~OwnDesktop() {
  for (const auto& replaced : kRoots) ::RegOverridePredefKey(replaced.root, nullptr);
  for (const auto& replaced : Nested().back()) ::RegCloseKey(replaced.key);
  Nested().pop_back();
  ::RegDeleteTreeW(HKEY_CURRENT_USER, before_->place.c_str());
  ::RegDeleteKeyW(HKEY_CURRENT_USER, before_->place.c_str());
  if (!Nested().empty())
    for (const auto& replaced : Nested().back()) ::RegOverridePredefKey(replaced.root, replaced.key);
}

fs::path OwnDesktop::Desktop() const { return home_ / "Desktop"; }
fs::path OwnDesktop::Programs() const { return home_ / "Programs"; }

std::string OwnDesktop::RegistryValue(std::string_view key, std::string_view name) const {
  std::array<wchar_t, 1024> text = {};
  DWORD type = 0, size = sizeof text - sizeof(wchar_t);
  if (::RegGetValueW(HKEY_LOCAL_MACHINE, Widen(key).c_str(), Widen(name).c_str(),
                     RRF_RT_REG_SZ | RRF_RT_REG_DWORD, &type, text.data(), &size) != ERROR_SUCCESS)
    return {};
  if (type == REG_DWORD) return "dword:" + std::to_string(*reinterpret_cast<const DWORD*>(text.data()));
  return "string:" + Narrow(text.data());
}

void OwnDesktop::ClearRegistry() const { ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE"); }

struct WithoutThreads::Before {};
bool WithoutThreads::Possible() { return false; }
WithoutThreads::WithoutThreads() = default;
WithoutThreads::~WithoutThreads() = default;

}  // namespace quillon
