#include <shlobj.h>
#include <windows.h>

#include <algorithm>

#include "core/host/Desktop.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_paths.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestEvent = 200;  // characters

/// The platform's objects, for as long as one lives. A thread that has them in another way keeps it.
class Objects {
 public:
  Objects() : began_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
  ~Objects() {
    if (began_) ::CoUninitialize();
  }
  Objects(const Objects&) = delete;
  Objects& operator=(const Objects&) = delete;

 private:
  const bool began_;
};

/// A reference to one of them.
template <class Interface>
class Reference {
 public:
  Reference() = default;
  ~Reference() {
    if (object_ != nullptr) object_->Release();
  }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;

  Interface* operator->() const { return object_; }
  Interface* Get() const { return object_; }
  void** Place() { return reinterpret_cast<void**>(&object_); }
  Interface** Typed() { return &object_; }

 private:
  Interface* object_ = nullptr;
};

DesktopAnswer Known(bool answer) {
  std::promise<bool> known;
  known.set_value(answer);
  return known.get_future();
}

/// Without a box of the platform's own: whoever asks tells of a failure.
DesktopAnswer Execute(const wchar_t* verb, const std::wstring& what, const std::wstring& folder) {
  const Objects objects;
  SHELLEXECUTEINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  info.lpVerb = verb;
  info.lpFile = what.c_str();
  info.lpDirectory = folder.c_str();
  info.nShow = SW_SHOWNORMAL;
  return Known(::ShellExecuteExW(&info) != FALSE);
}

/// Empty for an address.
std::wstring FolderOfFile(const std::wstring& path) {
  if (path.find(L"://") != path.npos) return {};
  const auto last = path.find_last_of(L"\\/");
  return last == path.npos ? std::wstring() : path.substr(0, last);
}

/// One name for each installation, whatever the spelling of its path.
std::wstring EventOfCalls(const std::string& lockPath) {
  std::wstring name = Widen(AbsoluteHostPath(lockPath));
  ::CharLowerBuffW(name.data(), static_cast<DWORD>(name.size()));
  std::replace(name.begin(), name.end(), L'\\', L'/');  // a backslash would name a space of its own
  // The platform takes no longer ones.
  if (name.size() > kLongestEvent) name.erase(0, name.size() - kLongestEvent);
  return L"Local\\Quillon " + name;
}

class CallEvent : public StartCalls {
 public:
  explicit CallEvent(HANDLE event) : event_(event) {}
  bool Any() override { return ::WaitForSingleObject(event_.Get(), 0) == WAIT_OBJECT_0; }

 private:
  Handle event_;
};

/// The shell takes no path in the form for long ones: then the short names of the folders may do. Empty when
/// they don't.
std::wstring ShellPath(const std::string& hostPath) {
  const std::wstring call = CallPath(hostPath);
  std::wstring shortened(call.size() + MAX_PATH, L'\0');
  shortened.resize(::GetShortPathNameW(call.c_str(), shortened.data(), static_cast<DWORD>(shortened.size())));
  for (const std::wstring& path : {call, shortened}) {
    std::wstring plain = TakeApart(Narrow(path)).Plain();
    if (!path.empty() && !plain.starts_with(L"\\\\?\\")) return plain;
  }
  return {};
}

/// A path or an address for the shell.
std::wstring ForShell(const std::string& hostPath) {
  const std::wstring path = hostPath.starts_with("\\\\?\\") ? ShellPath(hostPath) : Widen(hostPath);
  return path.empty() ? Widen(hostPath) : path;
}

std::string BytesOf(IStream* stream) {
  HGLOBAL memory = nullptr;
  STATSTG facts = {};
  if (FAILED(stream->Stat(&facts, STATFLAG_NONAME)) || FAILED(::GetHGlobalFromStream(stream, &memory)))
    return {};
  std::string bytes(static_cast<const char*>(::GlobalLock(memory)),
                    static_cast<std::size_t>(facts.cbSize.QuadPart));
  ::GlobalUnlock(memory);
  return bytes;
}

class OpenLock : public InstanceLock {
 public:
  explicit OpenLock(HANDLE file) : file_(file) {}

 private:
  Handle file_;
};

}  // namespace

std::string GetSpecialFolder(SpecialFolder folder) {
  std::wstring path(MAX_PATH, L'\0');
  const int number = static_cast<int>(folder) | CSIDL_FLAG_CREATE;
  if (::SHGetFolderPathW(nullptr, number, nullptr, SHGFP_TYPE_CURRENT, path.data()) != S_OK) return {};
  return Narrow(path.c_str());
}

DesktopAnswer OpenWithDesktop(const std::string& hostPath) {
  const std::wstring what = ForShell(hostPath);
  return Execute(nullptr, what, FolderOfFile(what));
}

DesktopAnswer ExploreWithDesktop(const std::string& hostPath) {
  return Execute(L"explore", ForShell(hostPath), {});
}

DesktopAnswer RunCommand(const std::string& command, const std::string& hostFolder) {
  std::wstring line = Widen(command);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  // A program for a console gets none of its own: it would flash over the windows.
  const DWORD flags = ::GetConsoleWindow() == nullptr ? DWORD{CREATE_NO_WINDOW} : 0;
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, flags, nullptr,
                       Widen(hostFolder).c_str(), &start, &process) == FALSE)
    return Known(false);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return Known(true);
}

std::string ShortcutContent(const std::string& hostFolder) {
  const std::wstring folder = ShellPath(hostFolder);
  if (folder.empty()) return {};
  const Objects objects;
  Reference<IShellLinkW> link;
  Reference<IPersistStream> saved;
  Reference<IStream> stream;
  if (FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                link.Place())) ||
      FAILED(link->SetPath(folder.c_str())) ||
      FAILED(link->QueryInterface(IID_IPersistStream, saved.Place())) ||
      FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, stream.Typed())) ||
      FAILED(saved->Save(stream.Get(), TRUE)))
    return {};
  return BytesOf(stream.Get());
}

std::string ShortcutTarget(const std::string& bytes) {
  const Objects objects;
  Reference<IShellLinkW> link;
  Reference<IPersistStream> saved;
  Reference<IStream> stream;
  std::wstring folder(MAX_PATH, L'\0');
  LARGE_INTEGER begin = {};
  if (FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                link.Place())) ||
      FAILED(link->QueryInterface(IID_IPersistStream, saved.Place())) ||
      FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, stream.Typed())) ||
      FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr)) ||
      FAILED(stream->Seek(begin, STREAM_SEEK_SET, nullptr)) || FAILED(saved->Load(stream.Get())) ||
      link->GetPath(folder.data(), static_cast<int>(folder.size()), nullptr, 0) != S_OK)
    return {};
  return Narrow(folder.c_str());
}

// The file itself is all that there is to it.
void ShowShortcut(const std::string&) {}
void ForgetShortcut(const std::string&) {}

std::string ExecutableFolder() {
  std::wstring path(MAX_PATH, L'\0');
  // A name that does not fit is cut, and fills the room.
  while (::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())) >= path.size())
    path.resize(path.size() * 2);
  path.resize(path.find_last_of(L'\\', path.find(L'\0')));
  return Narrow(path);
}

std::string AbsoluteHostPath(const std::string& path) {
  if (path.empty()) return {};
  const WindowsPath named = TakeApart(path);
  // The system's texts are long without a mark of it.
  return named.Named() ? Narrow(named.Text()) : path;
}

std::unique_ptr<InstanceLock> TakeInstanceLock(const std::string& hostPath) {
  // Nobody else may write to the file while it is open; reading it does no harm.
  const HANDLE file = ::CreateFileW(CallPath(hostPath).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_SHARING_VIOLATION) return nullptr;
  // Where no lock can be held, as in a read-only folder, there is no second instance to fear either.
  return std::make_unique<OpenLock>(file);
}

std::unique_ptr<StartCalls> HearStartCalls(const std::string& hostPath) {
  const HANDLE event = ::CreateEventW(nullptr, FALSE, FALSE, EventOfCalls(hostPath).c_str());
  return event == nullptr ? nullptr : std::make_unique<CallEvent>(event);
}

bool CallRunningInstance(const std::string& hostPath) {
  const HANDLE event = ::OpenEventW(EVENT_MODIFY_STATE, FALSE, EventOfCalls(hostPath).c_str());
  if (event == nullptr) return false;
  ::AllowSetForegroundWindow(ASFW_ANY);  // a window in the background may not raise itself
  const bool called = ::SetEvent(event) != FALSE;
  ::CloseHandle(event);
  return called;
}

}  // namespace quillon
