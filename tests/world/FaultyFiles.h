// The file calls of this machine, one of which goes wrong.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/host/FileSystem.h"

namespace quillon {

/// Asked before each call that may change something.
class Fault {
 public:
  virtual ~Fault() = default;
  /// Ok: the call goes on. Anything else is what the call answers.
  virtual FileCode Strike() = 0;
  /// A file has got bytes, or a name, that are not on the disk yet; and all of them are.
  virtual void Wrote(std::string_view) {}
  virtual void Flushed() {}
};

/// `fault` outlives the object.
class FaultyFiles : public FileSystem {
 public:
  explicit FaultyFiles(Fault& fault) : fault_(fault) {}

  FileCode Find(std::string_view pattern, std::vector<FoundFile>& found) override {
    return host_->Find(pattern, found);
  }
  FileCode GetAttributes(std::string_view path, std::uint32_t& attributes) override {
    return host_->GetAttributes(path, attributes);
  }
  FileCode GetSize(std::string_view path, std::uint64_t& size) override { return host_->GetSize(path, size); }
  FileCode GetStamp(std::string_view path, Stamp& stamp) override { return host_->GetStamp(path, stamp); }
  FileCode Read(std::string_view path, std::string& bytes, std::uint64_t limit) override {
    return host_->Read(path, bytes, limit);
  }
  std::string HostPath(std::string_view path) override { return host_->HostPath(path); }
  bool MayWrite(std::string_view folder) override { return host_->MayWrite(folder); }
  std::uint64_t FreeSpace(std::string_view path) override { return host_->FreeSpace(path); }
  Disk DiskOf(std::string_view path) override { return host_->DiskOf(path); }
  FileCode Flush(std::string_view path) override {
    return Or([&] {
      fault_.Flushed();
      return host_->Flush(path);
    });
  }
  /// An archive's file was placed: no more can go wrong, but the process may die here.
  void Touched(std::string_view path, bool exists) override {
    host_->Touched(path, exists);
    if (exists) fault_.Wrote(path);
    fault_.Strike();
  }

  FileCode SetAttributes(std::string_view path, std::uint32_t attributes) override {
    return Or([&] { return host_->SetAttributes(path, attributes); });
  }
  FileCode Delete(std::string_view path) override {
    return Or([&] { return host_->Delete(path); });
  }
  FileCode Move(std::string_view from, std::string_view to) override {
    return Or([&] { return host_->Move(from, to); });
  }
  FileCode Copy(std::string_view from, std::string_view to) override {
    fault_.Wrote(to);
    return Or([&] { return host_->Copy(from, to); });
  }
  FileCode CreateFolder(std::string_view path) override {
    return Or([&] { return host_->CreateFolder(path); });
  }
  FileCode RemoveFolder(std::string_view path) override {
    return Or([&] { return host_->RemoveFolder(path); });
  }
  FileCode Replace(std::string_view path, std::string_view bytes) override {
    fault_.Wrote(path);
    return Or([&] { return host_->Replace(path, bytes); });
  }
  FileCode Open(std::string_view path, bool append, std::unique_ptr<OutputFile>& file) override {
    const FileCode code = Or([&] { return host_->Open(path, append, file); });
    if (code == FileCode::Ok) file = std::make_unique<FaultyOutput>(fault_, std::move(file));
    return code;
  }

 private:
  class FaultyOutput : public OutputFile {
   public:
    FaultyOutput(Fault& fault, std::unique_ptr<OutputFile> file) : fault_(fault), file_(std::move(file)) {}
    FileCode Write(std::string_view bytes) override {
      const FileCode code = fault_.Strike();
      return code == FileCode::Ok ? file_->Write(bytes) : code;
    }

   private:
    Fault& fault_;
    std::unique_ptr<OutputFile> file_;
  };

  template <typename Call>
  FileCode Or(Call call) {
    const FileCode code = fault_.Strike();
    return code == FileCode::Ok ? call() : code;
  }
  void BeginPass() override { passes_.push_back(std::make_unique<Pass>(*host_)); }
  void EndPass() override { passes_.pop_back(); }

  Fault& fault_;
  const std::unique_ptr<FileSystem> host_ = MakeHostFileSystem();
  std::vector<std::unique_ptr<Pass>> passes_;
};

}  // namespace quillon
