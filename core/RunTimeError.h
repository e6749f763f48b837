// The one kind of failure that ends the program.
#pragma once

#include <exception>
#include <string>

namespace quillon {

/// The numbers of the classic run-time that the system raises.
enum class ErrorNumber {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  InternalError = 51,
  FileNotFound = 53,
  DeviceIoError = 57,
  FileAlreadyExists = 58,
  DiskFull = 61,
  BadFileName = 52,
  PermissionDenied = 70,
  PathFileAccessError = 75,
  PathNotFound = 76,
  InvalidFileFormat = 321,
  InvalidPicture = 481,
};

/// The classic text of `number`, such as "File not found".
const char* ErrorText(ErrorNumber number);

// The reasons of errors that come from a missing permission.
inline constexpr const char* kNoPermission = "it is read-only or there is no permission to change it";
inline constexpr const char* kNoPermissionToRead = "there is no permission to read it";

/// A failure that nothing on the way handles: the programs' mains report it and end.
class RunTimeError : public std::exception {
 public:
  /// `path` is the file or folder it is about, may be empty; `reason` says more than the classic text, may be
  /// empty.
  explicit RunTimeError(ErrorNumber number, std::string path = {}, std::string reason = {});

  int number() const { return static_cast<int>(number_); }
  const std::string& text() const { return text_; }
  const std::string& path() const { return path_; }
  /// What exactly is wrong, in plain words; may be empty.
  const std::string& reason() const { return reason_; }
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  ErrorNumber number_;
  std::string text_, path_, reason_;
};

}  // namespace quillon
