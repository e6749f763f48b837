#include <windows.h>

#include "core/host/Registry.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

HKEY RootKey(RegRoot root) { return root == RegRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CLASSES_ROOT; }

/// An open key; null when it is missing or denied.
class Key {
 public:
  Key(RegRoot root, std::string_view name, REGSAM access) {
    ::RegOpenKeyExW(RootKey(root), Widen(name).c_str(), 0, access, &key_);
  }
  ~Key() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

// The platform's results are nobody's concern: what can't be read is empty, what can't be written stays.
class WindowsRegistry final : public Registry {
 public:
  RegValue RegGetValue(RegRoot root, std::string_view key, std::string_view name) override {
    // Whoever may not write still reads what the installer wrote.
    const Key open(root, key, KEY_QUERY_VALUE);
    const std::wstring wanted = Widen(name);
    DWORD type = 0, size = 0;
    if (open.Get() == nullptr ||
        ::RegQueryValueExW(open.Get(), wanted.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
      return {};
    if (type == REG_SZ) return Text(open.Get(), wanted, size);
    DWORD number = 0;
    size = sizeof number;
    if (type != REG_DWORD || ::RegQueryValueExW(open.Get(), wanted.c_str(), nullptr, &type,
                                                reinterpret_cast<BYTE*>(&number), &size) != ERROR_SUCCESS)
      return {};
    return std::uint32_t{number};
  }

  void RegSetValue(RegRoot root, std::string_view key, std::string_view name,
                   const RegValue& value) override {
    const Key open(root, key, KEY_SET_VALUE);
    if (open.Get() == nullptr) return;
    if (const auto* text = std::get_if<std::string>(&value)) {
      const std::wstring wide = Widen(*text);
      const auto size = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
      ::RegSetValueExW(open.Get(), Widen(name).c_str(), 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(wide.c_str()), size);
    } else if (const auto* number = std::get_if<std::uint32_t>(&value)) {
      ::RegSetValueExW(open.Get(), Widen(name).c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(number),
                       sizeof *number);
    }
  }

  void CreateKey(RegRoot root, std::string_view key) override {
    HKEY made = nullptr;
    const REGSAM access = KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY;
    if (::RegCreateKeyExW(RootKey(root), Widen(key).c_str(), 0, nullptr, 0, access, nullptr, &made,
                          nullptr) == ERROR_SUCCESS)
      ::RegCloseKey(made);
  }

 private:
  static RegValue Text(HKEY key, const std::wstring& name, DWORD size) {
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    DWORD type = 0;
    if (::RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size) !=
        ERROR_SUCCESS)
      return {};
    text.resize(size / sizeof(wchar_t));
    return Narrow(text);
  }
};

}  // namespace

std::unique_ptr<Registry> MakeRegistry(ProfileFunctions&, std::string) {
  return std::make_unique<WindowsRegistry>();
}

}  // namespace quillon
