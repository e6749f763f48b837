#include "checkup/FactsReader.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "core/archive/ExtractPool.h"
#include "core/host/RawFile.h"

namespace quillon {
namespace {

constexpr auto kTickInterval = std::chrono::milliseconds(20);

void Number(const std::vector<FoundItem>& found, ItemTable& items, FileFacts& facts) {
  facts.items.reserve(found.size());
  for (const auto& item : found) {
    if (item.line != 0) facts.unsplit.emplace_back(static_cast<std::uint32_t>(facts.items.size()), item.line);
    facts.items.push_back(items.Add(item.kind, item.text));
  }
}

/// Files that nobody has read yet.
class Reading {
 public:
  Reading(FileKind kind, const std::vector<GameFile>& files, std::vector<std::size_t> unread,
          std::vector<std::string> hostPaths, ItemTable& items, std::vector<FileFacts>& facts)
      : kind_(kind),
        files_(files),
        unread_(std::move(unread)),
        hostPaths_(std::move(hostPaths)),
        items_(items),
        facts_(facts) {}

  /// Whatever ends the waiting, no thread outlives it.
  ~Reading() {
    next_ = unread_.size();
    for (auto& thread : threads_) thread.join();
  }

  void Run(const std::function<void(std::size_t done)>& tick) {
    if (unread_.empty()) return;
    StartWorkers(threads_, WorkerCount(), [this] { Work(); });
    if (threads_.empty()) Work();
    for (std::unique_lock lock(mutex_); done_ < unread_.size() && !failure_;) {
      allDone_.wait_for(lock, kTickInterval);
      lock.unlock();
      tick(done_);
      lock.lock();
    }
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  void Work() {
    try {
      std::vector<FoundItem> found;
      for (std::size_t i = next_++; i < unread_.size(); i = next_++) ReadOne(i, found);
    } catch (...) {
      const std::lock_guard lock(mutex_);
      failure_ = std::current_exception();
      allDone_.notify_one();
    }
  }

  void ReadOne(std::size_t i, std::vector<FoundItem>& found) {
    found.clear();
    const std::size_t file = unread_[i];
    facts_[file] = Take(hostPaths_[i], files_[file].path, found);
    const std::lock_guard lock(mutex_);
    Number(found, items_, facts_[file]);
    if (++done_ == unread_.size()) allDone_.notify_one();
  }

  FileFacts Take(const std::string& hostPath, const std::string& path, std::vector<FoundItem>& found) const {
    std::string bytes;
    if (const RawInput input(hostPath); input.IsOpen() && input.ReadAt(0, input.Size(), bytes))
      return TakeFacts(kind_, GameText(path, bytes), found);
    FileFacts facts;
    facts.broken = FileFacts::Broken::Reading;
    return facts;
  }

  const FileKind kind_;
  const std::vector<GameFile>& files_;
  const std::vector<std::size_t> unread_;  // places among the files
  const std::vector<std::string> hostPaths_;
  ItemTable& items_;
  std::mutex mutex_;  // of the items and the failure
  std::condition_variable allDone_;
  std::vector<FileFacts>& facts_;
  std::atomic<std::size_t> next_ = 0, done_ = 0;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace

FileFacts FactsReader::Take(FileKind kind, const std::string& path, std::string_view bytes) {
  std::vector<FoundItem> found;
  FileFacts facts = TakeFacts(kind, GameText(path, bytes), found);
  Number(found, Items(), facts);
  return facts;
}

std::vector<FileFacts> FactsReader::Read(FileKind kind, const std::vector<GameFile>& files,
                                         const std::function<void(std::size_t done)>& tick) {
  std::vector<FileFacts> facts(files.size());
  std::vector<std::size_t> unread;
  std::vector<std::string> hostPaths;
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (cache_.Take(kind, files[i], facts[i])) continue;
    unread.push_back(i);
    hostPaths.push_back(program_.files.Host().HostPath(files[i].path));
  }
  Reading(kind, files, unread, std::move(hostPaths), Items(), facts).Run([&](std::size_t done) {
    if (tick) tick(files.size() - unread.size() + done);
  });
  for (const std::size_t i : unread) {
    if (facts[i].broken != FileFacts::Broken::Reading) continue;
    // Read in the ordinary way, which says what is wrong.
    try {
      program_.files.ReadAll(files[i].path);
      facts[i].error = std::make_shared<RunTimeError>(ErrorNumber::DeviceIoError, files[i].path);
    } catch (const RunTimeError& error) {
      facts[i].error = std::make_shared<RunTimeError>(error);
    }
  }
  return facts;
}

}  // namespace quillon
