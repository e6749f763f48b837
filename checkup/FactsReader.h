// Reads the facts of thousands of files, on all processors.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "checkup/FactsCache.h"
#include "checkup/GameFacts.h"
#include "core/Program.h"

namespace quillon {

class FactsReader {
 public:
  /// Both outlive the reader.
  FactsReader(Program& program, FactsCache& cache);
  ~FactsReader();

  ItemTable& Items() { return cache_.Items(); }
  const ItemTable& Items() const { return cache_.Items(); }

  /// Begins to take the facts of each file into `facts`, in order; what the cache knows is not read. What
  /// can't be read says so in its facts. Both lists are left alone until Finish.
  void Begin(FileKind kind, const std::vector<GameFile>& files, std::vector<FileFacts>& facts);
  /// Waits for all that was begun. `tick` hears how many files are done, of how many, on the caller's thread.
  void Finish(const std::function<void(std::size_t done, std::size_t all)>& tick = {});

  /// Both at once.
  std::vector<FileFacts> Read(FileKind kind, const std::vector<GameFile>& files);
  /// The facts of one file in memory.
  FileFacts Take(FileKind kind, const std::string& path, std::string_view bytes);

 private:
  class Reading;
  struct Batch;

  void SayWhatIsWrong(const Batch& batch);

  Program& program_;
  FactsCache& cache_;
  std::unique_ptr<Reading> reading_;  // from the first Begin to Finish
};

}  // namespace quillon
