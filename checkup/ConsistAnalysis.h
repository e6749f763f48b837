// Consists that name trains which are not installed crash the game: they are moved out of its sight, and come
// back for every new look.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "checkup/FactsReader.h"
#include "checkup/FinalReport.h"
#include "checkup/ItemScan.h"
#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

class ConsistAnalysis {
 public:
  ConsistAnalysis(Program& program, Progress& progress, FactsReader& reader, ItemScan& scan,
                  FinalReport& report);

  /// Brings backed-up consists back and begins to read all.
  void BeginReading();
  /// Lists them as they would be then, and changes nothing.
  void ListAsBroughtBack();

  /// All are read by now. `again`: a pass that would come to the same as the one before only shows itself.
  void LoadConsistList(bool again);
  /// Moves the bad ones away. Their names stay known.
  void VerifyConsists(bool again);

  /// Whether a consist of this lower-case name was seen, also one that has been moved since.
  bool IsKnownName(const std::string& name) const { return names_.contains(name); }

  /// All consists as they were before the bad ones were moved away, and their facts.
  const std::vector<GameFile>& Consists() const { return ConsistFileArray; }
  const std::vector<FileFacts>& Facts() const { return facts_; }
  void Forget() {
    ConsistFileArray = std::vector<GameFile>();
    facts_ = std::vector<FileFacts>();
  }
  /// How many stand in their folder: before the passes, or after them.
  std::size_t Standing() const { return standing_; }
  /// A bad one gave way to its older backup: the next look finds another consist.
  bool BackupsStood() const { return backupsStood_; }
  std::string PathOf(std::string_view file) const;
  std::string BackupPathOf(std::string_view file) const;

 private:
  void BringBack();
  void ReadConsistCfg(std::size_t consist);
  void WriteLog();
  void Verify(std::size_t consist, const std::string& file);
  void MoveAway(const std::string& file);

  Program& program_;
  Files& files_;
  Progress& progress_;
  FactsReader& reader_;
  ItemScan& scan_;
  FinalReport& report_;
  std::vector<GameFile> ConsistFileArray;  // the names in lower case, with extension
  std::vector<FileFacts> facts_;
  std::string log_;                        // what is still to be added to conarray.log
  std::unordered_set<std::string> names_;  // ConsistCfg, and the empty text at its index 0
  bool backupsStood_ = false;
  std::size_t standing_ = 0;
  std::string& LastConsistName;  // carried over to a consist without a name
};

}  // namespace quillon
