// Unpacks entries on several threads.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "core/archive/ZipFile.h"
#include "core/host/Workers.h"

namespace quillon {

/// One entry and the file that it becomes.
struct ExtractJob {
  std::size_t index = 0;
  std::string hostPath;  // an existing folder's; an old file there is replaced, never written through
  std::string path;      // the same in the system's form, for messages
};

/// Worker threads over one archive. A job's file is complete or, after a failure, absent.
class ExtractPool {
 public:
  /// `archive` and `entries` outlive the pool. Without `threads` Put does the work itself. `damaged`
  /// hears of entries that can't be unpacked, on the caller's thread; `idle` is called while the caller
  /// waits.
  ExtractPool(std::string archiveHostPath, std::string archivePath, const std::vector<ArchiveEntry>& entries,
              unsigned threads, std::function<void(const ExtractJob&, const Damage&)> damaged,
              std::function<void()> idle);
  ~ExtractPool();

  /// Hands over one job; waits while the workers are far behind.
  void Put(ExtractJob job);
  /// Waits until all jobs are done. Throws the RunTimeError of the first job that could not be written.
  void Drain();

  std::uint64_t BytesDone() const { return bytesDone_; }
  std::uint64_t FilesDone() const { return filesDone_; }

 private:
  bool QueueIsFull();
  void Work();
  void Record(const ExtractJob& job, const std::exception_ptr& outcome);
  void Do(ZipFile& zip, const ExtractJob& job);
  void WaitFor(const std::function<bool()>& ready);
  void TellDamages(std::unique_lock<std::mutex>& lock);

  const std::string archiveHostPath_, archivePath_;
  const std::vector<ArchiveEntry>& entries_;
  const std::function<void(const ExtractJob&, const Damage&)> damaged_;
  const std::function<void()> idle_;
  std::unique_ptr<ZipFile> ownZip_;  // for a pool without threads

  std::mutex mutex_;
  std::condition_variable jobReady_, jobDone_;
  std::deque<ExtractJob> jobs_;
  std::vector<std::pair<ExtractJob, Damage>> damages_;
  std::exception_ptr failure_;
  std::size_t busy_ = 0;
  bool stop_ = false, waiting_ = false;
  std::atomic<std::uint64_t> bytesDone_ = 0, filesDone_ = 0;
  std::vector<std::thread> threads_;
};

}  // namespace quillon
