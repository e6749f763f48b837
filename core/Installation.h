// The vocabulary of paths: every literal of the two trees has its name here, and only here.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace quillon {

/// The application folder `APP` and what lies below it. Paths are texts with backslashes; folders carry no
/// closing backslash unless the name says `Folder...In`.
class Installation {
 public:
  /// `app` has no closing separator.
  explicit Installation(std::string app) : app_(std::move(app)) {}

  const std::string& App() const { return app_; }
  std::string Below(std::string_view path) const { return app_ + std::string(path); }

  // Folders.
  std::string OriginalZips() const { return app_ + "\\original_zips"; }
  std::string Installed() const { return app_ + "\\original_zips\\Installed"; }
  std::string NotInstalled() const { return app_ + "\\original_zips\\Not_Installed"; }
  std::string BadZipFiles() const { return app_ + "\\original_zips\\bad_zip_files"; }
  std::string DownloadedRoutes() const { return app_ + "\\downloaded_routes"; }
  std::string Routes() const { return app_ + "\\routes"; }
  std::string Rescued() const { return app_ + "\\rescued"; }
  std::string Temp() const { return app_ + "\\Resources\\Temp"; }
  std::string ZipTemp() const { return app_ + "\\Resources\\ziptemp"; }
  std::string ZipTemp2() const { return app_ + "\\Resources\\ziptemp2"; }
  std::string MiscInfo() const { return app_ + "\\resources\\Do_Not_Delete!\\misc_info"; }
  std::string DefaultActivities() const { return MiscInfo() + "\\default_activities"; }
  std::string EnvDefaults() const { return MiscInfo() + "\\env_defaults\\EnvFiles"; }

  // One route's places; `zip` is its zip name.
  std::string RouteFile(std::string_view zip) const { return In("\\routes\\", zip, ".qnz"); }
  std::string Preview(std::string_view zip) const { return In("\\routes\\ts", zip, ".jpg"); }
  std::string TerrainCache(std::string_view zip) const {
    return In("\\routes\\terrain_cache\\", zip, ".qnc");
  }
  std::string TerrainCacheTemp(std::string_view zip) const {
    return In("\\routes\\terrain_cache\\", zip, ".tmp");
  }
  std::string Activities(std::string_view zip) const { return In("\\routes\\activities\\activities\\", zip); }
  std::string Paths(std::string_view zip) const { return In("\\routes\\activities\\paths\\", zip); }
  std::string Services(std::string_view zip) const { return In("\\routes\\activities\\services\\", zip); }
  std::string Traffic(std::string_view zip) const { return In("\\routes\\activities\\traffic\\", zip); }
  std::string Consists(std::string_view zip) const { return In("\\routes\\consists\\", zip); }
  std::string Custom(std::string_view zip) const { return In("\\routes\\custom\\", zip); }
  std::string RouteInfo(std::string_view zip) const { return In("\\routes\\route_info\\", zip); }
  std::string RoutePics(std::string_view zip) const { return In("\\routes\\route_pics\\", zip); }
  std::string Saves(std::string_view zip) const { return In("\\routes\\Saves\\", zip); }
  std::string CustomPreview(std::string_view zip) const {
    return MiscInfo() + "\\custom_previews\\ts" + std::string(zip) + ".jpg";
  }

  // Files.
  std::string AnyRouteFile() const { return app_ + "\\routes\\*.qnz"; }
  std::string AnyDownload() const { return app_ + "\\downloaded_routes\\*.zip"; }
  std::string RoutesIni() const { return app_ + "\\resources\\Do_Not_Delete!\\routes.ini"; }
  std::string SettingsIni() const { return app_ + "\\resources\\Do_Not_Delete!\\tsqn.ini"; }
  std::string ScriptsIni() const { return app_ + "\\resources\\Do_Not_Delete!\\scripts.ini"; }
  std::string CurrentList() const { return app_ + "\\resources\\Do_Not_Delete!\\current.tsl"; }
  std::string DefaultList() const { return app_ + "\\resources\\Do_Not_Delete!\\default.tsl"; }
  /// When the files of the working route were put there.
  std::string PlacedList() const { return app_ + "\\resources\\Do_Not_Delete!\\placed.tsl"; }
  /// What was begun and has not ended.
  std::string UnfinishedIni() const { return app_ + "\\resources\\Do_Not_Delete!\\unfinished.ini"; }
  /// Which route files were checked, and what is damaged in them.
  std::string ChecksIni() const { return app_ + "\\resources\\Do_Not_Delete!\\checked.ini"; }
  /// When routes were taken in and loaded.
  std::string DatesIni() const { return app_ + "\\resources\\Do_Not_Delete!\\dates.ini"; }
  /// What the route files hold, as it was last read.
  std::string DetailsCacheFile() const { return app_ + "\\resources\\Do_Not_Delete!\\routes.cache"; }
  /// Small pictures of the previews.
  std::string Thumbnails() const { return app_ + "\\resources\\Do_Not_Delete!\\thumbnails"; }
  std::string Thumbnail(std::string_view zip) const {
    return In("\\resources\\Do_Not_Delete!\\thumbnails\\", zip, ".jpg");
  }
  /// The download at which the last intake has ended.
  std::string OddDownloadIni() const { return app_ + "\\resources\\Do_Not_Delete!\\odd_download.ini"; }
  /// What became of each download, a line each.
  std::string IntakeLog() const { return app_ + "\\intake.log"; }
  /// Which release has laid the delivered files, and each as it was then.
  std::string DeliveredList() const { return app_ + "\\resources\\Do_Not_Delete!\\delivered.tsl"; }
  std::string IntakeJournal() const { return app_ + "\\resources\\Do_Not_Delete!\\intake.tsl"; }
  std::string NoImagePicture() const { return app_ + "\\resources\\Do_Not_Delete!\\qnnoimage.jpg"; }
  std::string DefaultPicture() const { return MiscInfo() + "\\qndefault.jpg"; }
  std::string ReportIni() const { return MiscInfo() + "\\routereport.ini"; }
  std::string CopyFilesList() const { return MiscInfo() + "\\copyfiles.tsl"; }
  std::string FileList() const { return MiscInfo() + "\\filelist.tsl"; }
  std::string SnowMakerList() const { return MiscInfo() + "\\snowmaker.tsl"; }
  std::string FilesList() const { return MiscInfo() + "\\files.tsl"; }
  /// The note that goes into each zip which triage rebuilds. Without the capitals of its folder: so the
  /// system has always spelled it.
  std::string RebuildNote() const {
    return app_ + "\\resources\\do_not_delete!\\misc_info\\Quillon_Zipped.txt";
  }
  /// What the last Checkup came to; the page that leads to the loaded route in it; that of all routes.
  std::string CausesJson() const { return MiscInfo() + "\\causes.json"; }
  std::string CausesHtml() const { return MiscInfo() + "\\causes.html"; }
  std::string CausesOfLoaded() const { return MiscInfo() + "\\causes_loaded.html"; }
  std::string CausesOfRoutes() const { return MiscInfo() + "\\causes_routes.html"; }
  std::string CausesOfRoutesJson() const { return MiscInfo() + "\\causes_routes.json"; }
  /// How many activities of each route can be played.
  std::string PlayableIni() const { return MiscInfo() + "\\playable.ini"; }
  /// What the last Checkup took from the files of the game.
  std::string FactsCacheFile() const { return MiscInfo() + "\\checkup.cache"; }
  /// What the last whole Checkup has seen and left.
  std::string LastCheckupFile() const { return MiscInfo() + "\\checkup.last"; }
  std::string TrainRecords() const { return MiscInfo() + "\\trains"; }
  std::string TrainRecord(std::string_view file) const { return TrainRecords() + "\\" + std::string(file); }
  std::string StuffList() const { return TrainRecord("stuff.tsl"); }
  std::string HelpFile() const { return app_ + "\\resources\\files\\help.hlp"; }

 private:
  std::string In(std::string_view folder, std::string_view zip, std::string_view end = {}) const {
    return app_ + std::string(folder) + std::string(zip) + std::string(end);
  }

  std::string app_;
};

/// The folders of `APP` in the order in which start-up makes them.
inline constexpr std::array<std::string_view, 21> kApplicationFolders = {
    "\\original_zips",
    "\\downloaded_routes",
    "\\routes",
    "\\routes\\terrain_cache",
    "\\routes\\activities",
    "\\routes\\custom",
    "\\routes\\activities\\activities",
    "\\routes\\activities\\paths",
    "\\routes\\activities\\services",
    "\\routes\\activities\\traffic",
    "\\routes\\consists",
    "\\routes\\route_info",
    "\\routes\\route_pics",
    "\\resources\\Do_Not_Delete!\\misc_info\\trains",
    "\\resources\\temp",
    "\\resources\\ziptemp",
    "\\resources\\ziptemp2",
    "\\original_zips\\Not_Installed",
    "\\original_zips\\bad_zip_files",
    "\\original_zips\\Installed",
    "\\routes\\Saves",
};

/// The shared extras below `TS`, in the order in which they are made.
inline constexpr std::array<std::string_view, 21> kExtrasFolders = {
    "\\Quillon_Extras",
    "\\Quillon_Extras\\EnvFiles",
    "\\Quillon_Extras\\EnvFiles\\Textures",
    "\\Quillon_Extras\\Sound",
    "\\Quillon_Extras\\Shapes",
    "\\Quillon_Extras\\TerrTex",
    "\\Quillon_Extras\\TerrTex\\Snow",
    "\\Quillon_Extras\\Textures",
    "\\Quillon_Extras\\TEXTURES\\AUTUMN",
    "\\Quillon_Extras\\TEXTURES\\AUTUMNSNOW",
    "\\Quillon_Extras\\TEXTURES\\NIGHT",
    "\\Quillon_Extras\\TEXTURES\\SNOW",
    "\\Quillon_Extras\\TEXTURES\\SPRING",
    "\\Quillon_Extras\\TEXTURES\\SPRINGSNOW",
    "\\Quillon_Extras\\TEXTURES\\WINTER",
    "\\Quillon_Extras\\TEXTURES\\WINTERSNOW",
    "\\Quillon_Extras\\Extras",
    "\\Quillon_Extras\\swe_objects_1",
    "\\Quillon_Extras\\swe_objects_1\\Extras",
    "\\Quillon_Extras\\swe_objects_1\\Shapes",
    "\\Quillon_Extras\\swe_objects_1\\Textures",
};

/// A route's custom tree, in the order in which it is made; the first is the tree itself.
inline constexpr std::array<std::string_view, 22> kCustomFolders = {
    "",
    "\\ENVFILES",
    "\\ENVFILES\\TEXTURES",
    "\\Extras",
    "\\LO_TILES",
    "\\SHAPES",
    "\\SOUND",
    "\\TD",
    "\\TILES",
    "\\TERRTEX",
    "\\TERRTEX\\SNOW",
    "\\TEXTURES",
    "\\TEXTURES\\AUTUMN",
    "\\TEXTURES\\AUTUMNSNOW",
    "\\TEXTURES\\NIGHT",
    "\\TEXTURES\\SNOW",
    "\\TEXTURES\\SPRING",
    "\\TEXTURES\\SPRINGSNOW",
    "\\TEXTURES\\WINTER",
    "\\TEXTURES\\WINTERSNOW",
    "\\TUTOR",
    "\\WORLD",
};

/// The working route's folders, in the order in which clean-up makes them; the first is the working route
/// itself.
inline constexpr std::array<std::string_view, 26> kWorkingRouteFolders = {
    "",
    "\\ACTIVITIES",
    "\\ENVFILES",
    "\\ENVFILES\\TEXTURES",
    "\\Extras",
    "\\LO_TILES",
    "\\PATHS",
    "\\SERVICES",
    "\\SHAPES",
    "\\SOUND",
    "\\TD",
    "\\TILES",
    "\\TERRTEX",
    "\\TERRTEX\\SNOW",
    "\\TEXTURES",
    "\\TEXTURES\\AUTUMN",
    "\\TEXTURES\\AUTUMNSNOW",
    "\\TEXTURES\\NIGHT",
    "\\TEXTURES\\SNOW",
    "\\TEXTURES\\SPRING",
    "\\TEXTURES\\SPRINGSNOW",
    "\\TEXTURES\\WINTER",
    "\\TEXTURES\\WINTERSNOW",
    "\\TRAFFIC",
    "\\TUTOR",
    "\\WORLD",
};

/// The routes that a full installation of the game has.
inline constexpr std::array<std::string_view, 6> kDefaultRoutes = {
    "\\Routes\\Europe1", "\\Routes\\Europe2", "\\Routes\\Japan1",
    "\\Routes\\Japan2",  "\\Routes\\USA1",    "\\Routes\\USA2",
};

// Whoever ships the program puts its own words and addresses here.
inline constexpr std::string_view kApplicationTitle = "Quillon",
                                  kLegalText = "Free to use, without any warranty.",
                                  kSupportPage = "https://quillon.example/support",
                                  kMakersPage = "https://quillon.example";

// Places below `TS`, the Train Simulator folder.
inline constexpr std::string_view kTrainExe = "\\train.exe";
inline constexpr std::string_view kWorkingRoute = "\\ROUTES\\Quillon-route";
inline constexpr std::string_view kWorkingShapes = "\\ROUTES\\Quillon-route\\Shapes";
inline constexpr std::string_view kSaves = "\\Saves";
inline constexpr std::string_view kWorkingSaves = "\\Saves\\Quillon-route";
inline constexpr std::string_view kExtras = "\\Quillon_Extras";
inline constexpr std::string_view kTrainSet = "\\Trains\\TrainSet\\";
inline constexpr std::string_view kGameConsists = "\\TRAINS\\CONSISTS\\";
inline constexpr std::string_view kBackedUpConsists = "\\TRAINS\\CONSISTS\\QN-Backed-up-consists\\";

/// Where the game lies when nothing is stored.
inline constexpr std::string_view kDefaultGameFolder = "C:\\Program Files\\Microsoft Games\\Train Simulator";

/// What stands in front of the name of a default file that a loaded route covers.
inline constexpr std::string_view kBackupPrefix = "ts-bak-";

// Texts that stand for something where a value is expected. Compared exactly.
inline constexpr std::string_view kNoData = "No Data!";
inline constexpr std::string_view kNoRouteLoaded = "No route loaded.";
inline constexpr std::string_view kAddSomeRoutes = "You'll have to add some routes!";
inline constexpr std::string_view kRunCleanup = "There has been an error.  Please run Cleanup.";
inline constexpr std::string_view kLoadedMark = " (Loaded)";

}  // namespace quillon
