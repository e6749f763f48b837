#include "core/archive/ZipFile.h"

#include <libdeflate.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "core/Text.h"
#include "core/archive/ArchiveNames.h"
#include "core/archive/ZipStub.h"

namespace quillon {
namespace {

// Entries above this are unpacked piece by piece, so that memory stays bounded.
constexpr std::uint64_t kWholeLimit = 8u << 20;
constexpr std::size_t kPiece = 256u << 10;

struct CloseEntry {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using EntryFile = std::unique_ptr<zip_file_t, CloseEntry>;

bool HasControlCharacter(std::string_view name) {
  return std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; });
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

void ReadExactly(zip_file_t* file, const ArchiveEntry& entry, char* bytes, std::uint64_t size) {
  std::uint64_t done = 0;
  while (done < size) {
    const auto count = zip_fread(file, bytes + done, size - done);
    if (count <= 0) Broken(entry, zip_file_get_error(file));
    done += static_cast<std::size_t>(count);
  }
}

}  // namespace

void RequireMemory(const zip_error_t* error) {
  if (zip_error_code_zip(error) == ZIP_ER_MEMORY) throw std::bad_alloc();
}

ZipFile::ZipFile(std::string hostPath) : hostPath_(std::move(hostPath)), entries_(ownEntries_) {
  Open();
  ReadEntries();
}

ZipFile::ZipFile(std::string hostPath, const std::vector<ArchiveEntry>& knownEntries)
    : hostPath_(std::move(hostPath)), entries_(knownEntries) {
  Open();
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
  const auto count = zip_get_num_entries(zip_.get(), 0);
  ownEntries_.reserve(static_cast<std::size_t>(count));
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t stat;
    const auto index = static_cast<zip_uint64_t>(i);
    if (zip_stat_index(zip_.get(), index, ZIP_FL_ENC_STRICT, &stat) != 0 || stat.name == nullptr) {
      RequireMemory(zip_get_error(zip_.get()));
      throw Damage{"its directory is broken"};
    }
    ArchiveEntry entry;
    entry.name = NormalStoredName(stat.name);
    // Decoding turns control characters, zeros among them, into pictures: look at the bytes, too.
    const char* raw = zip_get_name(zip_.get(), index, ZIP_FL_ENC_RAW);
    if (raw == nullptr || HasControlCharacter(raw) || CharacterCount(stat.name) > std::strlen(raw))
      throw Damage{"an entry's name has control characters"};
    if (const char* harm = HarmIn(entry.name)) throw Damage{harm};
    if (stat.encryption_method != ZIP_EM_NONE) throw Damage{"it is protected by a password"};
    if (zip_compression_method_supported(stat.comp_method, 0) == 0)
      throw Damage{"an entry is packed by a method that is not known"};
    entry.size = stat.size;
    entry.packedSize = stat.comp_size;
    entry.crc = stat.crc;
    entry.method = stat.comp_method;
    entry.modified = stat.mtime;
    ownEntries_.push_back(std::move(entry));
  }
}

void ZipFile::Unpack(std::size_t index, const Sink& sink) {
  const ArchiveEntry& entry = entries_[index];
  const bool whole = entry.size <= kWholeLimit && entry.packedSize <= kWholeLimit + kWholeLimit / 8 &&
                     (entry.method == ZIP_CM_STORE || entry.method == ZIP_CM_DEFLATE);
  const EntryFile file(zip_fopen_index(zip_.get(), index, whole ? ZIP_FL_COMPRESSED : 0));
  if (!file) Broken(entry, zip_get_error(zip_.get()));
  whole ? UnpackWhole(entry, file.get(), sink) : UnpackStream(entry, file.get(), sink);
}

void ZipFile::UnpackWhole(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink) {
  MakeRoom(packed_, entry.packedSize);
  ReadExactly(file, entry, packed_.data(), entry.packedSize);
  std::string_view data(packed_.data(), entry.packedSize);
  if (entry.method == ZIP_CM_DEFLATE) {
    MakeRoom(unpacked_, entry.size);
    const auto result = libdeflate_deflate_decompress(Decompressor(), packed_.data(), entry.packedSize,
                                                      unpacked_.data(), entry.size, nullptr);
    if (result != LIBDEFLATE_SUCCESS) Broken(entry);
    data = {unpacked_.data(), entry.size};
  }
  if (data.size() != entry.size || libdeflate_crc32(0, data.data(), data.size()) != entry.crc) Broken(entry);
  sink(data);
}

void ZipFile::UnpackStream(const ArchiveEntry& entry, zip_file_t* file, const Sink& sink) {
  MakeRoom(unpacked_, kPiece);
  std::uint64_t done = 0;
  std::uint32_t crc = 0;
  for (;;) {
    const auto count = zip_fread(file, unpacked_.data(), kPiece);
    if (count < 0) Broken(entry, zip_file_get_error(file));
    if (count == 0) break;
    const std::string_view piece(unpacked_.data(), static_cast<std::size_t>(count));
    done += piece.size();
    if (done > entry.size) Broken(entry);
    crc = libdeflate_crc32(crc, piece.data(), piece.size());
    sink(piece);
  }
  if (done != entry.size || crc != entry.crc) Broken(entry);
}

}  // namespace quillon
