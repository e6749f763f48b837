#include "checkup/TrainDatabase.h"

#include "core/Installation.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

std::string Pair(const std::string& file, const std::string& folder) { return file + '\0' + folder; }

}  // namespace

void TrainDatabase::BuildTrainDatabase(const std::function<void()>& yield) {
  indexes_ = {};
  folders_.clear();
  indexes_[0].doubles = program_.app.TrainRecord("engdoubles.ini");
  indexes_[1].doubles = program_.app.TrainRecord("wagdoubles.ini");
  const auto batch = program_.ini.Batch();
  std::vector<FoundFile> found;
  program_.files.Host().Find(program_.BelowGame(kTrainSet) + "*.*", found);
  // A train file counts in the one folder directly below: neither beside these folders nor deeper.
  for (const auto& entry : found) {
    if (entry.folder() && !entry.dots()) WalkTrainFolder(entry.name);
    yield();
  }
}

void TrainDatabase::WalkTrainFolder(const std::string& name) {
  const std::string folder = LowerCase(name);
  folders_.insert(folder);
  std::vector<FoundFile> found;
  program_.files.Host().Find(program_.BelowGame(kTrainSet) + name + "\\*.*", found);
  for (const auto& entry : found) {
    if (entry.folder()) continue;
    const std::string file = LowerCase(entry.name);
    if (file.ends_with(".eng")) Add(indexes_[0], file, folder);
    if (file.ends_with(".wag") && file != "default.wag") Add(indexes_[1], file, folder);
  }
}

void TrainDatabase::Add(Index& index, const std::string& file, const std::string& folder) {
  if (!index.firstFolder.try_emplace(file, folder).second) {
    index.lastDouble[file] = folder;
    if (recordsDoubles_) program_.ini.WriteIni(file, "OtherFolder", "\"" + folder + "\"", index.doubles);
  }
  index.FileFolders.insert(Pair(file, folder));
  ++index.count;
}

bool TrainDatabase::CheckItem(TrainKind kind, const std::string& file, const std::string& folder) const {
  return indexes_[static_cast<std::size_t>(kind)].FileFolders.contains(Pair(file, folder));
}

std::string TrainDatabase::FindAlternateFolder(TrainKind kind, const std::string& file) const {
  const Index& index = indexes_[static_cast<std::size_t>(kind)];
  const auto last = index.lastDouble.find(file);
  if (last != index.lastDouble.end() && last->second != "none") return last->second;
  const auto first = index.firstFolder.find(file);
  return first == index.firstFolder.end() ? "none" : first->second;
}

}  // namespace quillon
