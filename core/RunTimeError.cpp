#include "core/RunTimeError.h"

#include <utility>

namespace quillon {

const char* ErrorText(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::InvalidProcedureCall: return "Invalid procedure call or argument";
    case ErrorNumber::Overflow: return "Overflow";
    case ErrorNumber::OutOfMemory: return "Out of memory";
    case ErrorNumber::InternalError: return "Internal error";
    case ErrorNumber::BadFileName: return "Bad file name or number";
    case ErrorNumber::FileNotFound: return "File not found";
    case ErrorNumber::DeviceIoError: return "Device I/O error";
    case ErrorNumber::FileAlreadyExists: return "File already exists";
    case ErrorNumber::DiskFull: return "Disk full";
    case ErrorNumber::PermissionDenied: return "Permission denied";
    case ErrorNumber::PathFileAccessError: return "Path/File access error";
    case ErrorNumber::PathNotFound: return "Path not found";
    case ErrorNumber::InvalidFileFormat: return "Invalid file format";
    case ErrorNumber::InvalidPicture: return "Invalid picture";
  }
  return "Application-defined or object-defined error";
}

RunTimeError::RunTimeError(ErrorNumber number, std::string path, std::string reason)
    : number_(number), text_(ErrorText(number)), path_(std::move(path)), reason_(std::move(reason)) {}

}  // namespace quillon
