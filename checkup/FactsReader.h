// Reads the facts of thousands of files, on all processors.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "checkup/FactsCache.h"
#include "checkup/GameFacts.h"
#include "core/Program.h"

namespace quillon {

class FactsReader {
 public:
  /// Both outlive the reader.
  FactsReader(Program& program, FactsCache& cache) : program_(program), cache_(cache) {}

  ItemTable& Items() { return cache_.Items(); }
  const ItemTable& Items() const { return cache_.Items(); }

  /// The facts of each file, in order; what the cache knows is not read. What can't be read says so in its
  /// facts. `tick` hears how many are done, on the caller's thread.
  std::vector<FileFacts> Read(FileKind kind, const std::vector<GameFile>& files,
                              const std::function<void(std::size_t done)>& tick = {});

  /// Those of one file in memory.
  FileFacts Take(FileKind kind, const std::string& path, std::string_view bytes);

 private:
  Program& program_;
  FactsCache& cache_;
};

}  // namespace quillon
