#include "core/host/windows_paths.h"

#include <windows.h>

#include <algorithm>

#include "core/host/windows_text.h"

namespace quillon {
namespace {

constexpr std::string_view kLongForm = "\\\\?\\", kLongShare = "\\\\?\\UNC\\";
constexpr std::size_t kLongestPlain = 247;  // what leaves room for a short name, as a new folder must

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

/// Takes the server and the share off the front of `path`; empty when it names no share.
std::string TakeShare(std::string_view& path) {
  std::string root = "\\";
  for (int part = 0; part < 2; ++part) {
    const auto end =
        static_cast<std::size_t>(std::find_if(path.begin(), path.end(), IsSeparator) - path.begin());
    if (end == 0) return {};
    root.append("\\").append(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return root + "\\";
}

/// Takes what stands for a root off the front of `path`, and adds the current folder's names where it is
/// relative to that.
bool TakeRoot(std::string_view& path, WindowsPath& taken) {
  if (path.starts_with(kLongShare)) {
    path.remove_prefix(kLongShare.size());
    taken.root = Widen(TakeShare(path));
    return !taken.root.empty();
  }
  if (path.starts_with(kLongForm)) path.remove_prefix(kLongForm.size());
  if (path.empty()) return false;
  const bool onDrive = HasDrive(path);
  if (onDrive && path.size() > 2 && IsSeparator(path[2])) {
    taken.root = Widen(path.substr(0, 2)) + L"\\";
    path.remove_prefix(3);
    return true;
  }
  if (path.size() > 1 && IsSeparator(path[0]) && IsSeparator(path[1])) {
    path.remove_prefix(2);
    taken.root = Widen(TakeShare(path));
    return !taken.root.empty();
  }
  // The current drive's root, the current folder, or that of the drive.
  const bool fromRoot = !onDrive && IsSeparator(path[0]);
  const std::string start = Narrow(FullPath(onDrive ? Widen(path.substr(0, 2)) : fromRoot ? L"\\" : L"."));
  path.remove_prefix(onDrive ? 2 : fromRoot ? 1 : 0);
  std::string_view names = start;
  if (!TakeRoot(names, taken)) return false;
  AddNames(names, false, taken.text);
  taken.text.closed = false;
  return true;
}

}  // namespace

std::wstring WindowsPath::Call(bool withName) const {
  std::wstring call = root.starts_with(L"\\\\") ? L"\\\\?\\UNC" + root.substr(1) : L"\\\\?\\" + root;
  const std::size_t count = text.names.size() - (withName || text.names.empty() ? 0 : 1);
  for (std::size_t i = 0; i < count; ++i) {
    if (call.back() != L'\\') call += L'\\';
    const std::string_view name = text.names[i], kept = DropTail(name);
    call += Widen(kept.empty() ? name : kept);
  }
  return call;
}

std::wstring WindowsPath::Plain() const {
  std::wstring plain = Text();
  return plain.size() > kLongestPlain ? Call() : plain;
}

std::wstring WindowsPath::Text() const {
  const std::wstring call = Call();
  const bool share = root.starts_with(L"\\\\");
  return share ? L"\\\\" + call.substr(kLongShare.size()) : call.substr(kLongForm.size());
}

WindowsPath TakeApart(std::string_view path, bool wildcards) {
  WindowsPath taken;
  taken.text.names.reserve(16);
  if (TakeRoot(path, taken))
    AddNames(path, wildcards, taken.text);
  else
    taken.text.code = FileCode::PathNotFound;
  return taken;
}

std::wstring CallPath(std::string_view hostPath) {
  const WindowsPath path = TakeApart(hostPath);
  return path.Named() ? path.Call() : Widen(hostPath);
}

}  // namespace quillon
