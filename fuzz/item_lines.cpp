// Lines of engines and wagons, taken apart and judged by a game that has one of each.
#include "checkup/ItemScan.h"
#include "core/text/Text.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  World world;
  for (const char* name : {"ore_goat.eng", "ore_hopper.wag"})
    world.Memory().Put(std::string("\\game\\TRAINS\\TRAINSET\\ORECAR\\") + name, "x");
  TrainDatabase trains(world.Get(), false);
  trains.BuildTrainDatabase([] {});
  const GameText text("\\game\\a.con", bytes);
  std::vector<FoundItem> found;
  FileFacts facts = TakeFacts(FileKind::Consist, text, found);
  ItemTable items;
  for (const auto& item : found) {
    if (item.line != 0) facts.unsplit.emplace_back(facts.items.size(), item.line);
    facts.items.push_back(items.Add(item.kind, item.text));
  }
  for (const auto& line : Lines(text.Text())) items.Add(TrainKind::Wagon, Trim(line));
  std::string last;
  ItemScan scan(trains, items, last);
  scan.BeginPass();
  scan.ScanFile(text.Path(), facts, [](const TrainFault&) {});
}

}  // namespace quillon::fuzz
