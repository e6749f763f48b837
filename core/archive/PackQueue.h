// Packs files on several threads, to be taken in order.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace quillon {

/// One file, deflated.
struct PackedFile {
  std::string data;
  std::uint64_t size = 0;  // bytes, unpacked
  std::uint32_t crc = 0;
};

/// Worker threads that stay a bounded way ahead of the one who takes.
class PackQueue {
 public:
  /// One file to pack: its host name, its name for messages, its size when it was listed.
  struct Source {
    std::string hostPath, path;
    std::uint64_t size = 0;
  };

  /// Without `threads` Take does the work itself.
  PackQueue(std::vector<Source> sources, unsigned threads, std::function<void()> idle);
  ~PackQueue();

  /// The packed file; each index once, in rising order. Throws the RunTimeError of a file that can't be read.
  PackedFile Take(std::size_t index);

 private:
  struct Slot {
    PackedFile packed;
    std::exception_ptr failure;
    bool ready = false;
  };

  void Work();

  const std::vector<Source> sources_;
  const std::function<void()> idle_;
  std::mutex mutex_;
  std::condition_variable room_, ready_;
  std::vector<Slot> slots_;
  std::size_t next_ = 0, taken_ = 0;
  std::uint64_t bytesAhead_ = 0;
  bool stop_ = false;
  std::vector<std::thread> threads_;
};

/// Files above this are packed as a stream instead, one at a time.
inline constexpr std::uint64_t kPackWholeLimit = 8u << 20;

}  // namespace quillon
