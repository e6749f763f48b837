// Work that takes long and touches nothing else, done aside.
#pragma once

#include <chrono>
#include <future>

#include "core/Progress.h"

namespace quillon {

/// Runs `work` on a thread of its own while `progress` yields, and gives its result or throws its exception.
template <typename Work>
auto Aside(Progress& progress, Work&& work) {
  constexpr auto kTurn = std::chrono::milliseconds(20);
  auto result = std::async(std::launch::async, std::forward<Work>(work));
  while (result.wait_for(kTurn) != std::future_status::ready) progress.Yield();
  return result.get();
}

}  // namespace quillon
