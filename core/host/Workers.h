// Threads that share one piece of work.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

namespace quillon {

/// How long one who waits for workers may stay away from other things.
inline constexpr std::chrono::milliseconds kIdleInterval{40};

/// Worker threads that suit this machine.
unsigned WorkerCount();

/// Starts `count` threads, or as many as the machine gives; perhaps none. `threads` is empty.
void StartWorkers(std::vector<std::thread>& threads, unsigned count, const std::function<void()>& work);

/// Calls `work` with each number below `count`, on several threads where they can be had; `tick` hears on the
/// caller's thread now and then how many are done. Throws what `work` or `tick` throws, when no thread runs
/// any more.
void OnAllProcessors(std::size_t count, const std::function<void(std::size_t)>& work,
                     const std::function<void(std::size_t done)>& tick);

}  // namespace quillon
