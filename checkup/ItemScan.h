// The judgement of "EngineData (" and "WagonData (" items in consists and activities.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "checkup/GameFacts.h"
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
  /// All outlive the scan; the last is lower case and lives on between runs.
  ItemScan(const TrainDatabase& trains, ItemTable& items, std::string& lastVerifiedItem)
      : trains_(trains),
        items_(items),
        sentinel_(items.LowerText("qntemp tempqn")),
        LastVerifiedItem(lastVerifiedItem) {}

  /// Forgets which items were found good. All items have their numbers by now.
  void BeginPass();
  /// Judges all items of a file; each fault goes to `fault`. An item that can't be taken apart is error 5.
  void ScanFile(const std::string& path, const FileFacts& facts,
                const std::function<void(const TrainFault&)>& fault);

 private:
  bool IsKnownGood(const TrainItem& item);

  const TrainDatabase& trains_;
  const ItemTable& items_;
  const std::uint32_t sentinel_;
  std::vector<bool> VerifiedItems;  // by the number of the text in lower case
  std::string& LastVerifiedItem;
};

}  // namespace quillon
