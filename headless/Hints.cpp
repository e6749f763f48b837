#include "headless/Hints.h"

#include <cstdio>

#include "catalogue/Catalogue.h"
#include "catalogue/GameFolders.h"
#include "core/Program.h"

namespace quillon {

void Hints::Say(const std::string& text, const std::string& command) const {
  const std::string toType = command.empty() ? "" : "; type: " + AsToBeTyped(command, options_);
  std::fprintf(stderr, "quillon: %s%s\n", text.c_str(), toType.c_str());
}

void Hints::AfterRefusal(const Command& command) const {
  const bool nothingSelected = command.argument.empty() && !command.hasArgument &&
                               Catalogue(program_).ReadCurrent("Zip", kNoData) == kNoData;
  if (command.name == "verify") return;  // each line says what to do
  if (program_.ini.ReadIni("TrainSim", "Train.exe", "No", program_.app.SettingsIni()) == "No")
    Say("Train Simulator was not found", "quillon options --game DIR");
  else if (!program_.files.IsPathAFolder(program_.BelowGame(kWorkingRoute)))
    Say("the working route is missing", "quillon --welcome ok start");
  else if (command.name == "causes")
    Say("there is no Checkup to tell of", "quillon checkup");
  else if (nothingSelected && (command.name == "load" || command.name == "info"))
    Say("no route is selected", "quillon pick NAME (quillon routes lists them)");
}

void Hints::AboutRights(const std::string& missing, const std::string& game) const {
  if (!missing.empty()) Say(game + ": " + missing);
}

void Hints::AboutTheGame() const {
  const std::string& game = program_.shared.TrainSimPath;
  if (!program_.files.FileExists(game + std::string(kTrainExe)))
    Say("train.exe is not in " + game, "quillon options --game DIR");
}

}  // namespace quillon
