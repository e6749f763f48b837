#include "checkup/LastCheckup.h"

#include <functional>
#include <nlohmann/json.hpp>

#include "catalogue/Catalogue.h"
#include "catalogue/Playable.h"
#include "core/FlatFile.h"
#include "core/Installation.h"
#include "core/Version.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

using Json = nlohmann::json;

struct Note {
  std::uint64_t seen = 0, records = 0;
  std::string lastConsist, lastItem;
};

std::optional<Note> Read(Program& program) {
  std::string text;
  if (program.files.Host().Read(program.app.LastCheckupFile(), text, kNoLimit) != FileCode::Ok) return {};
  try {
    const Json note = Json::parse(text);
    if (note.at("version") != kVersion) return {};
    return Note{note.at("seen"), note.at("records"), note.at("lastConsist"), note.at("lastItem")};
  } catch (const Json::exception&) {  // of a file that was damaged
    return {};
  }
}

}  // namespace

void CheckupSight::Add(std::uint64_t number) {
  number_ = (number_ ^ number) * 0x9E3779B97F4A7C15u;
  number_ ^= number_ >> 29;
}

void CheckupSight::Add(std::string_view text) { Add(std::hash<std::string_view>()(text)); }

void CheckupSight::Add(const std::vector<GameFile>& files) {
  Add(files.size());
  for (const GameFile& file : files) {
    Add(*file.folder);
    Add(file.shown);
    Add(file.size);
    Add(static_cast<std::uint64_t>(file.modified));
    young_ = young_ || quillon::IsYoung(file.modified);
  }
}

void CheckupSight::AddTrains(Program& program) {
  std::vector<FoundFile> folders;
  program.files.Host().Find(program.BelowGame(kTrainSet) + "*.*", folders);
  for (const auto& folder : folders) Add(folder.folder() ? folder.name + "\\" : folder.name);
  program.files.WalkThroughLinks(program.BelowGame(kTrainSet) + "*.*",
                                 [&](const std::string& folder, const std::string& name) {
                                   const std::string lower = LowerCase(name);
                                   if (!Contains(lower, ".eng") && !Contains(lower, ".wag")) return;
                                   Add(folder);
                                   Add(name);
                                 });
}

bool LastCheckup::IsNoted() const {
  return program_.files.FileExists(program_.app.LastCheckupFile()) &&
         program_.files.FileExists(program_.app.FactsCacheFile());
}

std::uint64_t LastCheckup::Records() const {
  CheckupSight records;
  const auto add = [&](const std::string& pattern) {
    std::vector<FoundFile> found;
    program_.files.Host().Find(pattern, found);
    for (const auto& file : found) {
      if (file.folder()) continue;  // also the one that is listed: it changes with this note
      records.Add(file.name);
      for (const std::uint64_t number :
           {std::uint64_t{file.attributes}, file.size, static_cast<std::uint64_t>(file.modified)})
        records.Add(number);
    }
  };
  for (const auto& path : {program_.app.TrainRecords() + "\\*.*", program_.app.CausesJson(),
                           program_.app.CausesHtml(), program_.app.CausesOfLoaded(),
                           program_.app.FactsCacheFile(), program_.BelowGame(kBackedUpConsists) + "*.con"})
    add(path);
  const auto playable = PlayableOf(program_, Catalogue(program_).Loaded());
  records.Add(playable ? playable->Text() : "");
  records.Add(RouteOfPage(program_));
  return records.Number();
}

bool LastCheckup::WouldBeTheSame(const CheckupSight& sight) const {
  const auto note = Read(program_);
  return note && note->seen == sight.Number() && note->records == Records();
}

void LastCheckup::Note(const CheckupSight& sight) const {
  if (sight.IsYoung()) return;
  const Json note = {{"version", kVersion},
                     {"seen", sight.Number()},
                     {"records", Records()},
                     {"lastConsist", program_.shared.LastConsistName},
                     {"lastItem", program_.shared.LastVerifiedItem}};
  try {
    program_.files.WriteAll(program_.app.LastCheckupFile(), note.dump());
  } catch (const RunTimeError&) {     // then the next Checkup is a whole one
  } catch (const Json::exception&) {  // a name that is no text
  }
}

void LastCheckup::HandOn() const {
  const auto note = Read(program_);
  if (!note) return;
  program_.shared.LastConsistName = note->lastConsist;
  program_.shared.LastVerifiedItem = note->lastItem;
}

}  // namespace quillon
