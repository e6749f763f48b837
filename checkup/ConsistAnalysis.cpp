#include "checkup/ConsistAnalysis.h"

#include "core/Text.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

constexpr std::string_view kConsists = "\\Trains\\Consists\\",
                           kBackups = "\\Trains\\Consists\\QN-Backed-up-consists";
constexpr std::string_view kTrainCfg = "traincfg (";
constexpr std::string_view kUsualComment = "comment(individual consist name usually same name as this file)";

}  // namespace

ConsistAnalysis::ConsistAnalysis(Program& program, Progress& progress, ItemScan& scan, FinalReport& report)
    : program_(program),
      files_(program.files),
      progress_(progress),
      scan_(scan),
      report_(report),
      LastConsistName(program.shared.LastConsistName) {}

std::string ConsistAnalysis::PathOf(std::string_view file) const {
  return program_.BelowGame(kConsists) + std::string(file);
}

std::string ConsistAnalysis::BackupPathOf(std::string_view file) const {
  return program_.BelowGame(kBackups) + "\\" + std::string(file);
}

void ConsistAnalysis::LoadConsistList() {
  ConsistFileArray.clear();
  names_ = {""};
  BringBack();
  const std::vector<std::string> files = files_.ListFiles(PathOf("*.con"));
  progress_.Maximum(static_cast<int>(files.size()));
  int value = 0;
  progress_.Value(value);
  log_.reset();
  for (const auto& file : files) {
    progress_.Value(++value);
    progress_.Detail(static_cast<std::uint64_t>(value), files.size(), "consists");
    program_.Step("Reading the consist " + file);
    ReadConsistCfg(LowerCase(file));
  }
}

void ConsistAnalysis::BringBack() {
  program_.Step("Bringing backed-up consists back");
  files_.MakeFolderIfMissing(program_.BelowGame(kBackups));
  for (const auto& file : files_.ListFiles(BackupPathOf("*.con"))) {
    if (files_.FileExists(PathOf(file))) continue;
    files_.SetAttributes(BackupPathOf(file), kArchive);
    files_.Rename(BackupPathOf(file), PathOf(file));
  }
}

void ConsistAnalysis::ReadConsistCfg(const std::string& file) {
  TakeConfigName(GameText(files_, PathOf(file)));
  LastConsistName = ReplaceAll(LastConsistName, "\"", "");
  ConsistFileArray.push_back(file);
  const std::string name = LowerCase(LastConsistName), number = std::to_string(ConsistFileArray.size());
  names_.insert(name);
  if (!log_) log_ = std::make_unique<ListFile>(files_, program_.app.TrainRecord("conarray.log"), true);
  log_->Add("Added to ConsistFileArray(" + number + "): " + file + "\r\nAdded to ConsistCfg(" + number +
            "): " + name + "\r\n");
}

/// The last one of the file counts.
void ConsistAnalysis::TakeConfigName(const GameText& text) {
  for (auto at = text.Find(kTrainCfg, 0); at != GameText::kNone;) {
    const auto start = at + kTrainCfg.size();
    auto end = text.FindCharacter('\r', start);
    if (end == GameText::kNone) end = text.FindCharacter('\n', start);
    if (end == GameText::kNone) end = text.FindCharacter('\t', start);
    LastConsistName =
        Trim(ReplaceAll(text.Between(start, end, "\"TrainCfg (\" has no end"), kUsualComment, ""));
    at = text.Find(kTrainCfg, end);
  }
}

void ConsistAnalysis::VerifyConsists() {
  // Nothing ever records a total: the bar stands still.
  progress_.Maximum(NumericValue(Trim(
      program_.ini.ReadIni("Total", "TotalConsists", "0", program_.app.TrainRecord("consiststotals.ini")))));
  progress_.Value(0);
  scan_.BeginPass();
  progress_.Caption("Verifying ");  // for the nameless element in front of the list
  std::uint64_t done = 0;
  for (const auto& file : ConsistFileArray) {
    program_.Step("Verifying the consist " + file);
    Verify(file);
    progress_.Detail(++done, ConsistFileArray.size(), "consists");
    progress_.Caption("Verifying " + file);
  }
  progress_.Maximum(100);
}

void ConsistAnalysis::Verify(const std::string& file) {
  bool bad = false;
  scan_.ScanFile(GameText(files_, PathOf(file)), [&](const TrainFault& fault) {
    bad = true;
    report_.AddConsist(file);
    report_.AddTrain(fault);
  });
  if (bad) MoveAway(file);
}

void ConsistAnalysis::MoveAway(const std::string& file) {
  const std::string consist = PathOf(file), backup = BackupPathOf(file);
  if (!files_.FileExists(backup)) return files_.Rename(consist, backup);
  // The older backup stands for the consist.
  if (!files_.AreEqual(consist, backup)) {
    Rescue rescue(program_, std::string(kNoData),
                  "The Checkup set the consist aside, and an older one of that name was there.");
    rescue.Keep(consist);
    rescue.Close();
  }
  files_.KillIfThere(consist);
}

}  // namespace quillon
