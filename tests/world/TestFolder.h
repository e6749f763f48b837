// A temporary folder for a test, and plain looks at the disk that owe nothing to the product's file calls.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;
/// Names of files and their bytes, or what else is told of them.
using NamedTexts = std::map<std::string, std::string>;

/// Replaces the file; its folder exists.
inline void WriteBytes(const fs::path& file, std::string_view bytes) {
  std::ofstream out(file, std::ios::binary);
  out << bytes << std::flush;
  if (!out) throw std::runtime_error("can't write " + file.string());
}

inline void MakeReadOnly(const fs::path& file) { fs::permissions(file, fs::perms(0444)); }

/// While one lives the process is no superuser, whom no permission stops; all below `root` belongs to it.
class WithoutPrivileges {
 public:
  explicit WithoutPrivileges(const fs::path& root) {
    if (!changed_) return;
    for (const auto& item : fs::recursive_directory_iterator(root))
      if (::lchown(item.path().c_str(), kNobody, kNobody) != 0) throw std::runtime_error("can't give away");
    if (::setresuid(kNobody, kNobody, 0) != 0) throw std::runtime_error("can't change the user");
  }
  ~WithoutPrivileges() {
    if (changed_ && ::setresuid(0, 0, 0) != 0) std::abort();
  }
  WithoutPrivileges(const WithoutPrivileges&) = delete;
  WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;
  const bool changed_ = ::geteuid() == 0;
};

/// While one lives nothing can be made in the folder, nor removed from it.
class ShutFolder {
 public:
  explicit ShutFolder(fs::path folder) : folder_(std::move(folder)) {
    fs::permissions(folder_, fs::perms(0555));
  }
  ~ShutFolder() { fs::permissions(folder_, fs::perms(0755)); }
  ShutFolder(const ShutFolder&) = delete;
  ShutFolder& operator=(const ShutFolder&) = delete;

 private:
  const fs::path folder_;
};

/// A folder of its own, which goes with the object; everybody may write in it.
class TestFolder {
 public:
  TestFolder() {
    root_ = (fs::temp_directory_path() / "quillon-test-XXXXXX").string();
    if (::mkdtemp(root_.data()) == nullptr) throw std::runtime_error("can't make " + root_);
    fs::permissions(root_, fs::perms(0777));
  }
  ~TestFolder() {
    std::error_code failed;
    fs::remove_all(root_, failed);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::string& Root() const { return root_; }
  /// The system's text of what lies in the folder, and the host's name of it.
  std::string Path(std::string_view name) const { return root_ + "\\" + std::string(name); }
  fs::path Host(std::string_view name) const { return fs::path(root_) / name; }
  /// Replaces a file; makes its folders.
  void Put(std::string_view name, std::string_view bytes = "x") const {
    fs::create_directories(Host(name).parent_path());
    WriteBytes(Host(name), bytes);
  }
  std::string Bytes(std::string_view name) const {
    std::ifstream in(Host(name), std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "missing";
  }
  bool OnDisk(std::string_view name) const { return fs::exists(fs::symlink_status(Host(name))); }
  /// What lies below a folder of this one, at any depth.
  std::set<std::string> Below(std::string_view name) const {
    std::set<std::string> names;
    for (const auto& item : fs::recursive_directory_iterator(Host(name)))
      names.insert(item.path().lexically_relative(Host(name)).string());
    return names;
  }

 private:
  std::string root_;
};

}  // namespace quillon
