#include "core/host/windows_file_facts.h"

#include "core/host/windows_errors.h"
#include "core/host/windows_patience.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

constexpr std::int64_t kTicks = 10'000'000, kEpoch = 11'644'473'600;  // a second; seconds from 1601 to 1970
constexpr DWORD kKept = kReadOnly | kHidden | kSystem | kFolder | kArchive;

FoundFile Told(const WIN32_FIND_DATAW& data) {
  FoundFile file{Narrow(data.cFileName), WithoutVainMarks(data.dwFileAttributes) & kKept,
                 IsLink(data.dwFileAttributes, data.dwReserved0)};
  file.size = std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
  const auto& time = data.ftLastWriteTime;
  file.modified =
      SinceEpoch(static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime));
  return file;
}

class Search {
 public:
  Search(const std::wstring& pattern, WIN32_FIND_DATAW& data)
      : handle_(::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data, FindExSearchNameMatch, nullptr,
                                   FIND_FIRST_EX_LARGE_FETCH)) {}
  ~Search() {
    if (Found()) ::FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool Found() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool Next(WIN32_FIND_DATAW& data) const { return ::FindNextFileW(handle_, &data) != 0; }

 private:
  HANDLE handle_;
};

}  // namespace

/// Without a tag nothing is known: the careful answer is yes.
bool IsLink(DWORD attributes, DWORD tag) {
  return Holds(attributes, FILE_ATTRIBUTE_REPARSE_POINT) && (tag == 0 || IsReparseTagNameSurrogate(tag));
}

DWORD WithoutVainMarks(DWORD attributes) {
  return Holds(attributes, kFolder) ? attributes & ~DWORD{kReadOnly} : attributes;
}

FileCode Inspect(const std::wstring& path, FoundFile& file) {
  WIN32_FIND_DATAW data;
  const Search search(path, data);
  if (!search.Found()) return LastCode();
  file = Told(data);
  return FileCode::Ok;
}

FileCode ListFolder(const std::wstring& folder, const std::function<bool(FoundFile&&)>& each) {
  WIN32_FIND_DATAW data;
  const Search search(folder.ends_with(L'\\') ? folder + L"*" : folder + L"\\*", data);
  if (!search.Found()) {
    const FileCode code = LastCode();
    // A root may hold nothing, not even dots.
    if (code == FileCode::FileNotFound) return FileCode::Ok;
    return code == FileCode::NotADirectory ? FileCode::PathNotFound : code;
  }
  do
    if (!each(Told(data))) return FileCode::Ok;
  while (search.Next(data));
  // Half a listing is none: a name must not be missing here alone.
  return ::GetLastError() == ERROR_NO_MORE_FILES ? FileCode::Ok : LastCode();
}

DWORD AttributesOf(const std::wstring& path, FileCode& code) {
  DWORD attributes = INVALID_FILE_ATTRIBUTES;
  Patiently(path, [&] {
    attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES;
  });
  code = attributes == INVALID_FILE_ATTRIBUTES ? LastCode() : FileCode::Ok;
  return attributes;
}

HANDLE OpenPatiently(const std::wstring& path, DWORD access, DWORD share, DWORD how, DWORD flags) {
  HANDLE file = INVALID_HANDLE_VALUE;
  Patiently(path, [&] {
    file = ::CreateFileW(path.c_str(), access, share, nullptr, how, flags, nullptr);
    return file != INVALID_HANDLE_VALUE;
  });
  return file;
}

HANDLE OpenExisting(const std::wstring& path, DWORD access) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return OpenPatiently(path, access, kShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
}

FileCode GetFacts(const std::wstring& path, BY_HANDLE_FILE_INFORMATION& facts, FILE_BASIC_INFO& times) {
  const Handle file(OpenExisting(path, FILE_READ_ATTRIBUTES));
  if (!file.IsOpen() || ::GetFileInformationByHandle(file.Get(), &facts) == 0 ||
      ::GetFileInformationByHandleEx(file.Get(), FileBasicInfo, &times, sizeof times) == 0)
    return LastCode();
  return FileCode::Ok;
}

std::int64_t SinceEpoch(std::int64_t fileTime) {
  return (fileTime - kEpoch * kTicks) * (1'000'000'000 / kTicks);
}

FILETIME FileTimeOf(std::int64_t secondsSinceEpoch) {
  const auto time = static_cast<std::uint64_t>((secondsSinceEpoch + kEpoch) * kTicks);
  return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
}

}  // namespace quillon
