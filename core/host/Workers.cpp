#include "core/host/Workers.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>

namespace quillon {
namespace {

constexpr unsigned kMostThreads = 6;  // each may hold a packed and an unpacked entry
constexpr auto kTickInterval = std::chrono::milliseconds(20);

class Shared {
 public:
  Shared(std::size_t count, const std::function<void(std::size_t)>& work) : count_(count), work_(work) {}

  /// Whatever ends the waiting, no thread outlives it.
  ~Shared() {
    next_ = count_;
    for (auto& thread : threads_) thread.join();
  }

  void Run(const std::function<void(std::size_t done)>& tick) {
    if (count_ > 1) StartWorkers(threads_, WorkerCount(), [this] { Work(); });
    if (threads_.empty()) Work();
    for (std::unique_lock lock(mutex_); done_ < count_ && !failure_;) {
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
      for (std::size_t i = next_++; i < count_; i = next_++) {
        work_(i);
        const std::lock_guard lock(mutex_);
        if (++done_ == count_) allDone_.notify_one();
      }
    } catch (...) {
      const std::lock_guard lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
      allDone_.notify_one();
    }
  }

  const std::size_t count_;
  const std::function<void(std::size_t)>& work_;
  std::mutex mutex_;
  std::condition_variable allDone_;
  std::atomic<std::size_t> next_ = 0, done_ = 0;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

}  // namespace

unsigned WorkerCount() { return std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads); }

void StartWorkers(std::vector<std::thread>& threads, unsigned count, const std::function<void()>& work) {
  threads.reserve(count);
  try {
    while (threads.size() < count) threads.emplace_back(work);
  } catch (const std::exception&) {
    // Those that run do it all. None of them may be left behind by an exception.
  }
}

void OnAllProcessors(std::size_t count, const std::function<void(std::size_t)>& work,
                     const std::function<void(std::size_t done)>& tick) {
  if (count > 0) Shared(count, work).Run(tick);
}

}  // namespace quillon
