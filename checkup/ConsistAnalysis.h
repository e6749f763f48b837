// Consists that name trains which are not installed crash the game: they are moved out of its sight, and come
// back for every new look.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "checkup/FinalReport.h"
#include "checkup/ItemScan.h"
#include "core/Program.h"
#include "core/Progress.h"

namespace quillon {

class ConsistAnalysis {
 public:
  ConsistAnalysis(Program& program, Progress& progress, ItemScan& scan, FinalReport& report);

  /// Brings backed-up consists back and reads the names of all.
  void LoadConsistList();
  /// Moves the bad ones away. Their names stay known.
  void VerifyConsists();

  /// Whether a consist of this lower-case name was seen, also one that has been moved since.
  bool IsKnownName(const std::string& name) const { return names_.contains(name); }
  std::string PathOf(std::string_view file) const;
  std::string BackupPathOf(std::string_view file) const;

 private:
  void BringBack();
  void ReadConsistCfg(const std::string& file);
  void TakeConfigName(const GameText& text);
  void Verify(const std::string& file);
  void MoveAway(const std::string& file);

  Program& program_;
  Files& files_;
  Progress& progress_;
  ItemScan& scan_;
  FinalReport& report_;
  std::vector<std::string> ConsistFileArray;  // lower case, with extension
  std::unique_ptr<ListFile> log_;             // conarray.log, made with the first consist
  std::unordered_set<std::string> names_;     // ConsistCfg, and the empty text at its index 0
  std::string& LastConsistName;               // carried over to a consist without a name
};

}  // namespace quillon
