#include "tests/world/Disk.h"

#include <zip.h>

#include <algorithm>

#include "core/host/FileSystem.h"
#include "core/text/Text.h"

namespace quillon {

std::string Disk::HostPath(std::string_view path) {
  const std::string host = MakeHostFileSystem()->HostPath(path);
  if (host.empty()) throw std::runtime_error("no path: " + std::string(path));
  return host;
}

bool Disk::Exists(std::string_view path) {
  std::uint32_t attributes = 0;
  return MakeHostFileSystem()->GetAttributes(path, attributes) == FileCode::Ok;
}

std::string Disk::ReadBytes(std::string_view path) {
  std::string bytes;
  if (MakeHostFileSystem()->Read(path, bytes, kNoLimit) != FileCode::Ok)
    throw std::runtime_error("can't read " + std::string(path));
  return bytes;
}

void Disk::Write(std::string_view path, std::string_view bytes) {
  const fs::path host = ToPath(HostPath(path));
  fs::create_directories(host.parent_path());
  WriteBytes(host, bytes);
}

void Disk::Remove(std::string_view path) { RemoveAll(ToPath(HostPath(path))); }

Strings Disk::Names(std::string_view folder) {
  Strings names;
  for (const auto& item : fs::directory_iterator(ToPath(HostPath(folder))))
    names.push_back(LowerCase(FromPath(item.path().filename())) + (item.is_directory() ? "\\" : ""));
  std::sort(names.begin(), names.end());
  return names;
}

NamedTexts Disk::Tree(std::string_view folder) {
  NamedTexts tree;
  const fs::path root = ToPath(HostPath(folder));
  for (const auto& item : fs::recursive_directory_iterator(root)) {
    if (!item.is_regular_file()) continue;
    tree[LowerCase(ReplaceAll(Relative(item.path(), root), "/", "\\"))] = ReadBytes(FromPath(item.path()));
  }
  return tree;
}

NamedTexts Disk::State(std::string_view folder) {
  NamedTexts state;
  const fs::path root = ToPath(HostPath(folder));
  for (const auto& item : fs::recursive_directory_iterator(root)) {
    std::string& what = state[Relative(item.path(), root)];
    const bool readOnly = (item.symlink_status().permissions() & fs::perms::owner_write) == fs::perms::none;
    what = item.is_symlink()     ? "link to " + FromPath(fs::read_symlink(item.path()))
           : item.is_directory() ? "folder"
                                 : (readOnly ? "read-only: " : "file: ") + ReadBytes(FromPath(item.path()));
  }
  return state;
}

Strings Disk::Changed(const NamedTexts& before, NamedTexts after) {
  Strings names;
  for (const auto& [name, what] : before) {
    if (after[name] != what) names.push_back(name + ": " + after[name]);
    after.erase(name);
  }
  for (const auto& [name, what] : after) names.push_back(name + ": " + what);
  return names;
}

// By the format library itself, so that what the product makes is judged by someone else.
NamedTexts Disk::Unzipped(std::string_view path) {
  zip_t* zip = zip_open(HostPath(path).c_str(), ZIP_RDONLY, nullptr);
  if (zip == nullptr) throw std::runtime_error("no zip: " + std::string(path));
  NamedTexts entries;
  for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(zip_get_num_entries(zip, 0)); ++i) {
    zip_stat_t stat;
    zip_stat_index(zip, i, 0, &stat);
    std::string bytes(stat.size, '\0');
    zip_file_t* file = zip_fopen_index(zip, i, 0);
    zip_fread(file, bytes.data(), bytes.size());
    zip_fclose(file);
    entries[LowerCase(ReplaceAll(stat.name, "/", "\\"))] = bytes;
  }
  zip_discard(zip);
  return entries;
}

}  // namespace quillon
