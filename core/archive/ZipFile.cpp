#include "core/archive/ZipFile.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "core/archive/ArchiveNames.h"
#include "core/archive/RareMethods.h"
#include "core/archive/ZipLayout.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

// Entries above this are unpacked piece by piece, so that memory stays bounded.
constexpr std::uint64_t kUnpackWholeLimit = 8u << 20;
constexpr std::size_t kStreamPiece = 256u << 10;

struct CloseEntry {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using EntryFile = std::unique_ptr<zip_file_t, CloseEntry>;

/// Whether the format library unpacks it.
bool IsUsual(std::uint16_t method) { return zip_compression_method_supported(method, 0) != 0; }

/// Names with slashes have no other separators: then a backslash can be half a letter.
bool BackslashSeparates(zip_t* zip, zip_uint64_t count) {
  for (zip_uint64_t i = 0; i < count; ++i)
    if (const char* raw = zip_get_name(zip, i, ZIP_FL_ENC_RAW); raw != nullptr && Contains(raw, "/"))
      return false;
  return true;
}

[[noreturn]] void Broken(const ArchiveEntry& entry) {
  throw Damage{"the data of " + entry.name + " are damaged"};
}

[[noreturn]] void Broken(const ArchiveEntry& entry, const zip_error_t* error) {
  RequireMemory(error);
  Broken(entry);
}

/// A buffer only grows: filling it anew for each entry would cost as much as unpacking.
void MakeRoom(std::string& buffer, std::uint64_t size) {
  if (buffer.size() < size) buffer.resize(size);
}

/// Passes pieces on, and vouches for their size and checksum.
class Checked {
 public:
  Checked(const ArchiveEntry& entry, const ZipFile::Sink& sink) : entry_(entry), sink_(sink) {}

  void Take(std::string_view piece) {
    done_ += piece.size();
    if (done_ > entry_.size) Broken(entry_);
    crc_ = libdeflate_crc32(crc_, piece.data(), piece.size());
    sink_(piece);
  }
  void End() const {
    if (done_ != entry_.size || crc_ != entry_.crc) Broken(entry_);
  }

 private:
  const ArchiveEntry& entry_;
  const ZipFile::Sink& sink_;
  std::uint64_t done_ = 0;
  std::uint32_t crc_ = 0;
};

}  // namespace

void RequireMemory(const zip_error_t* error) {
  if (zip_error_code_zip(error) == ZIP_ER_MEMORY) throw std::bad_alloc();
}

ZipFile::ZipFile(std::string hostPath)
    : hostPath_(std::move(hostPath)), input_(hostPath_), entries_(ownEntries_) {
  Open();
  ReadEntries();
}

ZipFile::ZipFile(std::string hostPath, const std::vector<ArchiveEntry>& knownEntries)
    : hostPath_(std::move(hostPath)), input_(hostPath_), entries_(knownEntries) {}

zip_t* ZipFile::Handle() {
  if (!zip_) Open();
  return zip_.get();
}

void ZipFile::FreeDecompressor::operator()(libdeflate_decompressor* decompressor) const {
  libdeflate_free_decompressor(decompressor);
}

libdeflate_decompressor* ZipFile::Decompressor() {
  if (!decompressor_) decompressor_.reset(libdeflate_alloc_decompressor());
  if (!decompressor_) throw std::bad_alloc();
  return decompressor_.get();
}

void ZipFile::Open() {
  zip_error_t error;
  zip_error_init(&error);
  const std::unique_ptr<zip_error_t, decltype(&zip_error_fini)> freed(&error, &zip_error_fini);
  // The source belongs to the archive once that is open.
  zip_source_t* source = zip_source_file_create(hostPath_.c_str(), StubBytes(hostPath_), -1, &error);
  if (source != nullptr) zip_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
  if (source != nullptr && !zip_) zip_source_free(source);
  if (zip_) return;
  RequireMemory(&error);
  throw Damage{std::string("it can't be read as a zip archive (") + zip_error_strerror(&error) + ")"};
}

void ZipFile::ReadEntries() {
  const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(zip_.get(), 0));
  const bool backslashSeparates = BackslashSeparates(zip_.get(), count);
  const std::vector<std::uint64_t> places = EntryPlaces(hostPath_);
  ownEntries_.reserve(static_cast<std::size_t>(count));
  for (zip_uint64_t i = 0; i < count; ++i) {
    zip_stat_t stat;
    const char* raw = zip_get_name(zip_.get(), i, ZIP_FL_ENC_RAW);
    if (raw == nullptr || zip_stat_index(zip_.get(), i, ZIP_FL_ENC_GUESS, &stat) != 0 ||
        stat.name == nullptr) {
      RequireMemory(zip_get_error(zip_.get()));
      throw Damage{"its directory is broken"};
    }
    ArchiveEntry entry;
    entry.name = NormalStoredName(std::string_view(stat.name) == raw
                                      ? std::string(raw)
                                      : LegacyStoredName(raw, stat.name, backslashSeparates));
    if (IsSystemsOwn(entry.name)) continue;
    if (const char* harm = HarmIn(entry.name)) throw Damage{std::string(harm) + ": " + stat.name};
    entry.size = stat.size;
    entry.packedSize = stat.comp_size;
    entry.place = i;
    entry.header = places.size() == count ? places[i] : kUnknownPlace;
    entry.crc = stat.crc;
    entry.method = stat.comp_method;
    entry.locked = stat.encryption_method != ZIP_EM_NONE;
    entry.modified = stat.mtime;
    ownEntries_.push_back(std::move(entry));
  }
}

std::string ArchiveEntry::Obstacle() const {
  if (locked) return "it is protected by a password";
  if (IsUsual(method) || IsRareMethod(method)) return {};
  return "it is packed by a method that is not known (" + MethodName(method) + ")";
}

void ZipFile::Unpack(std::size_t index, const Sink& sink) {
  const ArchiveEntry& entry = entries_[index];
  if (const std::string obstacle = entry.Obstacle(); !obstacle.empty())
    throw Damage{entry.name + " can't be unpacked: " + obstacle};
  const bool rare = !IsUsual(entry.method);
  const bool whole = entry.size <= kUnpackWholeLimit &&
                     entry.packedSize <= kUnpackWholeLimit + kUnpackWholeLimit / 8 &&
                     (entry.method == ZIP_CM_STORE || entry.method == ZIP_CM_DEFLATE);
  // What is no data of this entry there may be found by the format library.
  if (whole && UnpackWhole(entry, PackedBytes(entry), sink)) return;
  const EntryFile file(zip_fopen_index(Handle(), entry.place, rare ? ZIP_FL_COMPRESSED : 0));
  if (!file) Broken(entry, zip_get_error(Handle()));
  rare ? UnpackRare(entry, file.get(), sink) : UnpackStream(entry, file.get(), sink);
}

std::string_view ZipFile::PackedBytes(const ArchiveEntry& entry) {
  constexpr std::size_t kNames = 512;  // bytes; a header with longer ones is found by the format library
  if (entry.header == kUnknownPlace) return {};
  std::size_t count = kLocalHeader + kNames + static_cast<std::size_t>(entry.packedSize);
  MakeRoom(packed_, count);
  if (!input_.IsOpen() || !input_.ReadInto(entry.header, packed_.data(), count)) return {};
  const std::string_view bytes(packed_.data(), count);
  const std::size_t begin = HeaderSize(bytes);
  return begin > 0 && begin <= count && entry.packedSize <= count - begin
             ? bytes.substr(begin, entry.packedSize)
             : std::string_view();
}

bool ZipFile::UnpackWhole(const ArchiveEntry& entry, std::string_view packed, const Sink& sink) {
  if (packed.data() == nullptr) return false;
  std::string_view data = packed;
  if (entry.method == ZIP_CM_DEFLATE) {
    MakeRoom(unpacked_, entry.size);
    const auto result = libdeflate_deflate_decompress(Decompressor(), packed.data(), packed.size(),
                                                      unpacked_.data(), entry.size, nullptr);
    if (result != LIBDEFLATE_SUCCESS) return false;
    data = {unpacked_.data(), entry.size};
  }
  if (data.size() != entry.size || libdeflate_crc32(0, data.data(), data.size()) != entry.crc) return false;
  sink(data);
  return true;
}

void ZipFile::UnpackStream(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink) {
  MakeRoom(unpacked_, kStreamPiece);
  Checked checked(entry, sink);
  for (;;) {
    const auto count = zip_fread(file, unpacked_.data(), kStreamPiece);
    if (count < 0) Broken(entry, zip_file_get_error(file));
    if (count == 0) break;
    checked.Take({unpacked_.data(), static_cast<std::size_t>(count)});
  }
  checked.End();
}

void ZipFile::UnpackRare(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink) {
  MakeRoom(packed_, kStreamPiece);
  Checked checked(entry, sink);
  const auto more = [&]() -> std::string_view {
    const auto count = zip_fread(file, packed_.data(), kStreamPiece);
    if (count < 0) Broken(entry, zip_file_get_error(file));
    return {packed_.data(), static_cast<std::size_t>(count)};
  };
  if (!UnpackRareMethod({entry.method, entry.size, entry.packedSize, entry.crc}, more,
                        [&](std::string_view piece) { checked.Take(piece); }))
    Broken(entry);
  checked.End();
}

}  // namespace quillon
