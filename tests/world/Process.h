// The built program as a process.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace quillon {

/// A running `quillon`, its standard output in a pipe. The destructor waits for it.
class Process {
 public:
  /// What End tells of a process that was killed.
  static constexpr int kKilled = -9;

  /// `input` is the file that it reads, nothing when empty. `mostBlocks`, when not 0, is the longest file
  /// that it may write, in blocks of 512 bytes; only where CanLimitFiles.
  explicit Process(const std::vector<std::string>& words, const std::string& input = {}, int mostBlocks = 0);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  static bool CanLimitFiles();

  /// The next line without its end; false when there is none.
  bool Line(std::string& line);
  bool Runs() const;
  void Kill() const;
  /// Closes the pipe and waits; the exit status.
  int End();

 private:
  struct State;
  const std::unique_ptr<State> state_;
};

}  // namespace quillon
