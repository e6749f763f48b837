#include "core/archive/ZipBuilder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "core/Files.h"
#include "core/archive/ZipFile.h"

namespace quillon {
namespace {

// What an archive without entries consists of.
constexpr std::array<char, 22> kEmptyArchive = {'P', 'K', 5, 6};

zip_int64_t Supports(std::initializer_list<zip_source_cmd_t> commands) {
  zip_int64_t mask = 0;
  for (const auto command : commands) mask |= ZIP_SOURCE_MAKE_COMMAND_BITMASK(command);
  return mask;
}

}  // namespace

/// One entry's deflated data, asked for when the format library comes to it.
struct ZipBuilder::PackedSource {
  ZipBuilder& builder;
  std::function<PackedFile()> take;
  std::time_t modified;
  PackedFile packed;
  std::size_t at = 0;
  bool taken = false;
  zip_error_t error{};

  bool Take() {
    if (taken) return true;
    try {
      packed = take();
      return taken = true;
    } catch (...) {
      builder.failure_ = std::current_exception();
      zip_error_set(&error, ZIP_ER_READ, EIO);
      return false;
    }
  }

  void Describe(zip_stat_t& stat) const {
    zip_stat_init(&stat);
    stat.size = packed.size;
    stat.comp_size = packed.data.size();
    stat.crc = packed.crc;
    stat.comp_method = ZIP_CM_DEFLATE;
    stat.encryption_method = ZIP_EM_NONE;
    stat.mtime = modified;
    stat.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD |
                 ZIP_STAT_ENCRYPTION_METHOD | ZIP_STAT_MTIME;
  }
};

/// One entry's data as they are, asked for piece by piece.
struct ZipBuilder::PieceSource {
  ZipBuilder& builder;
  std::function<std::size_t(char*, std::size_t)> read;
  std::time_t modified;
  std::uint64_t size;
  zip_error_t error{};

  zip_int64_t Read(char* data, std::size_t length) {
    try {
      return static_cast<zip_int64_t>(read(data, length));
    } catch (...) {
      builder.failure_ = std::current_exception();
      zip_error_set(&error, ZIP_ER_READ, EIO);
      return -1;
    }
  }

  void Describe(zip_stat_t& stat) const {
    zip_stat_init(&stat);
    stat.size = size;
    stat.mtime = modified;
    stat.valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
  }
};

/// The archive's file.
struct ZipBuilder::Output {
  std::string hostPath;
  std::unique_ptr<RawFile> file;
  std::uint64_t at = 0, end = 0;
  FileCode code = FileCode::Ok;
  zip_error_t error{};

  zip_int64_t Check(FileCode result) {
    if (result == FileCode::Ok) return 0;
    code = result;
    zip_error_set(&error, ZIP_ER_WRITE, EIO);
    return -1;
  }

  zip_int64_t Write(std::string_view bytes) {
    const FileCode result = at == end ? file->Write(bytes) : file->WriteAt(at, bytes);
    if (Check(result) != 0) return -1;
    at += bytes.size();
    end = std::max(at, end);
    return static_cast<zip_int64_t>(bytes.size());
  }
};

ZipBuilder::ZipBuilder(std::string hostPath, std::string path)
    : path_(std::move(path)), output_(std::make_unique<Output>()) {
  output_->hostPath = std::move(hostPath);
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* target = zip_source_function_create(WriteOutput, output_.get(), &error);
  if (target != nullptr) zip_ = zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (zip_ != nullptr) return;
  RequireMemory(&error);
  Fail();
}

ZipBuilder::~ZipBuilder() {
  if (zip_ != nullptr) zip_discard(zip_);
}

void ZipBuilder::Fail() {
  if (failure_) std::rethrow_exception(failure_);
  RaiseFileError(output_->code, path_);
  if (zip_ != nullptr) RequireMemory(zip_get_error(zip_));
  throw RunTimeError(ErrorNumber::DeviceIoError, path_,
                     zip_ ? zip_strerror(zip_) : "the archive can't be made");
}

void ZipBuilder::Add(const std::string& storedName, zip_source_t* source) {
  if (source == nullptr) Fail();
  std::string name = storedName;
  std::replace(name.begin(), name.end(), '\\', '/');
  if (zip_file_add(zip_, name.c_str(), source, ZIP_FL_ENC_UTF_8) < 0 &&
      zip_file_add(zip_, name.c_str(), source, ZIP_FL_ENC_CP437) < 0) {
    zip_source_free(source);
    Fail();
  }
  ++count_;
}

void ZipBuilder::AddPacked(const std::string& storedName, std::time_t modified,
                           std::function<PackedFile()> take) {
  auto state =
      std::make_unique<PackedSource>(PackedSource{*this, std::move(take), modified, {}, 0, false, {}});
  Add(storedName, zip_source_function(zip_, ReadPacked, state.get()));
  sources_.push_back(std::move(state));
}

void ZipBuilder::AddPieces(const std::string& storedName, std::time_t modified, std::uint64_t size,
                           std::function<std::size_t(char*, std::size_t)> read) {
  auto state = std::make_unique<PieceSource>(PieceSource{*this, std::move(read), modified, size, {}});
  Add(storedName, zip_source_function(zip_, ReadPieces, state.get()));
  pieceSources_.push_back(std::move(state));
}

void ZipBuilder::AddStream(const std::string& storedName, const std::string& hostPath) {
  Add(storedName, zip_source_file(zip_, hostPath.c_str(), 0, -1));
}

void ZipBuilder::AddFrom(const std::string& storedName, zip_t* source, std::uint64_t index,
                         std::uint16_t method) {
  Add(storedName, zip_source_zip(zip_, source, index, ZIP_FL_COMPRESSED, 0, -1));
  zip_set_file_compression(zip_, count_ - 1, method, 0);
}

void ZipBuilder::Write(const std::function<void(double)>& progress) {
  if (count_ == 0) {
    RawFile file(output_->hostPath);
    file.Write({kEmptyArchive.data(), kEmptyArchive.size()});
    RaiseFileError(file.Keep(), path_);
    return;
  }
  progress_ = progress;
  zip_register_progress_callback_with_state(
      zip_, 0.002, [](zip_t*, double share, void* state) { static_cast<ZipBuilder*>(state)->Tell(share); },
      nullptr, this);
  zip_register_cancel_callback_with_state(
      zip_, [](zip_t*, void* state) { return static_cast<ZipBuilder*>(state)->failure_ ? 1 : 0; }, nullptr,
      this);
  if (zip_close(zip_) != 0) Fail();
  zip_ = nullptr;
}

/// The format library knows nothing of what may be thrown: it is asked to stop.
void ZipBuilder::Tell(double share) {
  try {
    if (!failure_) progress_(share);
  } catch (...) {
    failure_ = std::current_exception();
  }
}

zip_int64_t ZipBuilder::ReadPacked(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
  auto& source = *static_cast<PackedSource*>(state);
  switch (command) {
    case ZIP_SOURCE_OPEN: return source.Take() ? 0 : -1;
    case ZIP_SOURCE_READ: {
      const auto count = std::min<std::size_t>(length, source.packed.data.size() - source.at);
      std::memcpy(data, source.packed.data.data() + source.at, count);
      source.at += count;
      return static_cast<zip_int64_t>(count);
    }
    case ZIP_SOURCE_CLOSE:
      std::string().swap(source.packed.data);  // an assignment would keep the memory
      return 0;
    case ZIP_SOURCE_STAT:
      if (!source.Take()) return -1;
      source.Describe(*static_cast<zip_stat_t*>(data));
      return sizeof(zip_stat_t);
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&source.error, data, length);
    case ZIP_SOURCE_FREE: return 0;
    case ZIP_SOURCE_SUPPORTS:
      return Supports({ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR,
                       ZIP_SOURCE_FREE, ZIP_SOURCE_SUPPORTS});
    default: zip_error_set(&source.error, ZIP_ER_OPNOTSUPP, 0); return -1;
  }
}

zip_int64_t ZipBuilder::ReadPieces(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
  auto& source = *static_cast<PieceSource*>(state);
  switch (command) {
    case ZIP_SOURCE_OPEN:
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE: return 0;
    case ZIP_SOURCE_READ: return source.Read(static_cast<char*>(data), static_cast<std::size_t>(length));
    case ZIP_SOURCE_STAT: source.Describe(*static_cast<zip_stat_t*>(data)); return sizeof(zip_stat_t);
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&source.error, data, length);
    case ZIP_SOURCE_SUPPORTS:
      return Supports({ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR,
                       ZIP_SOURCE_FREE, ZIP_SOURCE_SUPPORTS});
    default: zip_error_set(&source.error, ZIP_ER_OPNOTSUPP, 0); return -1;
  }
}

zip_int64_t ZipBuilder::WriteOutput(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
  auto& output = *static_cast<Output*>(state);
  switch (command) {
    case ZIP_SOURCE_BEGIN_WRITE:
      output.file = std::make_unique<RawFile>(output.hostPath);
      return output.Check(output.file->Code());
    case ZIP_SOURCE_WRITE: return output.Write({static_cast<const char*>(data), length});
    case ZIP_SOURCE_SEEK_WRITE: {
      const auto target = zip_source_seek_compute_offset(output.at, output.end, data, length, &output.error);
      if (target < 0) return -1;
      output.at = static_cast<std::uint64_t>(target);
      return 0;
    }
    case ZIP_SOURCE_TELL_WRITE: return static_cast<zip_int64_t>(output.at);
    case ZIP_SOURCE_COMMIT_WRITE: return output.Check(output.file->Keep());
    case ZIP_SOURCE_ROLLBACK_WRITE: output.file.reset(); return 0;
    case ZIP_SOURCE_STAT:  // nothing is there yet
      zip_error_set(&output.error, ZIP_ER_READ, ENOENT);
      return -1;
    case ZIP_SOURCE_ERROR: return zip_error_to_data(&output.error, data, length);
    case ZIP_SOURCE_FREE: return 0;
    case ZIP_SOURCE_SUPPORTS: return ZIP_SOURCE_SUPPORTS_WRITABLE;
    default: zip_error_set(&output.error, ZIP_ER_OPNOTSUPP, 0); return -1;
  }
}

}  // namespace quillon
