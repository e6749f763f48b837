#include "core/archive/ArchiveReader.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "core/archive/ExtractPool.h"
#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

// Below this, threads cost more than they bring.
constexpr std::uint64_t kWorthThreads = 4u << 20;

}  // namespace

std::uint64_t SaturatedSum(std::uint64_t a, std::uint64_t b) { return a + b < a ? ~std::uint64_t{0} : a + b; }

ArchiveReader::ArchiveReader(Files& files, Fault fault) : files_(files), fault_(std::move(fault)) {}

void ArchiveReader::ReadDirectory() {
  entries_.clear();
  damageReason_.clear();
  if (!fault_ && !files_.FileExists(InputFile)) throw RunTimeError(ErrorNumber::FileNotFound, InputFile);
  try {
    entries_ = ZipFile(files_.Host().HostPath(InputFile)).TakeEntries();
  } catch (const Damage& damage) {
    Damaged(damage.reason);
  }
}

void ArchiveReader::Damaged(std::string reason) {
  damageReason_ = std::move(reason);
  if (!fault_) throw RunTimeError(ErrorNumber::InvalidFileFormat, InputFile, damageReason_);
  fault_();
}

std::string ArchiveReader::Entry(int index) const {
  const auto& entry = entries_.at(static_cast<std::size_t>(index));
  return entry.name + "|" + std::to_string(entry.size);
}

std::string ArchiveReader::LowerName(int index) const {
  return LowerCase(entries_.at(static_cast<std::size_t>(index)).name);
}

void ArchiveReader::AddFilter(std::string_view filter) { filters_.push_back(UpperCase(filter)); }

bool ArchiveReader::Selected(const ArchiveEntry& entry) const {
  const std::string name = UpperCase(entry.name);
  return std::any_of(filters_.begin(), filters_.end(), [&](const std::string& filter) {
    return HasWildcard(filter) ? MatchesPattern(FileNameOf(name), filter) : name == filter;
  });
}

std::vector<ArchiveReader::Placement> ArchiveReader::PlacementsOfSelection() {
  std::vector<Placement> placements;
  std::unordered_map<std::string, std::size_t> placeOf;
  for (int i = 0; i < EntryCount(); ++i) {
    const auto& entry = entries_[static_cast<std::size_t>(i)];
    if (entry.folder()) {
      // A folder entry has an empty file name: only "*" selects it.
      if (KeepFolders && !entry.name.empty() && Selected(entry))
        files_.MakeFolders(OutputFolder + CutBackslash(entry.name));
      continue;
    }
    if (!Selected(entry)) continue;
    std::string path = OutputFolder + (KeepFolders ? entry.name : std::string(FileNameOf(entry.name)));
    // Of files that land on one name the last one stays.
    const auto [at, isNew] = placeOf.try_emplace(UpperCase(path), placements.size());
    if (isNew)
      placements.push_back({i, std::move(path)});
    else
      placements[at->second].index = i;
  }
  return placements;
}

void ArchiveReader::Extract() {
  const FileSystem::Pass pass(files_.Host());
  files_.MakeFolders(CutBackslash(OutputFolder));
  Place(PlacementsOfSelection());
}

void ArchiveReader::Place(const std::vector<Placement>& placements,
                          const std::function<void(const Placement&)>& before) {
  bytesDone_ = bytesToDo_ = filesDone_ = 0;
  if (placements.empty()) return;
  for (const auto& placement : placements)
    bytesToDo_ = SaturatedSum(bytesToDo_, entries_[static_cast<std::size_t>(placement.index)].size);
  files_.RequireRoom(placements.front().path, bytesToDo_);

  const FileSystem::Pass pass(files_.Host());
  const ExtractPool* running = nullptr;
  const auto damaged = [this](const ExtractJob& job, const Damage& damage) {
    files_.Host().Touched(job.path, false);
    Damaged(damage.reason);
  };
  try {
    ExtractPool pool(files_.Host().HostPath(InputFile), InputFile, entries_,
                     bytesToDo_ < kWorthThreads ? 0 : WorkerCount(), damaged, [&] { Report(*running); });
    running = &pool;
    PutAll(pool, placements, before);
    pool.Drain();
    Report(pool);
  } catch (const Damage& damage) {
    Damaged(damage.reason);
  }
}

void ArchiveReader::PutAll(ExtractPool& pool, const std::vector<Placement>& placements,
                           const std::function<void(const Placement&)>& before) {
  std::unordered_set<std::string> folders, taken;
  std::size_t count = 0;
  for (const auto& placement : placements) {
    if (!taken.insert(UpperCase(placement.path)).second) pool.Drain();
    if (before) before(placement);
    std::string folder(FolderOf(placement.path));
    if (folders.insert(folder).second) files_.MakeFolders(CutBackslash(folder));
    pool.Put(
        {static_cast<std::size_t>(placement.index), files_.Host().HostPath(placement.path), placement.path});
    files_.Host().Touched(placement.path, true);
    if (++count % 64 == 0) Report(pool);
  }
}

void ArchiveReader::Report(const ExtractPool& pool) {
  bytesDone_ = pool.BytesDone();
  filesDone_ = pool.FilesDone();
  if (OnProgress) OnProgress(*this);
}

int ArchiveReader::PercentDone() const {
  return bytesToDo_ == 0 ? 100 : static_cast<int>(bytesDone_ * 100 / bytesToDo_);
}

std::string ArchiveReader::Bytes(int index, std::uint64_t limit) const {
  std::string bytes;
  struct Enough {};
  try {
    ZipFile(files_.Host().HostPath(InputFile), entries_)
        .Unpack(static_cast<std::size_t>(index), [&](std::string_view piece) {
          bytes += piece;
          if (bytes.size() > limit) throw Enough();
        });
  } catch (const Damage&) {
    bytes.clear();
  } catch (const Enough&) {
    bytes.resize(static_cast<std::size_t>(limit));
  }
  return bytes;
}

std::string ArchiveReader::FileWhereFolderIsWanted() const {
  std::unordered_set<std::string_view> spelled;
  std::unordered_set<std::string> folders;
  for (const auto& entry : entries_) {
    const std::string_view name = entry.name;
    // Whoever has met a folder has met those above it.
    for (auto at = name.rfind('\\'); at != name.npos && spelled.insert(name.substr(0, at)).second;
         at = name.rfind('\\', at - 1))
      folders.insert(UpperCase(name.substr(0, at)));
  }
  for (const auto& entry : entries_)
    if (!entry.folder() && folders.contains(UpperCase(entry.name))) return entry.name;
  return {};
}

}  // namespace quillon
