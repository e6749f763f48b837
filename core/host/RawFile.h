// A file by its host name, for worker threads: written whole, or not there.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

#include "core/host/FileSystem.h"

namespace quillon {

/// Makes a new file in place of what stood under its name; a link there is replaced, not followed. Until Keep
/// is called the destructor removes the file.
class RawFile {
 public:
  explicit RawFile(std::string hostPath);
  ~RawFile();
  RawFile(const RawFile&) = delete;
  RawFile& operator=(const RawFile&) = delete;

  /// FileCode::Ok while all went well.
  FileCode Code() const { return code_; }
  FileCode Write(std::string_view bytes);
  /// Overwrites bytes that were written before.
  FileCode WriteAt(std::uint64_t offset, std::string_view bytes);
  /// Closes the file and keeps it; `modified` 0 leaves the present time.
  FileCode Keep(std::time_t modified = 0);

 private:
  std::string hostPath_;
  std::intptr_t handle_ = -1;
  FileCode code_ = FileCode::Ok;
};

/// A file by its host name, read in pieces.
class RawInput {
 public:
  explicit RawInput(const std::string& hostPath);
  ~RawInput();
  RawInput(const RawInput&) = delete;
  RawInput& operator=(const RawInput&) = delete;

  bool IsOpen() const { return handle_ >= 0; }
  std::uint64_t Size() const;
  /// `count` bytes, fewer at the end of the file. False when the device fails.
  bool ReadAt(std::uint64_t offset, std::size_t count, std::string& bytes) const {
    bytes.resize(count);
    const bool works = ReadInto(offset, bytes.data(), count);
    bytes.resize(count);
    return works;
  }
  /// The same into a buffer of the caller's; `count` becomes the number of bytes that came.
  bool ReadInto(std::uint64_t offset, char* bytes, std::size_t& count) const;

 private:
  std::intptr_t handle_ = -1;
};

}  // namespace quillon
