// What every target is made of.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "fuzz/MemoryFiles.h"
#include "headless/HeadlessFrontEnd.h"
#include "stage/RunningProgram.h"

namespace quillon::fuzz {

/// What a target does with an input; every target defines it. A RunTimeError and a Damage are answers, all
/// else that it throws is a finding.
void Try(std::string_view bytes);

/// Ends the process with a finding.
void Require(bool holds, const char* what);

/// A silent program, its application folder \app, its game \game.
class World {
 public:
  /// On a disk in memory.
  World();
  /// On the machine's disk, in a folder of its own that `Folder` names.
  struct OnDisk {};
  explicit World(OnDisk);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  Program& Get() { return program_->Get(); }
  Files& DiskFiles() { return Get().files; }
  /// Only of a world in memory.
  MemoryFiles& Memory() { return *memory_; }
  /// Of a world on the disk, without a closing separator; the application folder is `app` in it.
  const std::string& Folder() const { return folder_; }

 private:
  class Silence : public Output {
   public:
    void Put(const Event&) override {}
  };

  Silence silence_;
  const Options options_;
  HeadlessFrontEnd frontEnd_{silence_, options_};
  std::string folder_;
  MemoryFiles* memory_ = nullptr;
  std::unique_ptr<RunningProgram> program_;
};

}  // namespace quillon::fuzz
