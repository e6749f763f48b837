#include "core/archive/ArchiveCheck.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <numeric>
#include <thread>

#include "core/archive/ZipLayout.h"
#include "core/host/Workers.h"

namespace quillon {
namespace {

// What a zip may claim: even terrain that is all flat does not pack as well as this.
constexpr std::uint64_t kMostRatio = 200;  // of unpacked to packed, beyond the first

/// Hands the entries out to the threads, the largest first: none is left alone with one at the end.
class Check {
 public:
  Check(std::string hostPath, const std::vector<ArchiveEntry>& entries)
      : hostPath_(std::move(hostPath)), entries_(entries), order_(entries.size()) {
    std::iota(order_.begin(), order_.end(), 0);
    std::stable_sort(order_.begin(), order_.end(), [&](int a, int b) { return At(a).size > At(b).size; });
    for (const auto& entry : entries) all_ = SaturatedSum(all_, entry.size);
  }

  /// Also when `progress` has thrown: no thread outlives what it works on.
  ~Check() {
    next_ = order_.size();
    for (auto& thread : threads_) thread.join();
  }

  std::vector<int> Run(const std::function<void(std::uint64_t, std::uint64_t)>& progress) {
    running_ = WorkerCount();
    StartWorkers(threads_, running_, [this] { Work(); });
    {
      std::unique_lock lock(mutex_);
      running_ -= WorkerCount() - static_cast<unsigned>(threads_.size());
      while (running_ > 0) {
        done_.wait_for(lock, kIdleInterval);
        lock.unlock();
        progress(bytes_, all_);
        lock.lock();
      }
    }
    if (threads_.empty()) {
      ++running_;
      Work();
    }
    if (failure_) std::rethrow_exception(failure_);
    const std::lock_guard lock(mutex_);
    std::sort(damaged_.begin(), damaged_.end());
    return std::move(damaged_);
  }

 private:
  const ArchiveEntry& At(int index) const { return entries_[static_cast<std::size_t>(index)]; }

  void Work() {
    std::vector<int> damaged;
    std::exception_ptr failure;
    try {
      ZipFile zip(hostPath_, entries_);
      for (std::size_t i = next_++; i < order_.size(); i = next_++)
        if (!IsWhole(zip, order_[i])) damaged.push_back(order_[i]);
    } catch (...) {
      failure = std::current_exception();
      next_ = order_.size();
    }
    const std::lock_guard lock(mutex_);
    damaged_.insert(damaged_.end(), damaged.begin(), damaged.end());
    if (failure) failure_ = failure;
    --running_;
    done_.notify_one();
  }

  bool IsWhole(ZipFile& zip, int index) {
    const ArchiveEntry& entry = At(index);
    if (entry.folder() || !entry.Obstacle().empty()) return true;
    try {
      zip.Unpack(static_cast<std::size_t>(index), [this](std::string_view piece) { bytes_ += piece.size(); });
      return true;
    } catch (const Damage&) {
      return false;
    }
  }

  const std::string hostPath_;
  const std::vector<ArchiveEntry>& entries_;
  std::vector<int> order_;
  std::uint64_t all_ = 0;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<std::uint64_t> bytes_ = 0;
  std::mutex mutex_;
  std::condition_variable done_;
  unsigned running_ = 0;
  std::vector<int> damaged_;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace

std::string BombIn(Files& files, const ArchiveReader& archive) {
  if (archive.EntryCount() == 0) return {};
  if (const std::string name = FindOverlap(files.Host().HostPath(archive.InputFile)); !name.empty())
    return "entries overlap in the file: " + name;
  std::uint64_t claimed = 0;
  for (const auto& entry : archive.Entries()) claimed = SaturatedSum(claimed, entry.size);
  const std::string much = ": " + std::to_string(claimed >> 20) + " MB";
  if (claimed > files.Host().DiskOf(archive.InputFile).size)
    return "it claims more than the disk holds" + much;
  if (claimed > kAlwaysRoom && claimed / kMostRatio > files.Size(archive.InputFile))
    return "it claims more than any honest file of its size holds" + much;
  return {};
}

std::vector<int> DamagedEntries(Files& files, const ArchiveReader& archive,
                                const std::function<void(std::uint64_t done, std::uint64_t all)>& progress) {
  if (archive.EntryCount() == 0) return {};
  try {
    return Check(files.Host().HostPath(archive.InputFile), archive.Entries()).Run(progress);
  } catch (const Damage& damage) {
    throw RunTimeError(ErrorNumber::InvalidFileFormat, archive.InputFile, damage.reason);
  }
}

}  // namespace quillon
