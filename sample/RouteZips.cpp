#include "sample/RouteZips.h"

#include "core/text/Text.h"
#include "sample/FileBytes.h"
#include "sample/HostFiles.h"
#include "sample/RouteMaker.h"

namespace quillon {
namespace {

constexpr int kFilesAtScale1 = 55;

RoutePlan Small(std::string id, std::string displayName, std::string description, int palette) {
  RoutePlan plan;
  plan.stem = LowerCase(id);
  plan.id = std::move(id);
  plan.displayName = std::move(displayName);
  plan.description = std::move(description);
  plan.palette = palette;
  return plan;
}

SampleFile Text(std::string name, std::string text) {
  return {std::move(name), [text = std::move(text)] { return text; }};
}

/// Inner zips are files of their own first, in a folder that goes when all is done.
class RouteZipMaker {
 public:
  explicit RouteZipMaker(std::string hostFolder)
      : folder_(std::move(hostFolder)), parts_(folder_ + "/parts") {
    MakeHostFolder(parts_);
  }

  std::vector<std::pair<std::string, std::string>> Make(int scale) {
    MakePlainRoutes(scale);
    MakeNestedRoutes();
    MakeSelfExtractingRoute();
    MakeOthers();
    MakeCoastalLines();
    RemoveHostTree(parts_);
    return std::move(zips_);
  }

 private:
  void Write(const std::string& name, const std::string& kind, const SampleFiles& files) {
    WriteZip(folder_ + "/" + name, files);
    zips_.emplace_back(name, kind);
  }

  SampleFile InnerZip(const std::string& storedName, const SampleFiles& files) {
    const std::string hostPath = parts_ + "/" + std::to_string(++partCount_) + ".zip";
    WriteZip(hostPath, files);
    return {storedName, [hostPath] { return ReadHostFile(hostPath); }};
  }

  void MakePlainRoutes(int scale) {
    RoutePlan plan =
        Small("GROSSTAL", "Grosstal Bahn", "A branch line up a wide valley, from the mill to the pass.", 0);
    plan.files = kFilesAtScale1 * scale;
    plan.sizePercent = 100;
    plan.manyPictures = true;
    Write("Grosstal Bahn.zip", "plain route in a folder", Below("GROSSTAL\\", RouteFiles(plan)));

    plan = Small("MÜHLENBACH SÖHNE", "Mühlenbach & Söhne Kleinbahn",
                 "Schmalspur im Tal der Mühlen, für Grün und Öl.", 3);
    plan.stem = "mühle süd";
    Write("Mühlenbach & Söhne Kleinbahn.zip", "route with accents and blanks in its names",
          Below("MÜHLENBACH SÖHNE\\", RouteFiles(plan)));

    plan = Small("LOWMOOR", "Lowmoor Light Railway", "Across the moor, with a ferry at its end.", 5);
    SampleFiles files = RouteFiles(plan);
    for (auto& file : files) file.name = LowerCase(file.name);
    Write("top_level_route.zip", "route at the zip's top, without a folder", files);

    plan = Small("STILLWATER", "Stillwater Siding", "A siding for quiet days.", 2);
    plan.activities = false;
    Write("no_activities.zip", "route without activities", Below("STILLWATER\\", RouteFiles(plan)));
  }

  void MakeNestedRoutes() {
    const RoutePlan hochmoor = Small("HOCHMOOR", "Hochmoor Querbahn", "Straight through the peat.", 1);
    Write("zip_in_zip_Hochmoor.zip", "route in an inner zip",
          {InnerZip("hochmoor.zip", Below("some\\folder\\HOCHMOOR\\", RouteFiles(hochmoor))),
           Text("readme.txt", "Unpack hochmoor.zip with its folders.\r\n")});

    SampleFiles files = RouteFiles(Small("FJORD", "Fjordline", "Tunnels, water, and tunnels.", 4));
    const SampleFiles tiles = TakeOut(files, "TILES\\");
    files = Below("FJORD\\", std::move(files));
    files.push_back(InnerZip("FJORD\\TILES.ZIP", tiles));
    Write("tiles_beside_Fjordline.zip", "route with its tiles in an inner zip", files);
  }

  void MakeSelfExtractingRoute() {
    SampleFiles files =
        Below("KESTREL\\", RouteFiles(Small("KESTREL", "Kestrel Valley", "Up the valley in one go.", 1)));
    // A route that has nothing but folders at its top is not taken out of its program.
    files.push_back(Text("kestrel.txt", "Start kestrel.exe and say where your routes are.\r\n"));
    const SampleFile zip = InnerZip("kestrel.exe", files);
    Write("self_extracting_Kestrel.zip", "route in a program that unpacks itself",
          {{zip.name, [zip] { return "MZ" + ShapeBytes(Numbers(zip.name), 20000) + zip.make(); }}});
  }

  void MakeOthers() {
    SampleFiles files =
        Below("BREAKWELL\\", RouteFiles(Small("BREAKWELL", "Breakwell", "It never arrives whole.", 5)));
    const std::string whole = InnerZip({}, files).make();
    WriteHostFile(folder_ + "/damaged_download.zip", std::string_view(whole).substr(0, whole.size() * 3 / 5));
    zips_.emplace_back("damaged_download.zip", "damaged: the second part is missing");

    files = RouteFiles(Small("SNOWPATCH", {}, {}, 2));
    Write("snow_patch.zip", "no route: only textures", Below("TEXTURES\\", TakeOut(files, "TEXTURES\\")));

    Write("installer_route.zip", "needs to be installed by hand: it holds a program",
          {{"setup.exe", [] { return "MZ" + ShapeBytes(Numbers("setup.exe"), 40000); }},
           Text("readme.txt", "Start setup.exe.\r\n")});

    files = Below("TWINTON\\", RouteFiles(Small("TWINTON", "Twinton", "In two parts.", 3)));
    const auto half = files.begin() + static_cast<std::ptrdiff_t>(files.size() / 2);
    Write("two_parts.zip", "more than one inner zip",
          {InnerZip("a.zip", {files.begin(), half}), InnerZip("b.zip", {half, files.end()})});
  }

  void MakeCoastalLines() {
    for (const std::string version : {"1", "2"}) {
      RoutePlan plan =
          Small("COAST" + version, "Coastal Line", "Along the cliffs, version " + version + ".", 4);
      Write("coastal_v" + version + ".zip", "one of two routes of the same name",
            Below("COAST\\", RouteFiles(plan)));
    }
  }

  const std::string folder_, parts_;
  int partCount_ = 0;
  std::vector<std::pair<std::string, std::string>> zips_;
};

}  // namespace

std::vector<std::pair<std::string, std::string>> MakeRouteZips(const std::string& hostFolder, int scale) {
  return RouteZipMaker(hostFolder).Make(scale);
}

}  // namespace quillon
