// The same work on many things, on all processors.
#pragma once

#include <cstddef>
#include <functional>

namespace quillon {

/// Calls `work` with each number below `count`, on several threads where they can be had; `tick` hears on the
/// caller's thread now and then how many are done. Throws what `work` or `tick` throws, when no thread runs
/// any more.
void OnAllProcessors(std::size_t count, const std::function<void(std::size_t)>& work,
                     const std::function<void(std::size_t done)>& tick);

}  // namespace quillon
