// A folder of its own on the host, and the file calls beside the host's plain ones.
#pragma once

#include <gtest/gtest.h>

#include "core/host/FileSystem.h"
#include "tests/world/TestFolder.h"

namespace quillon {

class FileSystemTest : public testing::Test, protected TestFolder {
 protected:
  std::size_t Count() const { return Below("").size(); }
  bool Exists(std::string_view name) { return Attributes(name) != 0; }
  std::uint32_t Attributes(std::string_view name) {
    std::uint32_t attributes = 0;
    return files_->GetAttributes(Path(name), attributes) == FileCode::Ok ? attributes : 0;
  }
  FileCode CodeFor(std::string_view path) {
    std::uint32_t attributes = 0;
    return files_->GetAttributes(path, attributes);
  }
  FileCode Mark(std::string_view name, std::uint32_t attributes) {
    return files_->SetAttributes(Path(name), attributes);
  }
  FileCode Replace(std::string_view name, std::string_view bytes) {
    return files_->Replace(Path(name), bytes);
  }
  FileCode Copy(std::string_view from, std::string_view to) { return files_->Copy(Path(from), Path(to)); }
  FileCode Move(std::string_view from, std::string_view to) { return files_->Move(Path(from), Path(to)); }
  FileCode Delete(std::string_view name) { return files_->Delete(Path(name)); }
  FileCode Make(std::string_view folder) { return files_->CreateFolder(Path(folder)); }
  FileCode RemoveFolder(std::string_view folder) { return files_->RemoveFolder(Path(folder)); }
  FileCode Open(std::string_view name, bool append) { return files_->Open(Path(name), append, out_); }
  std::string Read(std::string_view name) {
    std::string bytes;
    return files_->Read(Path(name), bytes, kNoLimit) == FileCode::Ok ? bytes : "unread";
  }
  Strings Find(std::string_view pattern) {
    std::vector<FoundFile> found;
    const FileCode code = files_->Find(Path(pattern), found);
    EXPECT_EQ(code, found.empty() ? FileCode::FileNotFound : FileCode::Ok) << pattern;
    Strings names;
    for (const auto& file : found) names.push_back(file.name);
    return names;
  }
  FoundFile FindOne(std::string_view name) {
    std::vector<FoundFile> found;
    files_->Find(Path(name), found);
    return found.empty() ? FoundFile{} : found.front();
  }

  std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
  std::unique_ptr<OutputFile> out_;
};

}  // namespace quillon
