// Custom scripts, run on a small working route.
#include "catalogue/LoadLists.h"
#include "fuzz/Target.h"
#include "loading/CustomScript.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  World world;
  const std::string route = "\\game\\ROUTES\\Quillon-route";
  const Installation& app = world.Get().app;
  for (const char* name :
       {"\\Sound\\old.wav", "\\TerrTex\\snow\\oak.ace", "\\Extras\\deep\\a.s", "\\foo.trk"})
    world.Memory().Put(route + name, "x");
  world.Memory().Put("\\game\\Routes\\Europe2\\TerrTex\\Snow\\oegenfield3.ace", "x");
  world.Memory().Put(app.SnowMakerList(), "oak.ace\r\nmissing.ace\r\n");
  world.Memory().Put(app.RouteInfo("foo") + "\\old.txt", "x");
  world.Memory().Put(app.Rescued() + "\\none", "");
  world.Memory().Put(app.ScriptsIni(), "[foo]\r\nScript=foo\r\n");
  world.Memory().Put(app.MiscInfo() + "\\custom_scripts\\foo\\custom.cst", bytes);
  CustomScript(world.Get(), route).Run("foo");
  // What it leaves for the next load can be read.
  LoadLists lists(world.Get());
  for (const auto& backup : lists.Backups()) LoadLists::TargetOf(backup);
}

}  // namespace quillon::fuzz
