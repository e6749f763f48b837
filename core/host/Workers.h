// Threads that share one piece of work.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace quillon {

/// How long one who waits for workers may stay away from other things.
inline constexpr std::chrono::milliseconds kIdleInterval{40};

/// Worker threads that suit this machine.
unsigned WorkerCount();

/// Starts `count` threads, or as many as the machine gives; perhaps none. `threads` is empty.
void StartWorkers(std::vector<std::thread>& threads, unsigned count, const std::function<void()>& work);

/// Numbered pieces of work, done on several threads where they can be had, while their owner prepares more.
class SharedWork {
 public:
  explicit SharedWork(std::function<void(std::size_t)> work) : work_(std::move(work)) {}
  /// Whatever ends the work, no thread outlives it; what was not begun is left.
  ~SharedWork();

  /// All numbers below `count` may be begun. A first one alone waits for a second, or for Finish.
  void Allow(std::size_t count);
  /// Waits for all that is allowed; a single one is done here. `tick` hears on the caller's thread now and
  /// then how many are done. Throws what the work or `tick` throws.
  void Finish(const std::function<void(std::size_t done)>& tick);

 private:
  void Work();

  const std::function<void(std::size_t)> work_;
  std::mutex mutex_;
  std::condition_variable moreToDo_, allDone_;
  std::size_t allowed_ = 0, next_ = 0, done_ = 0;
  bool complete_ = false;
  std::exception_ptr failure_;
  std::vector<std::thread> threads_;
};

/// Calls `work` with each number below `count`, on several threads where they can be had; `tick` hears on the
/// caller's thread now and then how many are done. Throws what `work` or `tick` throws, when no thread runs
/// any more.
void OnAllProcessors(std::size_t count, const std::function<void(std::size_t)>& work,
                     const std::function<void(std::size_t done)>& tick);

}  // namespace quillon
