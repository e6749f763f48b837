#include "core/archive/ForeignArchive.h"

#include <archive.h>
#include <archive_entry.h>
#include <libdeflate.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <utility>

#include "core/archive/ArchiveCheck.h"
#include "core/archive/ArchiveNames.h"
#include "core/archive/ArchiveReader.h"
#include "core/archive/PackQueue.h"
#include "core/archive/ZipBuilder.h"
#include "core/host/ArchiveLocale.h"
#include "core/host/RawFile.h"
#include "core/host/Workers.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view k7z("7z\xBC\xAF\x27\x1C", 6), kRar("Rar!\x1A\x07", 6);
constexpr std::size_t kLongestStub = 4u << 20, kPiece = 256u << 10;  // bytes
constexpr std::size_t kMostMarks = 16, kMostEntries = 300'000;
constexpr std::uint64_t kMostForeignRatio = 1100;  // of unpacked to packed, beyond the first
constexpr std::uint64_t kWholeLimit = 32u << 20;   // bytes; above it a file is packed as a stream

/// The parts of an archive as one run of bytes.
class Parts {
 public:
  /// `turn` is called while they are read; its exceptions wait in `failure`.
  Parts(const std::vector<std::string>& hostPaths, std::uint64_t skipped, std::function<void()> turn)
      : skipped_(skipped), turn_(std::move(turn)) {
    for (const auto& path : hostPaths) {
      inputs_.emplace_back(path);
      if (!inputs_.back().IsOpen()) throw Damage{"it can't be opened"};
      ends_.push_back(Size() + inputs_.back().Size());
    }
  }

  std::exception_ptr failure;

  std::string_view Read() {
    if (turn_) turn_();
    const std::uint64_t at = at_ + skipped_;
    const auto part =
        static_cast<std::size_t>(std::upper_bound(ends_.begin(), ends_.end(), at) - ends_.begin());
    if (part == ends_.size()) return {};
    const std::uint64_t begin = part == 0 ? 0 : ends_[part - 1];
    if (!inputs_[part].ReadAt(at - begin, kPiece, piece_)) throw Damage{"it can't be read from the disk"};
    at_ += piece_.size();
    return piece_;
  }
  std::int64_t Skip(std::int64_t count) {
    const std::uint64_t left = Length() - at_;
    const std::uint64_t skipped =
        std::min(left, static_cast<std::uint64_t>(std::max<std::int64_t>(count, 0)));
    at_ += skipped;
    return static_cast<std::int64_t>(skipped);
  }
  std::int64_t Seek(std::int64_t offset, int from) {
    const auto length = static_cast<std::int64_t>(Length());
    const std::int64_t base = from == SEEK_SET   ? 0
                              : from == SEEK_CUR ? static_cast<std::int64_t>(at_)
                                                 : length;
    // An archive may ask for any offset: the sum could overflow.
    if (offset < -base || offset > length - base) return ARCHIVE_FATAL;
    at_ = static_cast<std::uint64_t>(base + offset);
    return base + offset;
  }

 private:
  std::uint64_t Size() const { return ends_.empty() ? 0 : ends_.back(); }
  std::uint64_t Length() const { return Size() - std::min(Size(), skipped_); }

  const std::uint64_t skipped_;  // bytes of a program in front
  const std::function<void()> turn_;
  std::deque<RawInput> inputs_;
  std::vector<std::uint64_t> ends_;
  std::uint64_t at_ = 0;
  std::string piece_;
};

/// Where archives may begin in a file that begins with a program; the file's start for any other.
std::vector<std::uint64_t> Beginnings(const std::string& hostPath) {
  std::string head;
  const RawInput file(hostPath);
  if (!file.IsOpen() || !file.ReadAt(0, kLongestStub, head) || !head.starts_with("MZ")) return {0};
  std::vector<std::uint64_t> found;
  for (const auto mark : {k7z, kRar})
    for (auto at = head.find(mark); at != head.npos && found.size() < kMostMarks;
         at = head.find(mark, at + 1))
      found.push_back(at);
  return found;
}

/// A number of the newer rar format: seven bits a byte.
std::uint64_t RarNumber(std::string_view& bytes) {
  std::uint64_t value = 0;
  for (int shift = 0; shift < 63 && !bytes.empty(); shift += 7) {
    const auto byte = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
    if (byte < 0x80) break;
  }
  return value;
}

/// Whether the rar archive that begins there, its header's checksum right, is one of several volumes.
bool IsVolume(const std::string& hostPath, std::uint64_t at) {
  std::string head;
  const RawInput file(hostPath);
  if (!file.IsOpen() || !file.ReadAt(at, 512, head) || !head.starts_with(kRar) || head.size() < 32)
    return false;
  const auto number = [&head](std::size_t from, int count) {
    std::uint32_t value = 0;
    for (int i = count; i-- > 0;)
      value = value << 8 | static_cast<unsigned char>(head[from + static_cast<std::size_t>(i)]);
    return value;
  };
  if (head[6] == 0) {
    const std::size_t size = number(12, 2);
    return size > 6 && 7 + size <= head.size() &&
           (libdeflate_crc32(0, head.data() + 9, size - 2) & 0xFFFF) == number(7, 2) && (head[10] & 1) != 0;
  }
  std::string_view rest = std::string_view(head).substr(12);
  const std::uint64_t size = RarNumber(rest);
  const std::size_t length =
      head.size() - 12 - rest.size() + static_cast<std::size_t>(std::min<std::uint64_t>(size, 512));
  if (12 + length > head.size() || libdeflate_crc32(0, head.data() + 12, length) != number(8, 4))
    return false;
  RarNumber(rest);  // its kind
  if ((RarNumber(rest) & 1) != 0) RarNumber(rest);
  return (RarNumber(rest) & 1) != 0;
}

struct ForeignEntry {
  std::string name;
  std::uint64_t size = 0;
  std::time_t modified = 0;
  bool wanted = true;  // a file, and the last one of its name
};

/// An archive read from its first entry to its last. Not for two threads at once.
class ForeignReader {
 public:
  ForeignReader(const std::vector<std::string>& hostPaths, std::uint64_t begin,
                std::function<void()> turn = {})
      : parts_(hostPaths, begin, std::move(turn)), archive_(archive_read_new(), archive_read_free) {
    if (!archive_) throw std::bad_alloc();
    // Not all that the library knows: some of it starts other programs.
    for (const auto support :
         {archive_read_support_filter_gzip, archive_read_support_filter_bzip2, archive_read_support_filter_xz,
          archive_read_support_filter_lzma, archive_read_support_filter_zstd,
          archive_read_support_filter_compress, archive_read_support_format_7zip,
          archive_read_support_format_rar, archive_read_support_format_rar5, archive_read_support_format_tar,
          archive_read_support_format_lha, archive_read_support_format_cab})
      support(archive_.get());
    archive_read_set_read_callback(archive_.get(), &Read);
    archive_read_set_skip_callback(archive_.get(), &Skip);
    archive_read_set_seek_callback(archive_.get(), &Seek);
    archive_read_set_callback_data(archive_.get(), &parts_);
    const ArchiveLocale locale;
    if (archive_read_open1(archive_.get()) != ARCHIVE_OK) Fail();
  }

  bool Next(ForeignEntry& entry) {
    const ArchiveLocale locale;
    archive_entry* header = nullptr;
    const int result = archive_read_next_header(archive_.get(), &header);
    if (result == ARCHIVE_EOF) return false;
    if (result != ARCHIVE_OK && result != ARCHIVE_WARN) Fail();
    if (archive_entry_is_encrypted(header) != 0) throw Damage{kPassword};
    entry.name = NameOf(header);
    entry.wanted = archive_entry_filetype(header) == AE_IFREG && !IsSystemsOwn(entry.name);
    entry.size = static_cast<std::uint64_t>(std::max<la_int64_t>(archive_entry_size(header), 0));
    entry.modified = archive_entry_mtime(header);
    if (archive_entry_hardlink(header) != nullptr)
      throw Damage{"it holds a link in place of a file: " + entry.name};
    if (const char* harm = HarmIn(entry.name)) throw Damage{std::string(harm) + ": " + entry.name};
    if (entry.wanted && archive_entry_size_is_set(header) == 0)
      throw Damage{"it does not tell the size of " + entry.name};
    return true;
  }

  /// The next bytes of the entry; 0 at its end.
  std::size_t Read(char* bytes, std::size_t size) {
    const auto count = archive_read_data(archive_.get(), bytes, size);
    if (count < 0) Fail();
    return static_cast<std::size_t>(count);
  }

 private:
  static constexpr const char* kPassword = "it is protected by a password";

  [[noreturn]] void Fail() {
    if (parts_.failure) std::rethrow_exception(parts_.failure);
    const char* reason = archive_error_string(archive_.get());
    const std::string text = reason != nullptr ? reason : "it is no archive";
    if (Contains(LowerCase(text), "encrypt") || Contains(LowerCase(text), "passphrase"))
      throw Damage{kPassword};
    throw Damage{"it can't be read as an archive (" + text + ")"};
  }

  static std::string NameOf(archive_entry* header) {
    const char* name = archive_entry_pathname_utf8(header);
    if (name != nullptr) return NormalStoredName(name);
    name = archive_entry_pathname(header);
    return name != nullptr ? NormalStoredName(DecodeGameText(name)) : "";
  }

  // What the library calls: it knows no exceptions.
  static la_ssize_t Read(archive* reader, void* parts, const void** bytes) {
    auto& source = *static_cast<Parts*>(parts);
    try {
      const std::string_view piece = source.Read();
      *bytes = piece.data();
      return static_cast<la_ssize_t>(piece.size());
    } catch (...) {
      source.failure = std::current_exception();
      archive_set_error(reader, EIO, "its source failed");
      return ARCHIVE_FATAL;
    }
  }
  static la_int64_t Skip(archive*, void* parts, la_int64_t count) {
    return static_cast<Parts*>(parts)->Skip(count);
  }
  static la_int64_t Seek(archive*, void* parts, la_int64_t offset, int from) {
    return static_cast<Parts*>(parts)->Seek(offset, from);
  }

  Parts parts_;
  const std::unique_ptr<archive, int (*)(archive*)> archive_;
};

/// The archive at one of its possible beginnings, and all that it holds.
struct Listing {
  std::uint64_t begin = 0, size = 0;  // bytes
  std::vector<ForeignEntry> entries;
};

Listing List(const std::vector<std::string>& hostPaths, std::uint64_t begin, std::uint64_t most,
             const std::function<void()>& turn) {
  if (IsVolume(hostPaths.front(), begin))
    throw Damage{"it is one volume of several, which can't be joined here"};
  Listing listing{begin, 0, {}};
  std::unordered_map<std::string, std::size_t> lastOf;
  std::uint64_t claimed = 0;  // bytes; looked at on the way, for the way may be all that is asked for
  ForeignReader reader(hostPaths, begin, turn);
  for (ForeignEntry entry; reader.Next(entry);) {
    if (entry.wanted) {
      const auto [at, isNew] = lastOf.try_emplace(UpperCase(entry.name), listing.entries.size());
      if (!isNew) listing.entries[std::exchange(at->second, listing.entries.size())].wanted = false;
    }
    claimed = SaturatedSum(claimed, entry.size);
    if (claimed > most) throw Damage{"it claims more than the disk, or any honest file of its size, holds"};
    if (listing.entries.size() >= kMostEntries) throw Damage{"it holds more files than any route"};
    listing.entries.push_back(entry);
  }
  for (const auto& entry : listing.entries)
    if (entry.wanted) listing.size = SaturatedSum(listing.size, entry.size);
  return listing;
}

std::vector<std::string> HostPaths(Files& files, const std::vector<std::string>& parts) {
  std::vector<std::string> hostPaths;
  for (const auto& part : parts) hostPaths.push_back(files.Host().HostPath(part));
  return hostPaths;
}

/// What a program in front hides is found by trying.
Listing List(Files& files, const std::vector<std::string>& parts, const std::string& place,
             const std::function<void()>& turn) {
  const std::vector<std::string> hostPaths = HostPaths(files, parts);
  std::uint64_t packed = 0;
  for (const auto& part : parts) packed = SaturatedSum(packed, files.Size(part));
  const std::uint64_t most =
      std::min(files.Host().DiskOf(place).size, kAlwaysRoom + kMostForeignRatio * packed);
  std::string reason = "there is no archive in it";
  for (const std::uint64_t begin : Beginnings(hostPaths.front())) {
    try {
      return List(hostPaths, begin, most, turn);
    } catch (const Damage& damage) {
      reason = damage.reason;
    }
  }
  throw Damage{reason};
}

/// The wanted files of an archive, decoded in their order by a thread of its own, which is never far ahead of
/// those who pack them.
class Sequence {
 public:
  /// `listing` outlives it.
  Sequence(const std::vector<std::string>& hostPaths, const Listing& listing)
      : listing_(listing), reader_(hostPaths, listing.begin) {
    StartWorkers(thread_, 1, [this] { Work(); });
    if (thread_.empty()) throw RunTimeError(ErrorNumber::OutOfMemory, hostPaths.front());
  }
  /// Nobody waits any longer: it goes before those who ask it.
  ~Sequence() {
    Stop();
    thread_.front().join();
  }

  std::uint64_t BytesDone() const { return done_; }

  /// Ends the decoding: who asks from now on is told that it failed.
  void Stop() {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = std::make_exception_ptr(Damage{"it could not be read to its end"});
    turn_.notify_all();
  }

  /// The next piece of an entry, of which there must be one; the whole of an entry up to kWholeLimit.
  std::string Next(std::size_t index) {
    std::unique_lock lock(mutex_);
    turn_.wait(lock, [&] { return failure_ || ahead_.contains(index); });
    if (failure_) std::rethrow_exception(failure_);
    const auto at = ahead_.find(index);
    std::string piece = std::move(at->second.front());
    at->second.pop_front();
    if (at->second.empty()) ahead_.erase(at);
    bytesAhead_ -= piece.size();
    turn_.notify_all();
    return piece;
  }

  /// An entry above that as a stream; 0 at its end. One at a time.
  std::size_t Read(std::size_t index, char* bytes, std::size_t size) {
    if (restAt_ == rest_.size()) {
      if (streamed_ == listing_.entries[index].size) return streamed_ = 0;
      rest_ = Next(index);
      restAt_ = 0;
    }
    const std::size_t count = std::min(size, rest_.size() - restAt_);
    std::memcpy(bytes, rest_.data() + restAt_, count);
    restAt_ += count;
    streamed_ += count;
    return count;
  }

 private:
  static constexpr std::size_t kLongPiece = 1u << 20, kMostAhead = 16u << 20;  // bytes

  void Work() {
    try {
      for (std::size_t i = 0; i < listing_.entries.size(); ++i) Decode(i);
    } catch (...) {
      const std::lock_guard lock(mutex_);
      failure_ = std::current_exception();
      turn_.notify_all();
    }
  }
  void Decode(std::size_t index) {
    const ForeignEntry& expected = listing_.entries[index];
    ForeignEntry entry;
    if (!reader_.Next(entry) || entry.name != expected.name) Spoil(expected);
    if (!expected.wanted) return;
    const std::uint64_t most = expected.size > kWholeLimit ? kLongPiece : kWholeLimit;
    std::uint64_t left = expected.size;
    do {
      std::string piece(static_cast<std::size_t>(std::min(left, most)), '\0');
      Fill(piece, expected);
      left -= piece.size();
      char more;
      if (left == 0 && reader_.Read(&more, 1) != 0) Spoil(expected);
      Put(index, std::move(piece));
    } while (left > 0);
  }
  void Fill(std::string& piece, const ForeignEntry& expected) {
    for (std::size_t filled = 0; filled < piece.size();) {
      const std::size_t count = reader_.Read(piece.data() + filled, piece.size() - filled);
      if (count == 0) Spoil(expected);
      filled += count;
    }
    done_ += piece.size();
  }
  void Put(std::size_t index, std::string piece) {
    std::unique_lock lock(mutex_);
    turn_.wait(lock, [&] { return failure_ || bytesAhead_ < kMostAhead; });
    if (failure_) std::rethrow_exception(failure_);
    bytesAhead_ += piece.size();
    ahead_[index].push_back(std::move(piece));
    turn_.notify_all();
  }
  [[noreturn]] static void Spoil(const ForeignEntry& entry) {
    throw Damage{"the data of " + entry.name + " are damaged"};
  }

  const Listing& listing_;
  ForeignReader reader_;
  std::mutex mutex_;
  std::condition_variable turn_;
  std::unordered_map<std::size_t, std::deque<std::string>> ahead_;  // by entry
  std::size_t bytesAhead_ = 0;
  std::exception_ptr failure_;
  std::atomic<std::uint64_t> done_ = 0;
  std::string rest_;  // of a stream
  std::size_t restAt_ = 0;
  std::uint64_t streamed_ = 0;
  std::vector<std::thread> thread_;
};

/// Whatever ends the writing, no thread is left waiting for its turn.
struct StopAtEnd {
  Sequence& sequence;
  ~StopAtEnd() { sequence.Stop(); }
};

}  // namespace

bool HasForeignArchive(Files& files, const std::string& path, const std::function<void()>& turn) {
  try {
    return !List(files, {path}, path, turn).entries.empty();
  } catch (const Damage& damage) {
    // What is locked or in volumes is one; what can't be read at all may be anything.
    return !damage.reason.starts_with("it can't be read") && !damage.reason.starts_with("there is no");
  }
}

void RebuildAsZip(Files& files, const std::vector<std::string>& parts, const std::string& archiveFile,
                  const std::function<void(std::uint64_t done, std::uint64_t all)>& progress) {
  const Listing listing = List(files, parts, archiveFile, [&] { progress(0, 0); });
  std::uint64_t packed = 0;
  for (const auto& part : parts) packed += files.Size(part);
  files.RequireRoom(archiveFile, packed);

  const std::vector<std::string> hostPaths = HostPaths(files, parts);
  Sequence sequence(hostPaths, listing);
  std::vector<std::size_t> small;  // indices of what is packed in one piece
  std::vector<std::uint64_t> sizes;
  for (std::size_t i = 0; i < listing.entries.size(); ++i) {
    if (!listing.entries[i].wanted || listing.entries[i].size > kWholeLimit) continue;
    small.push_back(i);
    sizes.push_back(listing.entries[i].size);
  }
  const auto report = [&] { progress(sequence.BytesDone(), listing.size); };
  PackQueue queue(
      std::move(sizes), [&](std::size_t i) { return sequence.Next(small[i]); }, WorkerCount(), report);
  const StopAtEnd stop{sequence};
  ZipBuilder builder(files.Host().HostPath(archiveFile), archiveFile);
  std::size_t nextSmall = 0;
  for (std::size_t i = 0; i < listing.entries.size(); ++i) {
    const ForeignEntry& entry = listing.entries[i];
    if (!entry.wanted) continue;
    if (entry.size > kWholeLimit)
      builder.AddPieces(entry.name, entry.modified, entry.size,
                        [&, i](char* bytes, std::size_t size) { return sequence.Read(i, bytes, size); });
    else
      builder.AddPacked(entry.name, entry.modified, [&, mine = nextSmall++] { return queue.Take(mine); });
  }
  builder.Write([&](double) { report(); });
  files.Host().Touched(archiveFile, true);
}

}  // namespace quillon
