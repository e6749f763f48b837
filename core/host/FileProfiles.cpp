#include "core/host/FileProfiles.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <list>
#include <utility>

#include "core/host/PathText.h"
#include "core/host/ProfileText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using std::chrono::steady_clock;

constexpr std::size_t kMostFiles = 16;
constexpr std::size_t kMostBytes = 2u << 20;  // of a file that is remembered beyond its batch
constexpr std::chrono::seconds kLongestDelay{2};
constexpr std::int64_t kStampStep = 50'000'000;  // nanoseconds; file clocks tick in several milliseconds

/// A bare name would mean the platform's own folder.
bool HasFolder(std::string_view file) { return FirstSeparator(file) != file.npos; }

/// False when another change may still get the same stamp.
bool IsSettled(const FileSystem::Stamp& stamp) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto age = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - stamp.changed;
  return age > kStampStep || age < -kStampStep;
}

std::string CutText(std::string_view text, std::size_t size) {
  return std::string(text.substr(0, size == 0 ? 0 : size - 1));
}

std::string CutList(std::string_view list, std::size_t size) {
  if (list.size() < size) return std::string(list);
  return std::string(list.substr(0, size < 2 ? 0 : size - 2));
}

/// Of blanks only one stays.
std::string_view DefaultText(ProfileFunctions::Name text) {
  if (!text) return {};
  const auto last = text->find_last_not_of(' ');
  return text->substr(0, last == text->npos ? 1 : last + 1);
}

bool Edit(ProfileText& text, std::string_view section, ProfileFunctions::Name key,
          ProfileFunctions::Name value) {
  if (!key) return text.DeleteSection(section);
  return value ? text.SetValue(section, *key, *value) : text.DeleteKey(section, *key);
}

struct CachedFile {
  std::string path;
  std::string name;   // the path in upper case
  std::string bytes;  // as they were on the disk
  ProfileText text;
  FileSystem::Stamp stamp;
  bool settled = false;  // the same stamp means the same bytes
  bool changed = false;  // the text is ahead of the disk
  steady_clock::time_point changedSince;
};

class FileProfiles final : public ProfileFunctions {
 public:
  explicit FileProfiles(FileSystem& files) : files_(files) {}

  std::string GetString(Name section, Name key, Name defaultText, std::size_t size,
                        std::string_view file) override;
  FileCode WriteString(Name section, Name key, Name value, std::string_view file) override;

 private:
  using Cache = std::list<CachedFile>;  // the last used one first

  void BeginBatch() override { ++batches_; }
  void EndBatch() override;

  FileCode Open(std::string_view path, Cache::iterator& file);
  Cache::iterator FindOrAdd(std::string_view path);
  FileCode Load(CachedFile& file);
  FileCode Save(Cache::iterator file);
  FileCode SaveLater(Cache::iterator file);
  void DropOldest();
  void SaveChanged(steady_clock::time_point changedUntil);

  FileSystem& files_;
  Cache cache_;
  int batches_ = 0;
};

std::string FileProfiles::GetString(Name section, Name key, Name defaultText, std::size_t size,
                                    std::string_view file) {
  auto otherwise = section ? CutText(DefaultText(defaultText), size) : std::string();
  Cache::iterator found;
  if (!HasFolder(file) || Open(file, found) != FileCode::Ok) return otherwise;
  const auto& text = found->text;
  if (!section) return CutList(text.SectionNames(), size);
  if (!key) {
    const auto names = text.KeyNames(*section);
    return names.empty() || names.front() == '\0' ? otherwise : CutList(names, size);
  }
  const auto value = text.Value(*section, *key);
  return value ? CutText(*value, size) : otherwise;
}

FileCode FileProfiles::WriteString(Name section, Name key, Name value, std::string_view file) {
  if (!section || !HasFolder(file)) return FileCode::FileNotFound;
  Cache::iterator found;
  const auto code = Open(file, found);
  if (code != FileCode::Ok && code != FileCode::FileNotFound) return code;
  const bool edited = Edit(found->text, *section, key, value);
  if (!edited && code == FileCode::Ok) return FileCode::Ok;
  return batches_ > 0 ? SaveLater(found) : Save(found);
}

void FileProfiles::EndBatch() {
  if (--batches_ > 0) return;
  SaveChanged(steady_clock::time_point::max());
  cache_.remove_if([](const CachedFile& file) { return file.bytes.size() > kMostBytes && !file.changed; });
}

/// `file` is usable when FileNotFound comes back, too: with an empty text.
FileCode FileProfiles::Open(std::string_view path, Cache::iterator& file) {
  if (batches_ > 0) SaveChanged(steady_clock::now() - kLongestDelay);
  file = FindOrAdd(path);
  file->path = path;
  return file->changed ? FileCode::Ok : Load(*file);
}

FileProfiles::Cache::iterator FileProfiles::FindOrAdd(std::string_view path) {
  auto name = UpperCase(path);
  const auto found =
      std::find_if(cache_.begin(), cache_.end(), [&](const auto& file) { return file.name == name; });
  if (found != cache_.end()) {
    cache_.splice(cache_.begin(), cache_, found);
    return found;
  }
  if (cache_.size() == kMostFiles) DropOldest();
  cache_.emplace_front().name = std::move(name);
  return cache_.begin();
}

/// The stamp comes before the bytes: a change in between is seen at the next call.
FileCode FileProfiles::Load(CachedFile& file) {
  FileSystem::Stamp stamp;
  auto code = files_.GetStamp(file.path, stamp);
  const bool settled = code == FileCode::Ok && IsSettled(stamp);
  if (code == FileCode::Ok && file.settled && stamp == file.stamp) return FileCode::Ok;
  std::string bytes;
  if (code == FileCode::Ok) code = files_.Read(file.path, bytes, kNoLimit);
  if (bytes != file.bytes) {
    file.text = ProfileText(bytes);
    file.bytes = std::move(bytes);
  }
  file.stamp = stamp;
  file.settled = settled && code == FileCode::Ok;
  return code;
}

/// After a failure the file is forgotten, so that readers see what stands on the disk.
FileCode FileProfiles::Save(Cache::iterator file) {
  auto bytes = file->text.Bytes();
  const auto code = files_.Replace(file->path, bytes);
  if (code != FileCode::Ok) {
    cache_.erase(file);
    return code;
  }
  file->bytes = std::move(bytes);
  file->changed = false;
  return FileCode::Ok;
}

/// What can be foreseen is refused at once, as without a batch.
FileCode FileProfiles::SaveLater(Cache::iterator file) {
  if (file->changed) return FileCode::Ok;
  std::uint32_t attributes = 0;
  auto code = files_.GetAttributes(file->path, attributes);
  if (code == FileCode::Ok && (attributes & (kReadOnly | kFolder)) != 0) code = FileCode::AccessDenied;
  if (code != FileCode::Ok && code != FileCode::FileNotFound) {
    cache_.erase(file);
    return code;
  }
  file->changed = true;
  file->changedSince = steady_clock::now();
  return FileCode::Ok;
}

void FileProfiles::SaveChanged(steady_clock::time_point changedUntil) {
  for (auto next = cache_.begin(); next != cache_.end();) {
    const auto file = next++;
    if (file->changed && file->changedSince <= changedUntil) Save(file);
  }
}

void FileProfiles::DropOldest() {
  if (cache_.back().changed) Save(std::prev(cache_.end()));
  if (cache_.size() == kMostFiles) cache_.pop_back();
}

}  // namespace

std::unique_ptr<ProfileFunctions> MakeFileProfiles(FileSystem& files) {
  return std::make_unique<FileProfiles>(files);
}

}  // namespace quillon
