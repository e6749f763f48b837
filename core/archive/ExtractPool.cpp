#include "core/archive/ExtractPool.h"

#include <utility>

#include "core/Files.h"
#include "core/host/RawFile.h"

namespace quillon {
namespace {

constexpr std::size_t kQueueLength = 256;

}  // namespace

ExtractPool::ExtractPool(std::string archiveHostPath, std::string archivePath,
                         const std::vector<ArchiveEntry>& entries, unsigned threads,
                         std::function<void(const ExtractJob&, const Damage&)> damaged,
                         std::function<void()> idle)
    : archiveHostPath_(std::move(archiveHostPath)),
      archivePath_(std::move(archivePath)),
      entries_(entries),
      damaged_(std::move(damaged)),
      idle_(std::move(idle)) {
  StartWorkers(threads_, threads, [this] { Work(); });
  if (threads_.empty()) ownZip_ = std::make_unique<ZipFile>(archiveHostPath_, entries_);
}

ExtractPool::~ExtractPool() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
    jobs_.clear();
  }
  jobReady_.notify_all();
  for (auto& thread : threads_) thread.join();
}

void ExtractPool::Put(ExtractJob job) {
  if (ownZip_) {
    try {
      Do(*ownZip_, job);
    } catch (const Damage& damage) {
      damaged_(job, damage);
    }
    return;
  }
  if (QueueIsFull()) WaitFor([this] { return jobs_.size() <= kQueueLength / 2; });
  {
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
  }
  jobReady_.notify_one();
}

bool ExtractPool::QueueIsFull() {
  const std::lock_guard lock(mutex_);
  return jobs_.size() >= kQueueLength || failure_;
}

void ExtractPool::Drain() {
  if (!ownZip_) WaitFor([this] { return jobs_.empty() && busy_ == 0; });
}

void ExtractPool::WaitFor(const std::function<bool()>& ready) {
  std::unique_lock lock(mutex_);
  waiting_ = true;
  while (!failure_ && !ready()) {
    if (jobDone_.wait_for(lock, kIdleInterval) == std::cv_status::timeout) {
      lock.unlock();
      idle_();
      lock.lock();
    }
  }
  waiting_ = false;
  if (failure_) std::rethrow_exception(failure_);
  TellDamages(lock);
}

void ExtractPool::TellDamages(std::unique_lock<std::mutex>& lock) {
  const auto damages = std::exchange(damages_, {});
  lock.unlock();
  for (const auto& [job, damage] : damages) damaged_(job, damage);
}

void ExtractPool::Work() {
  std::unique_ptr<ZipFile> zip;
  std::unique_lock lock(mutex_);
  for (;;) {
    jobReady_.wait(lock, [this] { return stop_ || !jobs_.empty(); });
    if (stop_) return;
    const ExtractJob job = std::move(jobs_.front());
    jobs_.pop_front();
    ++busy_;
    lock.unlock();
    std::exception_ptr failure;
    try {
      if (!zip) zip = std::make_unique<ZipFile>(archiveHostPath_, entries_);
      Do(*zip, job);
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    --busy_;
    if (failure) Record(job, failure);
    // The caller sleeps until half of a full queue is done, or all of it.
    if (waiting_ && (failure_ || jobs_.size() <= kQueueLength / 2)) jobDone_.notify_one();
  }
}

/// Damage is told of and passed over; all else ends the work.
void ExtractPool::Record(const ExtractJob& job, const std::exception_ptr& outcome) {
  try {
    try {
      std::rethrow_exception(outcome);
    } catch (const Damage& damage) {
      damages_.emplace_back(job, damage);
    }
  } catch (...) {
    if (!failure_) failure_ = std::current_exception();
    jobs_.clear();
  }
}

void ExtractPool::Do(ZipFile& zip, const ExtractJob& job) {
  RawFile file(job.hostPath);
  if (file.Code() == FileCode::Ok) zip.Unpack(job.index, [&](std::string_view piece) { file.Write(piece); });
  if (file.Keep(entries_[job.index].modified) != FileCode::Ok) RaiseFileError(file.Code(), job.path);
  bytesDone_ += entries_[job.index].size;
  ++filesDone_;
}

}  // namespace quillon
