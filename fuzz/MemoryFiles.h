// A disk in memory: for inputs that name files, which so never meet real ones, and for speed.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/FileSystem.h"

namespace quillon {

/// Has no host paths: what libraries open themselves is missing.
class MemoryFiles : public FileSystem {
 public:
  /// Replaces the file; makes its folders.
  void Put(std::string_view path, std::string_view bytes);

  FileCode Find(std::string_view pattern, std::vector<FoundFile>& found) override;
  FileCode GetAttributes(std::string_view path, std::uint32_t& attributes) override;
  FileCode SetAttributes(std::string_view path, std::uint32_t attributes) override;
  FileCode GetSize(std::string_view path, std::uint64_t& size) override;
  FileCode Delete(std::string_view path) override;
  FileCode Move(std::string_view from, std::string_view to) override;
  FileCode Copy(std::string_view from, std::string_view to) override;
  FileCode CreateFolder(std::string_view path) override;
  FileCode RemoveFolder(std::string_view path) override;
  FileCode Read(std::string_view path, std::string& bytes, std::uint64_t limit) override;
  FileCode Replace(std::string_view path, std::string_view bytes) override;
  FileCode Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) override;
  FileCode GetStamp(std::string_view path, Stamp& stamp) override;
  std::string HostPath(std::string_view) override { return {}; }
  void Touched(std::string_view, bool) override {}
  bool MayWrite(std::string_view) override { return true; }
  std::uint64_t FreeSpace(std::string_view) override { return kSize; }
  Disk DiskOf(std::string_view) override { return {"memory", kSize}; }
  FileCode Flush(std::string_view) override { return FileCode::Ok; }

 private:
  static constexpr std::uint64_t kSize = 1u << 30;

  struct Node {
    std::string name;  // as it was spelled first
    std::uint32_t attributes = kArchive;
    std::string bytes;
    std::int64_t time = 0;
  };
  /// By upper-cased path, a backslash in front of each name.
  using Nodes = std::map<std::string, Node>;
  struct Place {
    FileCode code = FileCode::Ok;
    std::string folder, name, key;  // the folder in upper case; both empty for the root
  };

  Place PlaceOf(std::string_view path, bool wildcards = false) const;
  FileCode FindNode(std::string_view path, Nodes::iterator& node);
  FileCode FindFile(std::string_view path, Nodes::iterator& node);
  bool IsFolder(const std::string& key) const;
  bool HoldsNothing(const std::string& key) const;
  std::vector<Nodes::iterator> Below(const std::string& folder);
  void BeginPass() override {}
  void EndPass() override {}

  Nodes nodes_;
  std::int64_t clock_ = 1;
};

}  // namespace quillon
