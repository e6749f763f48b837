#include "core/archive/ArchiveWriter.h"

#include <utility>

#include "core/archive/ArchiveNames.h"
#include "core/archive/PackQueue.h"
#include "core/archive/ZipBuilder.h"
#include "core/host/PathText.h"
#include "core/host/Workers.h"
#include "core/text/Text.h"

namespace quillon {
void ArchiveWriter::ClearFiles() {
  items_.clear();
  placeOf_.clear();
  baseFolder_.clear();
}

std::string ArchiveWriter::StoredName(std::string_view path) const {
  if (!baseFolder_.empty() && EqualNoCase(path.substr(0, baseFolder_.size()), baseFolder_))
    path.remove_prefix(baseFolder_.size());
  return NormalStoredName(path);
}

void ArchiveWriter::Add(Item item) {
  const auto [at, isNew] = placeOf_.try_emplace(UpperCase(item.storedName), items_.size());
  if (isNew)
    items_.push_back(std::move(item));
  else
    items_[at->second] = std::move(item);
}

void ArchiveWriter::AddFiles(std::string_view path) {
  if (HasWildcard(path)) {
    files_.Walk(path,
                [this](const std::string& folder, const std::string& name) { AddFiles(folder + name); });
    return;
  }
  AddFile(path, StoredName(path));
}

void ArchiveWriter::AddFile(std::string_view path, std::string storedName) {
  FileSystem::Stamp stamp;
  if (files_.IsPathAFolder(path) || files_.Host().GetStamp(path, stamp) != FileCode::Ok) return;
  Add({std::move(storedName), std::string(path), -1, stamp.size,
       static_cast<std::time_t>(stamp.modified / 1000000000)});
}

void ArchiveWriter::ExcludeFiles(std::string_view path) {
  const std::string folder = UpperCase(FolderOf(path));
  const std::string_view pattern = FileNameOf(path);
  for (auto& item : items_) {
    const std::string itemPath = UpperCase(item.path);
    const bool hit = HasWildcard(pattern)
                         ? itemPath.starts_with(folder) && MatchesPattern(FileNameOf(item.path), pattern)
                         : itemPath == UpperCase(path);
    if (hit && item.index < 0) item.storedName.clear();
  }
}

void ArchiveWriter::AddEntry(const ArchiveReader& archive, int index, std::string_view storedName) {
  const auto& entry = archive.Entries().at(static_cast<std::size_t>(index));
  Add({std::string(storedName), archive.InputFile, index, entry.packedSize, entry.modified});
}

std::vector<ArchiveWriter::Item> ArchiveWriter::LiveItems() const {
  std::vector<Item> live;
  for (const auto& item : items_)
    if (!item.storedName.empty()) live.push_back(item);
  return live;
}

std::unique_ptr<ZipFile> ArchiveWriter::Opened(const std::string& path) {
  try {
    return std::make_unique<ZipFile>(files_.Host().HostPath(path));
  } catch (const Damage& damage) {
    throw RunTimeError(ErrorNumber::InvalidFileFormat, path, damage.reason);
  }
}

void ArchiveWriter::Zip() {
  const std::vector<Item> items = LiveItems();
  bytesDone_ = bytesToDo_ = 0;
  std::uint64_t travelling = 0;
  std::vector<const Item*> sources;
  std::vector<std::uint64_t> sizes;
  for (std::size_t i = 0; i < items.size(); ++i) {
    bytesToDo_ += items[i].size;
    if (items[i].index >= 0) travelling += items[i].size;
    if (items[i].index >= 0 || items[i].size > kPackWholeLimit) continue;
    sources.push_back(&items[i]);
    sizes.push_back(items[i].size);
  }
  // What files will come to is not known yet; entries keep their size.
  files_.RequireRoom(ArchiveFile, travelling);
  const auto report = [this](double share) {
    bytesDone_ = static_cast<std::uint64_t>(share * static_cast<double>(bytesToDo_));
    if (OnProgress) OnProgress(*this);
  };
  double share = 0;
  std::vector<std::string> hostPaths;  // the host's names are asked for on this thread
  for (const Item* source : sources) hostPaths.push_back(files_.Host().HostPath(source->path));
  PackQueue queue(
      std::move(sizes), [&](std::size_t i) { return ReadWhole(hostPaths[i], sources[i]->path); },
      WorkerCount(), [&] { report(share); });
  std::unordered_map<std::string, std::unique_ptr<ZipFile>> archives;
  const std::string hostPath = files_.Host().HostPath(ArchiveFile);
  ZipBuilder builder(hostPath, ArchiveFile);
  std::size_t nextSource = 0;
  for (const auto& item : items) {
    if (item.index >= 0) {
      auto& archive = archives[item.path];
      if (!archive) archive = Opened(item.path);
      const auto& entry = archive->Entries().at(static_cast<std::size_t>(item.index));
      builder.AddFrom(item.storedName, archive->Handle(), entry.place, entry.method);
    } else if (item.size > kPackWholeLimit) {
      builder.AddStream(item.storedName, files_.Host().HostPath(item.path));
    } else {
      const std::size_t mine = nextSource++;
      builder.AddPacked(item.storedName, item.modified, [this, &queue, &item, mine] {
        currentFile_ = item.path;
        return queue.Take(mine);
      });
    }
  }
  builder.Write([&](double done) { report(share = done); });
  files_.Host().Touched(ArchiveFile, true);
}

int ArchiveWriter::PercentDone() const {
  return bytesToDo_ == 0 ? 100 : static_cast<int>(bytesDone_ * 100 / bytesToDo_);
}

}  // namespace quillon
