#include "checkup/ConsistAnalysis.h"

#include "core/text/Text.h"
#include "shelf/Rescue.h"

namespace quillon {
namespace {

constexpr std::string_view kConsists = "\\Trains\\Consists\\",
                           kBackups = "\\Trains\\Consists\\QN-Backed-up-consists";
constexpr std::size_t kMostLog = 1u << 20;  // bytes in memory

}  // namespace

ConsistAnalysis::ConsistAnalysis(Program& program, Progress& progress, FactsReader& reader, ItemScan& scan,
                                 FinalReport& report)
    : program_(program),
      files_(program.files),
      progress_(progress),
      reader_(reader),
      scan_(scan),
      report_(report),
      LastConsistName(program.shared.LastConsistName) {}

std::string ConsistAnalysis::PathOf(std::string_view file) const {
  return program_.BelowGame(kConsists) + std::string(file);
}

std::string ConsistAnalysis::BackupPathOf(std::string_view file) const {
  return program_.BelowGame(kBackups) + "\\" + std::string(file);
}

void ConsistAnalysis::BeginReading() {
  BringBack();
  ConsistFileArray = ListGameFiles(program_, PathOf(""), ".con");
  standing_ = ConsistFileArray.size();
  reader_.Begin(FileKind::Consist, ConsistFileArray, facts_);
}

void ConsistAnalysis::ListAsBroughtBack() {
  ConsistFileArray = ListGameFiles(program_, PathOf(""), ".con");
  standing_ = ConsistFileArray.size();
  auto away = ListGameFiles(program_, BackupPathOf(""), ".con");
  const auto folder = std::make_shared<const std::string>(PathOf(""));
  for (auto& file : away) file.folder = folder;
  AddAsListed(ConsistFileArray, std::move(away));
}

void ConsistAnalysis::LoadConsistList(bool again) {
  names_ = {""};
  const auto all = ConsistFileArray.size();
  progress_.Maximum(static_cast<int>(all));
  progress_.Value(0);
  for (std::size_t i = 0; i < all; ++i) {
    progress_.Value(static_cast<int>(i) + 1);
    if (again) continue;
    if (facts_[i].broken != FileFacts::Broken::Nowhere) WriteLog();
    ReadConsistCfg(i);
  }
  WriteLog();
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

void ConsistAnalysis::ReadConsistCfg(std::size_t consist) {
  const FileFacts& facts = facts_[consist];
  const std::string file = ConsistFileArray[consist].Name();
  program_.Step("Reading the consist " + file);
  facts.Require(FileFacts::Broken::Reading);
  if (facts.name) LastConsistName = *facts.name;
  facts.Require(FileFacts::Broken::Name);
  const std::string name = LowerCase(LastConsistName), number = std::to_string(consist + 1);
  names_.insert(name);
  log_ += "Added to ConsistFileArray(" + number + "): " + file + "\r\nAdded to ConsistCfg(" + number +
          "): " + name + "\r\n\r\n";
  if (log_.size() > kMostLog) WriteLog();
}

/// Not line by line: there may be a hundred thousand.
void ConsistAnalysis::WriteLog() {
  if (log_.empty()) return;
  log_.resize(log_.size() - std::string_view("\r\n").size());
  ListFile(files_, program_.app.TrainRecord("conarray.log"), true).Add(log_);
  log_.clear();
}

void ConsistAnalysis::VerifyConsists(bool again) {
  // Nothing ever records a total: the bar stands still.
  progress_.Maximum(NumericValue(Trim(
      program_.ini.ReadIni("Total", "TotalConsists", "0", program_.app.TrainRecord("consiststotals.ini")))));
  progress_.Value(0);
  if (!again) scan_.BeginPass();
  progress_.Caption("Verifying ");  // for the nameless element in front of the list
  for (std::size_t i = 0; i < ConsistFileArray.size(); ++i) {
    const std::string file = ConsistFileArray[i].Name();
    program_.Step("Verifying the consist " + file);
    if (!again) Verify(i, file);
    progress_.Detail(i + 1, ConsistFileArray.size(), "consists");
    progress_.Caption("Verifying " + file);
  }
  progress_.Maximum(100);
}

void ConsistAnalysis::Verify(std::size_t consist, const std::string& file) {
  bool bad = false;
  scan_.ScanFile(ConsistFileArray[consist].Path(), facts_[consist], [&](const TrainFault& fault) {
    bad = true;
    report_.AddConsist(file);
    report_.AddTrain(fault);
  });
  if (!bad) return;
  MoveAway(file);
  --standing_;
}

void ConsistAnalysis::MoveAway(const std::string& file) {
  const std::string consist = PathOf(file), backup = BackupPathOf(file);
  if (!files_.FileExists(backup)) return files_.Rename(consist, backup);
  // The older backup stands for the consist.
  backupsStood_ = true;
  if (!files_.AreEqual(consist, backup)) {
    Rescue rescue(program_, std::string(kNoData),
                  "The Checkup set the consist aside, and an older one of that name was there.");
    rescue.Keep(consist);
    rescue.Close();
  }
  files_.KillIfThere(consist);
}

}  // namespace quillon
