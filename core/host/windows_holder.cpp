#include <windows.h>
// After the platform's own types.
#include <restartmanager.h>

#include <algorithm>
#include <vector>

#include "core/host/Holder.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_paths.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

constexpr std::size_t kMostAsked = 500,
                      kMostTries = 5;  // of a folder; programs come and go while they are listed

/// The platform's knowledge of who uses which file. Its library is loaded when it is needed: few runs meet a
/// file that is held.
class UseList {
 public:
  UseList() {
    const HMODULE library = ::LoadLibraryExW(L"rstrtmgr.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr || !Take(library, "RmStartSession", start_) ||
        !Take(library, "RmRegisterResources", addFiles_) || !Take(library, "RmGetList", list_) ||
        !Take(library, "RmEndSession", end_))
      return;
    WCHAR key[CCH_RM_SESSION_KEY + 1] = {};
    open_ = start_(&session_, 0, key) == ERROR_SUCCESS;
  }
  ~UseList() {
    if (open_) end_(session_);
  }
  UseList(const UseList&) = delete;
  UseList& operator=(const UseList&) = delete;

  std::vector<RM_PROCESS_INFO> Of(const std::vector<std::wstring>& files) {
    std::vector<LPCWSTR> names;
    for (const auto& file : files) names.push_back(file.c_str());
    if (!open_ || addFiles_(session_, static_cast<UINT>(names.size()), names.data(), 0, nullptr, 0,
                            nullptr) != ERROR_SUCCESS)
      return {};
    std::vector<RM_PROCESS_INFO> users(8);
    for (std::size_t tries = 0; tries < kMostTries; ++tries) {
      UINT needed = 0, count = static_cast<UINT>(users.size());
      DWORD reasons = 0;
      const DWORD error = list_(session_, &needed, &count, users.data(), &reasons);
      users.resize(error == ERROR_SUCCESS ? count : error == ERROR_MORE_DATA ? needed + 1 : 0);
      if (error != ERROR_MORE_DATA) return users;
    }
    return {};
  }

 private:
  template <class Function>
  static bool Take(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    return function != nullptr;
  }

  decltype(&::RmStartSession) start_ = nullptr;
  decltype(&::RmRegisterResources) addFiles_ = nullptr;
  decltype(&::RmGetList) list_ = nullptr;
  decltype(&::RmEndSession) end_ = nullptr;
  DWORD session_ = 0;
  bool open_ = false;
};

void AddFilesBelow(const WindowsPath& folder, std::vector<std::wstring>& files) {
  ListFolder(folder.Call(), [&](FoundFile&& file) {
    if (file.dots()) return true;
    WindowsPath below = folder;
    below.text.names.push_back(std::move(file.name));
    if (!file.folder())
      files.push_back(below.Plain());
    else if (!file.link)
      AddFilesBelow(below, files);
    return files.size() < kMostAsked;
  });
}

}  // namespace

std::string HolderOf(std::string_view path) {
  const WindowsPath named = TakeApart(path);
  if (!named.Named()) return {};
  std::vector<std::wstring> files;
  if (Holds(::GetFileAttributesW(named.Call().c_str()), kFolder))
    AddFilesBelow(named, files);
  else
    files.push_back(named.Plain());
  if (files.empty()) return {};
  std::vector<std::string> names;
  for (const auto& user : UseList().Of(files)) {
    std::string name = Narrow(user.strAppName);
    if (user.Process.dwProcessId == ::GetCurrentProcessId() || name.empty() ||
        std::find(names.begin(), names.end(), name) != names.end())
      continue;
    names.push_back(std::move(name));
  }
  std::string all;
  for (const auto& name : names) all += (all.empty() ? "" : " and ") + name;
  return all;
}

}  // namespace quillon
