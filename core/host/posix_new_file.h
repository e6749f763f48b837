// Files that appear under their names whole: bytes go to a file that nobody sees until Publish.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quillon {

/// An open file of the host, closed by the destructor.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  void Reset(int number);
  /// 0 or an errno: a network disk may tell of a failed write only now.
  int Close();

 private:
  int number_;
};

/// Writes all of `bytes`; 0 or an errno.
int WriteAll(int file, std::string_view bytes);

/// Reads `size` bytes, or as many as there are; 0 or an errno.
int ReadAll(int file, std::size_t size, std::string& bytes);

/// Copies `size` bytes from where `source` stands, or as many as it has, to where `target` stands; 0 or an
/// errno. `idle` is called now and then.
int CopyBytes(int source, int target, std::uint64_t size, const std::function<void()>& idle);

/// A file in the making. Without Publish the destructor leaves nothing of it.
class NewFile {
 public:
  /// `replace` says that `host` exists and is to be replaced. Error tells whether it went well.
  NewFile(std::string host, bool replace, mode_t mode);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// 0 or the errno of opening.
  int Error() const { return error_; }
  int Number() const { return file_.Number(); }
  /// Gives the file its name in one step; 0 or an errno.
  int Publish();

 private:
  bool OpenUnnamed(mode_t mode);
  void OpenPart(mode_t mode);

  std::string host_;
  std::string part_;  // the temporary name, empty for an unnamed file
  Descriptor file_;
  int error_ = 0;
};

}  // namespace quillon
