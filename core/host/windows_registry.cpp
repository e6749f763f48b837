#include <windows.h>

#include "core/host/Registry.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

// Every key has two places: the machine's, and the user's own. The machine's is the one that is meant; an
// ordinary user may not make keys there, or not write to them, and gets the same key among the user's own.
// One that is there stands before the machine's, as the platform itself has it with classes.

HKEY MachineRoot(RegRoot root) {
  return root == RegRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CLASSES_ROOT;
}

std::wstring InUsersOwn(RegRoot root, const std::wstring& key) {
  return root == RegRoot::LocalMachine ? key : L"Software\\Classes\\" + key;
}

/// An open key; null when it is missing or denied.
class Key {
 public:
  Key() = default;
  ~Key() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  LSTATUS Open(HKEY root, const std::wstring& name, REGSAM access) {
    return ::RegOpenKeyExW(root, name.c_str(), 0, access, &key_);
  }
  LSTATUS Make(HKEY root, const std::wstring& name) {
    const REGSAM access = KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY;
    return ::RegCreateKeyExW(root, name.c_str(), 0, nullptr, 0, access, nullptr, &key_, nullptr);
  }
  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

bool Exists(HKEY root, const std::wstring& key) {
  return Key().Open(root, key, KEY_QUERY_VALUE) == ERROR_SUCCESS;
}

bool Write(HKEY key, const std::wstring& name, const RegValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    const std::wstring wide = Widen(*text);
    const auto size = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
    return ::RegSetValueExW(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                            size) == ERROR_SUCCESS;
  }
  const auto* number = std::get_if<std::uint32_t>(&value);
  return number == nullptr ||
         ::RegSetValueExW(key, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(number),
                          sizeof *number) == ERROR_SUCCESS;
}

// The platform's results are nobody's concern: what can't be read is empty, what can't be written stays.
class WindowsRegistry final : public Registry {
 public:
  RegValue RegGetValue(RegRoot root, std::string_view key, std::string_view name) override {
    const std::wstring path = Widen(key), wanted = Widen(name);
    const RegValue own = Read(HKEY_CURRENT_USER, InUsersOwn(root, path), wanted);
    return own == RegValue() ? Read(MachineRoot(root), path, wanted) : own;
  }

  void RegSetValue(RegRoot root, std::string_view key, std::string_view name,
                   const RegValue& value) override {
    const std::wstring path = Widen(key), own = InUsersOwn(root, path), wanted = Widen(name);
    if (Key open; open.Open(HKEY_CURRENT_USER, own, KEY_SET_VALUE) == ERROR_SUCCESS) {
      Write(open.Get(), wanted, value);
      return;
    }
    Key machine;
    const LSTATUS status = machine.Open(MachineRoot(root), path, KEY_SET_VALUE);
    if (status == ERROR_FILE_NOT_FOUND || (status == ERROR_SUCCESS && Write(machine.Get(), wanted, value)))
      return;
    if (Key made; made.Make(HKEY_CURRENT_USER, own) == ERROR_SUCCESS) Write(made.Get(), wanted, value);
  }

  void CreateKey(RegRoot root, std::string_view key) override {
    const std::wstring path = Widen(key);
    if (Exists(HKEY_CURRENT_USER, InUsersOwn(root, path)) || Exists(MachineRoot(root), path)) return;
    if (Key().Make(MachineRoot(root), path) != ERROR_SUCCESS)
      Key().Make(HKEY_CURRENT_USER, InUsersOwn(root, path));
  }

 private:
  static RegValue Read(HKEY root, const std::wstring& key, const std::wstring& name) {
    // Whoever may not write still reads what the installer wrote.
    Key open;
    DWORD type = 0, size = 0;
    if (open.Open(root, key, KEY_QUERY_VALUE) != ERROR_SUCCESS ||
        ::RegQueryValueExW(open.Get(), name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
      return {};
    if (type == REG_SZ) return Text(open.Get(), name, size);
    DWORD number = 0;
    size = sizeof number;
    if (type != REG_DWORD || ::RegQueryValueExW(open.Get(), name.c_str(), nullptr, &type,
                                                reinterpret_cast<BYTE*>(&number), &size) != ERROR_SUCCESS)
      return {};
    return std::uint32_t{number};
  }

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
