// One zip opened for reading: its directory, and its entries' data unpacked and checked.
#pragma once

#include <zip.h>

#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/host/RawFile.h"

struct libdeflate_decompressor;

namespace quillon {

/// Of an entry's header, where it can't be told.
inline constexpr std::uint64_t kUnknownPlace = ~std::uint64_t{0};

/// One entry as the archive's directory tells it.
struct ArchiveEntry {
  std::string name;  // stored name: backslashes, no drive, a folder ends in a backslash
  std::uint64_t size = 0, packedSize = 0;
  std::uint64_t place = 0;               // in the archive's directory, from 0
  std::uint64_t header = kUnknownPlace;  // where in the file its header lies
  std::uint32_t crc = 0;
  std::uint16_t method = 0;
  bool locked = false;  // by a password
  std::time_t modified = 0;

  bool folder() const { return name.empty() || name.back() == '\\'; }
  /// Why it can't be unpacked here, such as "it is protected by a password"; empty when it can.
  std::string Obstacle() const;
};

/// The archive, or one entry of it, can't be read as it should.
struct Damage {
  std::string reason;
};

/// Throws std::bad_alloc when that is what `error` means: no archive is to blame for it.
void RequireMemory(const zip_error_t* error);

/// A zip on the disk. Not for two threads at once; several objects may read one file.
class ZipFile {
 public:
  /// Throws Damage when the directory can't be read or a name is harmful. What another system keeps beside
  /// its files is passed over.
  explicit ZipFile(std::string hostPath);
  /// A further object over an archive whose directory is known; `knownEntries` outlives it.
  ZipFile(std::string hostPath, const std::vector<ArchiveEntry>& knownEntries);
  ZipFile(const ZipFile&) = delete;
  ZipFile& operator=(const ZipFile&) = delete;

  const std::vector<ArchiveEntry>& Entries() const { return entries_; }
  /// Moves them out of an object that is not used any more, and that read them itself.
  std::vector<ArchiveEntry> TakeEntries() { return std::move(ownEntries_); }

  using Sink = std::function<void(std::string_view)>;
  /// Unpacks an entry into `sink`, in one piece when it is small. Throws Damage when data or checksum are
  /// wrong; what `sink` got by then is worthless.
  void Unpack(std::size_t index, const Sink& sink);

  /// The archive below, for entries that travel packed into another archive.
  zip_t* Handle();

 private:
  struct Discard {
    void operator()(zip_t* zip) const { zip_discard(zip); }
  };
  struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const;
  };

  void Open();
  /// An entry's packed bytes by one reading of the file; empty where its header is not found.
  std::string_view PackedBytes(const ArchiveEntry& entry);
  void ReadEntries();
  libdeflate_decompressor* Decompressor();
  /// False, with nothing sunk, when `packed` is not what the entry tells.
  bool UnpackWhole(const ArchiveEntry& entry, std::string_view packed, const Sink& sink);
  void UnpackStream(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink);
  void UnpackRare(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink);

  std::string hostPath_;
  RawInput input_;
  std::unique_ptr<zip_t, Discard> zip_;  // of a further object: opened when it is needed
  std::vector<ArchiveEntry> ownEntries_;
  const std::vector<ArchiveEntry>& entries_;
  std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor_;  // made when it is needed
  std::string packed_, unpacked_;
};

}  // namespace quillon
