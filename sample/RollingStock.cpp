#include "sample/RollingStock.h"

#include <array>

#include "sample/FileBytes.h"
#include "sample/FileTexts.h"

namespace quillon {
namespace {

struct Vehicle {
  bool engine;
  const char* file;    // without extension
  const char* folder;  // below TRAINS\TRAINSET
};

constexpr std::array<Vehicle, 8> kVehicles = {{
    {true, "talbahn_v20", "TALBAHN"},
    {false, "talbahn_coach", "TALBAHN"},
    {false, "talbahn_van", "TALBAHN"},
    {true, "kestrel power", "Kestrel Express"},
    {false, "kestrel coach", "Kestrel Express"},
    {true, "ore_goat", "ORECAR"},
    {false, "ore_hopper", "ORECAR"},
    {false, "ore_caboose", "ORECAR"},
}};

// Which vehicles run together, in the order of GameConsists; an engine leads each.
const std::vector<std::vector<std::size_t>> kTrains = {{0, 1, 1}, {0, 2}, {3, 4, 4, 4}, {5, 6, 6, 6, 7}, {5}};

std::string EngineText(const Vehicle& vehicle) {
  BlockText text("D0t");
  text.Open("Wagon", NameWord(vehicle.file)).Line("Type", "Engine");
  text.Line("WagonShape", NameWord(std::string(vehicle.file) + ".s")).Line("Mass", "72t").Close();
  text.Open("Engine", NameWord(vehicle.file)).Line("Wagon", NameWord(vehicle.file)).Line("Type", "Diesel");
  text.Line("Name", Quoted(vehicle.file)).Line("MaxPower", "1100kW").Line("MaxVelocity", "120km/h");
  return text.Close().Bytes();
}

std::string WagonText(const Vehicle& vehicle) {
  BlockText text("D0t");
  text.Open("Wagon", NameWord(vehicle.file)).Line("Type", "Carriage");
  text.Line("WagonShape", NameWord(std::string(vehicle.file) + ".s")).Line("Mass", "34t");
  return text.Close().Bytes();
}

void AddVehicle(SampleFiles& files, const Vehicle& vehicle) {
  const std::string stem = std::string("TRAINS\\TRAINSET\\") + vehicle.folder + "\\" + vehicle.file;
  files.push_back({stem + (vehicle.engine ? ".eng" : ".wag"),
                   [&vehicle] { return vehicle.engine ? EngineText(vehicle) : WagonText(vehicle); }});
  files.push_back({stem + ".s", [stem] { return ShapeBytes(Numbers(stem), 9000); }});
  files.push_back(
      {stem + ".sd", [&vehicle] { return ShapeDescriptionText(std::string(vehicle.file) + ".s"); }});
  files.push_back({stem + ".ace", [stem] { return TextureBytes(Numbers(stem + "a"), 14000); }});
  if (vehicle.engine) files.push_back({stem + ".sms", [] { return SoundScriptText("engine.wav"); }});
}

void AddItem(BlockText& text, const Vehicle& vehicle, std::size_t uid) {
  const std::string item = NameWord(vehicle.file) + " " + NameWord(vehicle.folder);
  text.Open(vehicle.engine ? "Engine" : "Wagon");
  if (vehicle.engine) text.Line("UiD", std::to_string(uid)).Line("EngineData", item);
  if (!vehicle.engine) text.Line("WagonData", item).Line("UiD", std::to_string(uid));
  text.Close();
}

}  // namespace

const std::vector<std::string>& GameConsists() {
  static const std::vector<std::string> names = {"talbahn_regional", "talbahn_parcels", "Kestrel Express",
                                                 "ore_local", "ore_light_engine"};
  return names;
}

std::string ConsistText(const std::string& name, std::size_t choice) {
  const auto& train = kTrains[choice % kTrains.size()];
  BlockText text("D0t");
  text.Open("Train").Open("TrainCfg", Quoted(name)).Line("Serial", "1").Line("MaxVelocity", "30 1");
  text.Line("NextWagonUID", std::to_string(train.size())).Line("Durability", "0.5");
  for (std::size_t i = 0; i < train.size(); ++i) AddItem(text, kVehicles[train[i]], i);
  return text.Close().Close().Bytes();
}

SampleFiles TrainFiles() {
  SampleFiles files;
  for (std::size_t i = 0; i < GameConsists().size(); ++i)
    files.push_back({"TRAINS\\CONSISTS\\" + GameConsists()[i] + ".con",
                     [i] { return ConsistText(GameConsists()[i], i); }});
  for (const auto& vehicle : kVehicles) AddVehicle(files, vehicle);
  return files;
}

}  // namespace quillon
