// A temporary folder for a test, and plain looks at the disk that owe nothing to the product's file calls.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/StandardPath.h"
#include "tests/world/Host.h"

namespace quillon {

using Strings = std::vector<std::string>;
/// Names of files and their bytes, or what else is told of them.
using NamedTexts = std::map<std::string, std::string>;

/// Replaces the file; its folder exists.
inline void WriteBytes(const fs::path& file, std::string_view bytes) {
  std::ofstream out(file, std::ios::binary);
  out << bytes << std::flush;
  if (!out) throw std::runtime_error("can't write " + FromPath(file));
}

/// Read-only files, too, which not every host lets go.
inline void RemoveAll(const fs::path& path) {
  const auto free = [](const fs::path& file) {
    const fs::file_status status = fs::symlink_status(file);
    const bool fixed = (status.permissions() & fs::perms::owner_write) == fs::perms::none;
    if (fs::is_regular_file(status) && fixed)
      fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
  };
  free(path);
  if (fs::is_directory(fs::symlink_status(path)))
    for (const auto& item : fs::recursive_directory_iterator(path)) free(item.path());
  fs::remove_all(path);
}

/// What leads from `folder` to `path`, with "/" on every host.
inline std::string Relative(const fs::path& path, const fs::path& folder) {
  const std::u8string name = path.lexically_relative(folder).generic_u8string();
  return {name.begin(), name.end()};
}

/// A folder of its own, which goes with the object; everybody may write in it.
class TestFolder {
 public:
  TestFolder() {
    const fs::path temporary = fs::canonical(fs::temp_directory_path());
    do root_ = FromPath(temporary / ("quillon-test-" + std::to_string(std::random_device()())));
    while (!fs::create_directory(ToPath(root_)));
    fs::permissions(ToPath(root_), fs::perms(0777));
  }
  ~TestFolder() {
    try {
      RemoveAll(ToPath(root_));
    } catch (const fs::filesystem_error&) {
      // What can't go stays; the test has been judged.
    }
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::string& Root() const { return root_; }
  /// The system's text of what lies in the folder, and the host's name of it.
  std::string Path(std::string_view name) const { return root_ + "\\" + std::string(name); }
  fs::path Host(std::string_view name) const { return ToPath(root_) / ToPath(name); }
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
      names.insert(Relative(item.path(), Host(name)));
    return names;
  }

 private:
  std::string root_;
};

}  // namespace quillon
