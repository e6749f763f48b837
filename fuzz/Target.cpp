#include "fuzz/Target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "core/archive/ZipFile.h"

namespace quillon::fuzz {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

World::World() {
  auto files = std::make_unique<MemoryFiles>();
  memory_ = files.get();
  program_ = std::make_unique<RunningProgram>("\\app", frontEnd_, 1, std::move(files));
  Get().shared.TrainSimPath = "\\game";
}

World::World(OnDisk) {
  const std::string name = "quillon-fuzz-" + std::to_string(std::random_device()());
  folder_ = (std::filesystem::temp_directory_path() / name).string();
  std::filesystem::create_directories(folder_ + "/app");
  program_ = std::make_unique<RunningProgram>(folder_ + "/app", frontEnd_, 1);
  Get().shared.TrainSimPath = folder_ + "\\game";
}

World::~World() {
  if (!folder_.empty()) std::filesystem::remove_all(folder_);
}

}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    quillon::fuzz::Try({reinterpret_cast<const char*>(data), size});
  } catch (const quillon::RunTimeError&) {
  } catch (const quillon::Damage&) {
  }
  return 0;
}
