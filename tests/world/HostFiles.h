// The product's file helpers on the disk of this machine.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/Files.h"

namespace quillon {

struct RecordedMeter : CopyMeter {
  void CopyFoundNothing(std::string_view caption) override { captions.emplace_back(caption); }
  void CopyMoved(int position) override { positions.push_back(position); }
  void CopyFailed(std::string_view path, FileCode) override { failed.emplace_back(path); }
  std::vector<std::string> captions, failed;
  std::vector<int> positions;
};

struct HostFiles {
  std::unique_ptr<FileSystem> host = MakeHostFileSystem();
  Random random{7};
  RecordedMeter meter;
  Files files{*host, random, meter};
};

/// The run-time error in which `action` ends, by number and path; 0 without one.
inline std::pair<int, std::string> ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RunTimeError& error) {
    return {error.number(), error.path()};
  }
  return {0, ""};
}

}  // namespace quillon
