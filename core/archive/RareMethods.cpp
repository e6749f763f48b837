#include "core/archive/RareMethods.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>
#include <memory>
#include <mutex>
#include <utility>

#include "core/archive/Inflate64.h"

namespace quillon {
namespace {

constexpr std::uint16_t kDeflate64 = 9, kBzip2 = 12, kLzma = 14, kXz = 95, kPpmd = 98;
constexpr std::array<std::pair<std::uint16_t, const char*>, 12> kNames = {{{1, "Shrink"},
                                                                           {6, "Implode"},
                                                                           {kDeflate64, "Deflate64"},
                                                                           {10, "DCL Implode"},
                                                                           {kBzip2, "BZip2"},
                                                                           {kLzma, "LZMA"},
                                                                           {93, "Zstandard"},
                                                                           {94, "MP3"},
                                                                           {kXz, "XZ"},
                                                                           {96, "JPEG"},
                                                                           {97, "WavPack"},
                                                                           {kPpmd, "PPMd"}}};

constexpr std::uint64_t kMostWindow = 64u << 20;  // bytes
constexpr std::uint64_t kSmallWindow = 8u << 20;  // bytes; above it one entry at a time is unpacked

using More = std::function<std::string_view()>;
using Sink = std::function<void(std::string_view)>;

void Put(std::string& bytes, std::uint64_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i));
}

/// With the sizes in the field for long ones.
std::string LocalHeader(const RareEntry& entry) {
  std::string bytes = "PK\3\4";
  Put(bytes, 63, 2);  // the version that is needed
  Put(bytes, 0, 2);
  Put(bytes, entry.method, 2);
  Put(bytes, 0, 4);
  Put(bytes, entry.crc, 4);
  Put(bytes, 0xFFFFFFFF, 4);
  Put(bytes, 0xFFFFFFFF, 4);
  Put(bytes, 1, 2);
  Put(bytes, 20, 2);
  bytes += 'x';
  Put(bytes, 1, 2);
  Put(bytes, 16, 2);
  Put(bytes, entry.size, 8);
  Put(bytes, entry.packedSize, 8);
  return bytes;
}

/// The library reads an archive that holds this one entry: the header here, the data as they come.
struct Feed {
  const More& more;
  std::string header;
  bool started = false;
  std::exception_ptr failure;  // the library knows no exceptions

  static la_ssize_t Read(archive* reader, void* self, const void** bytes) {
    auto& feed = *static_cast<Feed*>(self);
    std::string_view piece = feed.header;
    if (std::exchange(feed.started, true)) {
      try {
        piece = feed.more();
      } catch (...) {
        feed.failure = std::current_exception();
        archive_set_error(reader, EIO, "its source failed");
        return -1;
      }
    }
    *bytes = piece.data();
    return static_cast<la_ssize_t>(piece.size());
  }
};

/// The window that the data of an LZMA entry ask for, told in front of them.
std::uint64_t WindowOf(std::string_view head) {
  std::uint64_t window = 0;
  for (std::size_t i = 4; head.size() > 8 && i-- > 0;)
    window = window << 8 | static_cast<unsigned char>(head[5 + i]);
  return window;
}

bool UnpackStreamed(const RareEntry& entry, const More& more, const Sink& sink) {
  const std::unique_ptr<archive, int (*)(archive*)> reader(archive_read_new(), archive_read_free);
  if (!reader) throw std::bad_alloc();
  Feed feed{more, LocalHeader(entry), false, {}};
  const std::string_view first = more();
  // Not more than there are data for, whatever is told.
  const std::uint64_t window = entry.method == kLzma ? std::min(WindowOf(first), entry.size) : 0;
  if (window > kMostWindow) return false;
  static std::mutex oneLarge;
  std::unique_lock large(oneLarge, std::defer_lock);
  if (window > kSmallWindow) large.lock();
  feed.header += first;
  archive_read_support_format_zip_streamable(reader.get());
  archive_entry* header = nullptr;
  bool good = archive_read_open(reader.get(), &feed, nullptr, &Feed::Read, nullptr) == ARCHIVE_OK &&
              archive_read_next_header(reader.get(), &header) == ARCHIVE_OK;
  // The sizes are known: whether the data end there is not asked, for not all that are whole say so.
  for (std::uint64_t done = 0; good && done < entry.size;) {
    const void* bytes = nullptr;
    std::size_t size = 0;
    la_int64_t at = 0;
    const int result = archive_read_data_block(reader.get(), &bytes, &size, &at);
    good = result == ARCHIVE_OK || (result == ARCHIVE_WARN && size > 0);
    size = static_cast<std::size_t>(std::min<std::uint64_t>(size, entry.size - done));
    if (good) sink({static_cast<const char*>(bytes), size});
    done += size;
  }
  if (feed.failure) std::rethrow_exception(feed.failure);
  return good;
}

}  // namespace

bool IsRareMethod(std::uint16_t method) {
  return method == kDeflate64 || method == kBzip2 || method == kLzma || method == kXz || method == kPpmd;
}

std::string MethodName(std::uint16_t method) {
  const auto at =
      std::find_if(kNames.begin(), kNames.end(), [method](const auto& name) { return name.first == method; });
  return at != kNames.end() ? at->second : "method " + std::to_string(method);
}

bool UnpackRareMethod(const RareEntry& entry, const More& more, const Sink& sink) {
  return entry.method == kDeflate64 ? Inflate64(entry.size, more, sink) : UnpackStreamed(entry, more, sink);
}

}  // namespace quillon
