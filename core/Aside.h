// Work that takes long and touches nothing else, done aside.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <system_error>

#include "core/Progress.h"

namespace quillon {

/// Runs `work` on a thread of its own while `progress` yields, and gives its result or throws its exception.
/// Where no thread can be had, it runs here.
template <typename Work>
auto Aside(Progress& progress, const Work& work) {
  constexpr auto kTurn = std::chrono::milliseconds(20);
  std::future<decltype(work())> result;
  try {
    result = std::async(std::launch::async, std::cref(work));
  } catch (const std::system_error&) {
    return work();
  }
  while (result.wait_for(kTurn) != std::future_status::ready) progress.Yield();
  return result.get();
}

}  // namespace quillon
