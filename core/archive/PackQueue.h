// Packs files, or what else comes in pieces, on several threads, to be taken in order.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct libdeflate_compressor;

namespace quillon {

/// One file, deflated.
struct PackedFile {
  std::string data;
  std::uint64_t size = 0;  // bytes, unpacked
  std::uint32_t crc = 0;
};

/// `bytes` packed, and what a zip tells of them.
PackedFile Deflated(libdeflate_compressor* compressor, const std::string& bytes);

/// Worker threads that stay a bounded way ahead of the one who takes.
class PackQueue {
 public:
  /// What is to be packed, in one piece: `sizes` tells the bytes, about. Called on several threads, in rising
  /// order of the index as far as each call's beginning goes; what it throws is thrown by Take.
  using Read = std::function<std::string(std::size_t index)>;

  /// Without `threads` Take does the work itself.
  PackQueue(std::vector<std::uint64_t> sizes, Read read, unsigned threads, std::function<void()> idle);
  ~PackQueue();

  /// The packed file; each index once, in rising order. Throws what reading it threw.
  PackedFile Take(std::size_t index);

 private:
  struct Slot {
    PackedFile packed;
    std::exception_ptr failure;
    bool ready = false;
  };

  void Work();

  const std::vector<std::uint64_t> sizes_;
  const Read read_;
  const std::function<void()> idle_;
  std::mutex mutex_;
  std::condition_variable room_, ready_;
  std::vector<Slot> slots_;
  std::size_t next_ = 0, taken_ = 0;
  std::uint64_t bytesAhead_ = 0;
  bool stop_ = false;
  std::vector<std::thread> threads_;
};

/// Reads a file for a PackQueue. `path` is `hostPath` in the system's form, for messages.
std::string ReadWhole(const std::string& hostPath, const std::string& path);

/// Files above this are packed as a stream instead, one at a time.
inline constexpr std::uint64_t kPackWholeLimit = 8u << 20;

}  // namespace quillon
