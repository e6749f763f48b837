#include "fuzz/Target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "core/archive/ZipFile.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"

namespace quillon::fuzz {
namespace {

class Silence : public Output {
 public:
  void Put(const Event&) override {}
};

}  // namespace

struct World::Parts {
  explicit Parts(const std::string& app, std::unique_ptr<FileSystem> files = {})
      : program(app, frontEnd, 1, std::move(files)) {}

  Silence silence;
  const Options options;
  HeadlessFrontEnd frontEnd{silence, options};
  RunningProgram program;
};

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

World::World() {
  auto files = std::make_unique<MemoryFiles>();
  memory_ = files.get();
  parts_ = std::make_unique<Parts>("\\app", std::move(files));
  Get().shared.TrainSimPath = "\\game";
}

World::World(OnDisk) {
  const std::string name = "quillon-fuzz-" + std::to_string(std::random_device()());
  folder_ = (std::filesystem::temp_directory_path() / name).string();
  std::filesystem::create_directories(folder_ + "/app");
  parts_ = std::make_unique<Parts>(folder_ + "/app");
  Get().shared.TrainSimPath = folder_ + "\\game";
}

Program& World::Get() { return parts_->program.Get(); }

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
