#include "core/archive/PackQueue.h"

#include <libdeflate.h>

#include <array>
#include <chrono>
#include <memory>
#include <new>
#include <utility>

#include "core/RunTimeError.h"
#include "core/host/Holder.h"
#include "core/host/RawFile.h"
#include "core/host/Workers.h"

namespace quillon {
namespace {

constexpr int kLevel = 6;  // the usual default of zip programs
constexpr std::uint64_t kMostBytesAhead = 24u << 20;
constexpr std::size_t kMostFilesAhead = 512;

/// One a thread: a compressor serves one at a time.
class Packer {
 public:
  PackedFile Pack(const std::string& bytes);

 private:
  struct Free {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
  };

  libdeflate_compressor* Compressor(int level);
  bool GivesNothing(const std::string& bytes);

  std::array<std::unique_ptr<libdeflate_compressor, Free>, kLevel + 1> compressors_;  // by level
};

libdeflate_compressor* Packer::Compressor(int level) {
  auto& compressor = compressors_[static_cast<std::size_t>(level)];
  if (!compressor) compressor.reset(libdeflate_alloc_compressor(level));
  if (!compressor) throw std::bad_alloc();
  return compressor.get();
}

/// Whether the file is packed in itself: what gives nothing at three places is not worth the search
/// elsewhere.
bool Packer::GivesNothing(const std::string& bytes) {
  constexpr std::size_t kProbe = 16u << 10, kLeast = kProbe - kProbe / 32;
  if (bytes.size() < 3 * kProbe) return false;
  std::array<char, kLeast> room;  // a probe that does not fit gives nothing
  for (const std::size_t at : {std::size_t{0}, bytes.size() / 2, bytes.size() - kProbe})
    if (libdeflate_deflate_compress(Compressor(1), bytes.data() + at, kProbe, room.data(), room.size()) != 0)
      return false;
  return true;
}

PackedFile Packer::Pack(const std::string& bytes) {
  return Deflated(Compressor(GivesNothing(bytes) ? 0 : kLevel), bytes);
}

}  // namespace

PackedFile Deflated(libdeflate_compressor* compressor, const std::string& bytes) {
  PackedFile packed;
  packed.size = bytes.size();
  packed.crc = libdeflate_crc32(0, bytes.data(), bytes.size());
  packed.data.resize(libdeflate_deflate_compress_bound(compressor, bytes.size()));
  packed.data.resize(libdeflate_deflate_compress(compressor, bytes.data(), bytes.size(), packed.data.data(),
                                                 packed.data.size()));
  packed.data.shrink_to_fit();
  return packed;
}

std::string ReadWhole(const std::string& hostPath, const std::string& path) {
  const RawInput file(hostPath);
  if (!file.IsOpen()) {
    const std::string reason = OpenElsewhere(path);
    throw RunTimeError(ErrorNumber::PathFileAccessError, path,
                       reason.empty() ? "it can't be opened" : reason);
  }
  std::string bytes;
  if (!file.ReadAt(0, file.Size(), bytes)) throw RunTimeError(ErrorNumber::DeviceIoError, path);
  return bytes;
}

PackQueue::PackQueue(std::vector<std::uint64_t> sizes, Read read, unsigned threads,
                     std::function<void()> idle)
    : sizes_(std::move(sizes)), read_(std::move(read)), idle_(std::move(idle)), slots_(sizes_.size()) {
  StartWorkers(threads_, threads, [this] { Work(); });
}

PackQueue::~PackQueue() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  room_.notify_all();
  for (auto& thread : threads_) thread.join();
}

void PackQueue::Work() {
  Packer packer;
  std::unique_lock lock(mutex_);
  for (;;) {
    // The file that is waited for is always packed, however much lies ahead.
    room_.wait(lock, [this] {
      return stop_ || next_ == slots_.size() || next_ == taken_ ||
             (bytesAhead_ < kMostBytesAhead && next_ - taken_ < kMostFilesAhead);
    });
    if (stop_ || next_ == slots_.size()) return;
    const std::size_t mine = next_++;
    bytesAhead_ += sizes_[mine];
    lock.unlock();
    Slot slot;
    try {
      slot.packed = packer.Pack(read_(mine));
    } catch (...) {
      slot.failure = std::current_exception();
    }
    slot.ready = true;
    lock.lock();
    slots_[mine] = std::move(slot);
    ready_.notify_one();
  }
}

PackedFile PackQueue::Take(std::size_t index) {
  if (threads_.empty()) return Packer().Pack(read_(index));
  std::unique_lock lock(mutex_);
  while (!slots_[index].ready) {
    if (ready_.wait_for(lock, kIdleInterval) == std::cv_status::timeout) {
      lock.unlock();
      idle_();
      lock.lock();
    }
  }
  Slot slot = std::exchange(slots_[index], {});
  taken_ = index + 1;
  bytesAhead_ -= sizes_[index];
  room_.notify_all();
  lock.unlock();
  if (slot.failure) std::rethrow_exception(slot.failure);
  return std::move(slot.packed);
}

}  // namespace quillon
