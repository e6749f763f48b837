#include "sample/HostFiles.h"

#include <fstream>
#include <iterator>
#include <system_error>

#include "core/RunTimeError.h"
#include "core/host/StandardPath.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

void Check(const std::error_code& error, const std::string& hostPath) {
  if (!error) return;
  const auto number =
      error == std::errc::no_space_on_device ? ErrorNumber::DiskFull : ErrorNumber::PathFileAccessError;
  throw RunTimeError(number, hostPath, error.message());
}

}  // namespace

void MakeHostFolder(const std::string& hostFolder) {
  std::error_code error;
  fs::create_directories(ToPath(hostFolder), error);
  Check(error, hostFolder);
}

bool HoldsSomething(const std::string& hostPath) {
  std::error_code error;
  const auto status = fs::symlink_status(ToPath(hostPath), error);
  if (!fs::exists(status)) return false;
  return !fs::is_directory(ToPath(hostPath), error) || !fs::is_empty(ToPath(hostPath), error);
}

void RemoveHostTree(const std::string& hostFolder) {
  std::error_code error;
  fs::remove_all(ToPath(hostFolder), error);
  Check(error, hostFolder);
}

void WriteHostFile(const std::string& hostPath, std::string_view bytes) {
  std::ofstream file(ToPath(hostPath), std::ios::binary | std::ios::trunc);
  if (!file) throw RunTimeError(ErrorNumber::PathFileAccessError, hostPath, "it can't be made");
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file)
    throw RunTimeError(ErrorNumber::DeviceIoError, hostPath, "it can't be written; the disk may be full");
}

std::string ReadHostFile(const std::string& hostPath) {
  std::ifstream file(ToPath(hostPath), std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad())
    throw RunTimeError(ErrorNumber::PathFileAccessError, hostPath, "it can't be read");
  return bytes;
}

}  // namespace quillon
