#include "sample/SampleFile.h"

#include <libdeflate.h>

#include <algorithm>
#include <ctime>
#include <iterator>
#include <memory>
#include <set>
#include <utility>

#include "core/archive/PackQueue.h"
#include "core/archive/ZipBuilder.h"
#include "core/text/Text.h"
#include "sample/HostFiles.h"

namespace quillon {
namespace {

constexpr int kLevel = 6;  // the usual default of zip programs
constexpr std::time_t kModified =
    1'015'070'400;  // 2 March 2002: the present time would make each run's bytes differ

struct FreeCompressor {
  void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};
using Compressor = std::unique_ptr<libdeflate_compressor, FreeCompressor>;

}  // namespace

void WriteTree(const std::string& hostFolder, const SampleFiles& files) {
  std::set<std::string> made;
  MakeHostFolder(hostFolder);
  for (const auto& file : files) {
    const std::string hostPath = hostFolder + "/" + ReplaceAll(file.name, "\\", "/");
    const std::string folder = hostPath.substr(0, hostPath.rfind('/'));
    if (made.insert(folder).second) MakeHostFolder(folder);
    WriteHostFile(hostPath, file.make());
  }
}

void WriteZip(const std::string& hostPath, const SampleFiles& files) {
  const Compressor compressor(libdeflate_alloc_compressor(kLevel));
  ZipBuilder builder(hostPath, hostPath);
  for (const auto& file : files)
    builder.AddPacked(file.name, kModified, [&] { return Deflated(compressor.get(), file.make()); });
  builder.Write([](double) {});
}

SampleFiles Below(const std::string& folder, SampleFiles files) {
  for (auto& file : files) file.name.insert(0, folder);
  return files;
}

SampleFiles TakeOut(SampleFiles& files, const std::string& folder) {
  const auto first = std::stable_partition(
      files.begin(), files.end(), [&](const SampleFile& file) { return !file.name.starts_with(folder); });
  SampleFiles taken(std::make_move_iterator(first), std::make_move_iterator(files.end()));
  files.erase(first, files.end());
  for (auto& file : taken) file.name.erase(0, folder.size());
  return taken;
}

}  // namespace quillon
