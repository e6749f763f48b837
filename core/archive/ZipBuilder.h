// The format side of writing an archive: entries come packed, the file goes through one sink.
#pragma once

#include <zip.h>

#include <cstdint>
#include <ctime>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/archive/PackQueue.h"
#include "core/host/RawFile.h"

namespace quillon {

/// One archive being built. Entries are added in order, then Write puts it on the disk. Errors are
/// RunTimeErrors that name the archive or the file.
class ZipBuilder {
 public:
  /// `path` is `hostPath` in the system's form, for messages.
  ZipBuilder(std::string hostPath, std::string path);
  ~ZipBuilder();
  ZipBuilder(const ZipBuilder&) = delete;
  ZipBuilder& operator=(const ZipBuilder&) = delete;

  /// An entry whose data `take` gives, deflated, when its turn comes.
  void AddPacked(const std::string& storedName, std::time_t modified, std::function<PackedFile()> take);
  /// A big file, packed while it is written.
  void AddStream(const std::string& storedName, const std::string& hostPath);
  /// An entry of `size` bytes that `read` gives piece by piece, packed while it is written: it fills what it
  /// is given and returns how much it did, 0 at the end.
  void AddPieces(const std::string& storedName, std::time_t modified, std::uint64_t size,
                 std::function<std::size_t(char*, std::size_t)> read);
  /// An entry of `source` as it is packed there; `source` outlives Write.
  void AddFrom(const std::string& storedName, zip_t* source, std::uint64_t index, std::uint16_t method);

  /// Writes all; `progress` gets the share done, 0 to 1, and what it throws ends the writing, unless all is
  /// written by then. The file is complete or absent.
  void Write(const std::function<void(double)>& progress);

 private:
  struct PackedSource;
  struct PieceSource;
  struct Output;

  void Add(const std::string& storedName, zip_source_t* source);
  [[noreturn]] void Fail();
  void Tell(double share);
  static zip_int64_t ReadPacked(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command);
  static zip_int64_t ReadPieces(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command);
  static zip_int64_t WriteOutput(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command);

  const std::string path_;
  std::unique_ptr<Output> output_;
  std::vector<std::unique_ptr<PackedSource>> sources_;
  std::vector<std::unique_ptr<PieceSource>> pieceSources_;
  std::function<void(double)> progress_;
  std::exception_ptr failure_;  // of a callback: the format library knows no exceptions
  zip_t* zip_ = nullptr;
  std::uint64_t count_ = 0;
};

}  // namespace quillon
