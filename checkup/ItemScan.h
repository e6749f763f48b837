// The scan of "EngineData (" and "WagonData (" items in consists and activities.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "checkup/GameText.h"
#include "checkup/TrainDatabase.h"

namespace quillon {

/// A train that is not where it is asked for.
struct TrainFault {
  TrainKind kind;
  std::string file, folder;     // lower case
  std::string alternateFolder;  // "none" when the file lies nowhere
};

class ItemScan {
 public:
  /// Both outlive the scan; the second is lower case and lives on between runs.
  ItemScan(const TrainDatabase& trains, std::string& lastVerifiedItem)
      : trains_(trains), LastVerifiedItem(lastVerifiedItem) {}

  /// Forgets which items were found good.
  void BeginPass();
  /// Scans all lines of a file; each fault goes to `fault`. An item that can't be taken apart is error 5.
  void ScanFile(const GameText& text, const std::function<void(const TrainFault&)>& fault);

 private:
  struct Token;

  void ScanItem(const GameText& text, const Token& token, std::size_t at, std::size_t lineEnd,
                const std::function<void(const TrainFault&)>& fault);
  bool IsKnownGood(const std::string& lowerItem);

  const TrainDatabase& trains_;
  std::unordered_set<std::string> VerifiedItems;  // lower case
  std::string& LastVerifiedItem;
};

}  // namespace quillon
