// The shelf: the records of a rescue, and what is put back by them.
#include "shelf/Shelf.h"

#include "fuzz/Target.h"
#include "shelf/PlacedRecord.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  World world;
  const std::string rescue = world.Get().app.Rescued() + "\\foo\\2026-05-01 12-30-00";
  world.Memory().Put(rescue + kShelfReason, bytes);
  world.Memory().Put(rescue + kShelfRenames, bytes);
  world.Memory().Put(rescue + "\\game\\ROUTES\\a\\a.trk", "x");
  world.Memory().Put(rescue + " (2)\\app\\routes\\foo.qnz", "x");
  world.Memory().Put("\\game\\ROUTES\\b\\b.trk", "x");
  world.Memory().Put(world.Get().app.PlacedList(), bytes);
  PlacedRecord(world.Get()).NoteOwn({"\\game\\a"});
  const Shelf shelf(world.Get());
  Require(shelf.List().size() == 2, "a rescue is missing");
  for (const auto& entry : shelf.List())
    if (shelf.ObstacleOf(entry).empty()) shelf.PutBack(entry);
  Require(shelf.List().size() == 2, "a rescue has gone with its return");
  shelf.Settle(rescue);
  while (!shelf.List().empty()) shelf.Drop(shelf.List().front());
}

}  // namespace quillon::fuzz
