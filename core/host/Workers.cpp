#include "core/host/Workers.h"

#include <algorithm>
#include <chrono>

namespace quillon {
namespace {

constexpr unsigned kMostThreads = 6;  // each may hold a packed and an unpacked entry
constexpr auto kTickInterval = std::chrono::milliseconds(20);

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

SharedWork::~SharedWork() {
  {
    const std::lock_guard lock(mutex_);
    allowed_ = next_;
    complete_ = true;
  }
  moreToDo_.notify_all();
  for (auto& thread : threads_) thread.join();
}

void SharedWork::Allow(std::size_t count) {
  {
    const std::lock_guard lock(mutex_);
    if (!failure_) allowed_ = count;
  }
  if (count > 1 && threads_.empty()) StartWorkers(threads_, WorkerCount(), [this] { Work(); });
  moreToDo_.notify_one();
}

void SharedWork::Finish(const std::function<void(std::size_t done)>& tick) {
  {
    const std::lock_guard lock(mutex_);
    complete_ = true;
  }
  moreToDo_.notify_all();
  if (threads_.empty()) Work();
  for (std::unique_lock lock(mutex_); done_ < allowed_ && !failure_;) {
    allDone_.wait_for(lock, kTickInterval);
    const std::size_t done = done_;
    lock.unlock();
    tick(done);
    lock.lock();
  }
  if (failure_) std::rethrow_exception(failure_);
}

void SharedWork::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    moreToDo_.wait(lock, [this] { return complete_ || next_ < allowed_; });
    if (next_ >= allowed_) return;
    const std::size_t number = next_++;
    lock.unlock();
    std::exception_ptr failure;
    try {
      work_(number);
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    ++done_;
    if (failure) {
      failure_ = failure;
      next_ = allowed_;
    }
    if (complete_ && (failure_ || done_ == allowed_)) allDone_.notify_one();
  }
}

void OnAllProcessors(std::size_t count, const std::function<void(std::size_t)>& work,
                     const std::function<void(std::size_t done)>& tick) {
  if (count == 0) return;
  SharedWork shared(work);
  shared.Allow(count);
  shared.Finish(tick);
}

}  // namespace quillon
