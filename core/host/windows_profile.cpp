#include <windows.h>

#include <algorithm>
#include <optional>

#include "core/host/FileProfiles.h"
#include "core/host/windows_errors.h"
#include "core/host/windows_file_facts.h"
#include "core/host/windows_paths.h"
#include "core/host/windows_patience.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

/// A text for a call that takes none at all, too.
class Argument {
 public:
  explicit Argument(ProfileFunctions::Name text) {
    if (text) text_ = WidenBytes(*text);
  }
  const wchar_t* Get() const { return text_ ? text_->c_str() : nullptr; }

 private:
  std::optional<std::wstring> text_;
};

/// The platform's own functions. They write the whole file at each call, so a batch is left to functions over
/// plain files, and so is a path that they can't take.
class WindowsProfiles final : public ProfileFunctions {
 public:
  explicit WindowsProfiles(FileSystem& files) : files_(files), plain_(MakeFileProfiles(files)) {}

  std::string GetString(Name section, Name key, Name defaultText, std::size_t size,
                        std::string_view file) override {
    const std::wstring path = PathFor(file);
    if (path.empty()) return plain_->GetString(section, key, defaultText, size, file);
    const bool list = !section || !key;
    const Argument sectionArgument(section), keyArgument(key),
        otherwise(defaultText ? defaultText : Name(""));
    const auto ask = [&] {
      return Ask(sectionArgument, keyArgument, otherwise, list, static_cast<DWORD>(size), path);
    };
    std::wstring text = ask();
    // A file that another program holds reads as one that holds nothing.
    if ((text.empty() || text == otherwise.Get()) && Handle(OpenExisting(path, GENERIC_READ)).IsOpen())
      text = ask();
    // Of a list's end too little is said to know what was cut: it is cut here.
    const std::string bytes = NarrowBytes(text);
    const std::size_t room = size - std::min<std::size_t>(size, list && bytes.size() >= size ? 2 : 1);
    return list && bytes.size() < size ? bytes : bytes.substr(0, room);
  }

  FileCode WriteString(Name section, Name key, Name value, std::string_view file) override {
    const std::wstring path = PathFor(file);
    if (path.empty() || !section) return plain_->WriteString(section, key, value, file);
    const Argument sectionArgument(section), keyArgument(key), text(value);
    const bool written = Patiently(path, [&] {
      return ::WritePrivateProfileStringW(sectionArgument.Get(), keyArgument.Get(), text.Get(),
                                          path.c_str()) != 0;
    });
    return written ? FileCode::Ok : LastCode();
  }

 private:
  /// Not every disk tells by a file's time that it was changed since the last batch.
  void BeginBatch() override {
    if (batches_++ > 0) return;
    plain_ = MakeFileProfiles(files_);
    batch_.emplace(*plain_);
  }
  void EndBatch() override {
    if (--batches_ == 0) batch_.reset();
  }

  /// Empty for what is not the platform's to do.
  std::wstring PathFor(std::string_view file) const {
    if (batches_ > 0 || file.find_first_of("\\/") == file.npos) return {};
    const WindowsPath path = TakeApart(file);
    const std::wstring plain = path.Named() ? path.Plain() : std::wstring();
    return plain.starts_with(L"\\\\?\\") ? std::wstring() : plain;
  }

  static std::wstring Ask(const Argument& section, const Argument& key, const Argument& otherwise, bool list,
                          DWORD size, const std::wstring& path) {
    std::wstring buffer;
    DWORD length = 0;
    for (DWORD room = list ? std::max<DWORD>(size, 4096) : size;; room *= 4) {
      buffer.assign(room + 1, L'\0');
      length = ::GetPrivateProfileStringW(section.Get(), key.Get(), otherwise.Get(), buffer.data(), room,
                                          path.c_str());
      if (!list || length + 2 < room) break;
    }
    buffer.resize(length);
    return buffer;
  }

  FileSystem& files_;
  std::unique_ptr<ProfileFunctions> plain_;
  std::optional<Batch> batch_;
  int batches_ = 0;
};

}  // namespace

std::unique_ptr<ProfileFunctions> MakeProfileFunctions(FileSystem& files) {
  return std::make_unique<WindowsProfiles>(files);
}

}  // namespace quillon
