// What every target is made of.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/Program.h"
#include "fuzz/MemoryFiles.h"

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

  Program& Get();
  Files& DiskFiles() { return Get().files; }
  /// Only of a world in memory.
  MemoryFiles& Memory() { return *memory_; }
  /// Of a world on the disk, without a closing separator; the application folder is `app` in it.
  const std::string& Folder() const { return folder_; }

 private:
  struct Parts;

  std::string folder_;
  MemoryFiles* memory_ = nullptr;
  std::unique_ptr<Parts> parts_;
};

}  // namespace quillon::fuzz
