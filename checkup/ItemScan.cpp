#include "checkup/ItemScan.h"

#include <algorithm>

namespace quillon {

void ItemScan::BeginPass() {
  VerifiedItems.clear();
  VerifiedItems.resize(items_.LowerTextCount());
  VerifiedItems[sentinel_] = true;
}

void ItemScan::ScanFile(const std::string& path, const FileFacts& facts,
                        const std::function<void(const TrainFault&)>& fault) {
  for (std::size_t i = 0; i < facts.items.size(); ++i) {
    const TrainItem& item = items_[facts.items[i]];
    if (IsKnownGood(item)) continue;
    if (!item.splits) {
      const auto at = std::find_if(facts.unsplit.begin(), facts.unsplit.end(),
                                   [&](const auto& place) { return place.first == i; });
      throw GameText::ErrorAt(path, at->second, "a train needs a name and a folder");
    }
    if (trains_.CheckItem(item.kind, item.file, item.folder)) {
      VerifiedItems[item.lowerText] = true;
      LastVerifiedItem = items_.LowerTextOf(item.lowerText);
    } else {
      fault({item.kind, item.file, item.folder, trains_.FindAlternateFolder(item.kind, item.file)});
    }
  }
  facts.Require(FileFacts::Broken::Items);
}

bool ItemScan::IsKnownGood(const TrainItem& item) {
  const std::string& lower = items_.LowerTextOf(item.lowerText);
  if (lower != LastVerifiedItem && !VerifiedItems[item.lowerText]) return false;
  LastVerifiedItem = lower;
  return true;
}

}  // namespace quillon
