#include "checkup/CheckupBefore.h"

#include "core/text/Text.h"

namespace quillon {

CheckupBefore::CheckupBefore(Program& program)
    : program_(program),
      files_(program.files),
      aside_(program.app.TrainRecords() + " before"),
      lastItem_(program.shared.LastVerifiedItem),
      lastConsist_(program.shared.LastConsistName) {}

void CheckupBefore::SetRecordsAside() const {
  program_.Step("Removing the records of the last Checkup");
  const std::string trains = program_.app.TrainRecords();
  Drop();  // of a Checkup that was cut short
  if (files_.IsPathAFolder(trains) && files_.Host().Move(trains, aside_) != FileCode::Ok)
    files_.DelTree(trains);
  files_.MakeFolderIfMissing(trains);
}

void CheckupBefore::NoteConsists() {
  const std::string folder = program_.BelowGame(kBackedUpConsists);
  hadFolder_ = files_.IsPathAFolder(folder);
  files_.Host().Find(folder + "*.con", consists_);
}

void CheckupBefore::TakeBack() {
  program_.Step("Taking the Checkup back");
  TakeRecordsBack();
  const std::string consists = program_.BelowGame(kGameConsists),
                    aside = program_.BelowGame(kBackedUpConsists);
  for (const auto& consist : consists_) {
    if (files_.FileExists(aside + consist.name) || !files_.FileExists(consists + consist.name)) continue;
    files_.Rename(consists + consist.name, aside + consist.name);
    if ((consist.attributes & kReadOnly) != 0) files_.SetAttributes(aside + consist.name, consist.attributes);
  }
  if (!hadFolder_) files_.Host().RemoveFolder(CutBackslash(aside));
}

void CheckupBefore::TakeRecordsBack() {
  const std::string trains = program_.app.TrainRecords();
  if (files_.IsPathAFolder(aside_)) {
    files_.DelTree(trains);
    files_.Rename(aside_, trains);
  }
  files_.MakeFolderIfMissing(trains);
  program_.shared.LastVerifiedItem = lastItem_;
  program_.shared.LastConsistName = lastConsist_;
}

}  // namespace quillon
