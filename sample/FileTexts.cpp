#include "sample/FileTexts.h"

#include <charconv>

#include "core/text/Text.h"

namespace quillon {
namespace {

// Not printf: the game wants a full stop, whatever the user's language.
std::string Number(double value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3).ptr};
}

std::string Point(Numbers& numbers) {
  const auto coordinate = [&] { return Number(2048 * numbers.Share() - 1024) + " "; };
  const std::string x = coordinate(), z = coordinate();
  return x + Number(400 * numbers.Share()) + " " + z;
}

}  // namespace

BlockText::BlockText(std::string_view signature) {
  text_.append("SIMISA@@@@@@@@@@JINX0").append(signature).append("______\n\n");
}

BlockText& BlockText::Open(std::string_view head, std::string_view rest) {
  text_.append(depth_++, '\t').append(head).append(" (");
  if (!rest.empty()) text_.append(" ").append(rest);
  text_ += '\n';
  return *this;
}

BlockText& BlockText::Line(std::string_view head, std::string_view rest) {
  text_.append(depth_, '\t').append(head).append(" ( ").append(rest).append(" )\n");
  return *this;
}

BlockText& BlockText::Close() {
  text_.append(--depth_, '\t').append(")\n");
  return *this;
}

std::string BlockText::Bytes() const { return EncodeGameText(ReplaceAll(text_, "\n", "\r\n")); }

std::string Quoted(std::string_view text) { return std::string("\"").append(text).append("\""); }

std::string NameWord(std::string_view name) { return Contains(name, " ") ? Quoted(name) : std::string(name); }

std::string TrackFileText(const std::string& routeId, const std::string& displayName,
                          const std::string& description) {
  BlockText text("r1t");
  text.Open("Tr_RouteFile");
  text.Line("RouteID", NameWord(routeId));
  text.Line("Name", Quoted(displayName));
  text.Line("Description", Quoted(description + "\\n") + " +\n\t\t" + Quoted("An invented railway."));
  text.Line("Graphic", "graphic.ace").Line("LoadingScreen", "load.ace").Line("FileName", NameWord(routeId));
  text.Open("Environment").Line("SpringClear", "sun.env").Line("WinterSnow", "snow.env").Close();
  text.Line("TerrainErrorScale", "1").Line("Gravity", "9.81").Line("SpeedLimit", "33.3");
  text.Line("RouteStart", "-11008 14318 120 -340")
      .Line("Electrified", "00000000")
      .Line("Mountains", "00000001");
  return text.Close().Bytes();
}

std::string EnvironmentText(Numbers numbers) {
  BlockText text("e0t");
  text.Open("world").Open("world_water").Line("world_water_wave_height", Number(numbers.Share()));
  text.Line("world_water_terrain_texture", "\"waterbot.ace\"").Close();
  text.Open("world_sky").Line("worldsky_nlayers_behind_satellites", "1");
  for (int i = 0; i < 12; ++i)
    text.Line("world_sky_layer_colour", "000080" + std::to_string(numbers.Between(10, 99)));
  return text.Close().Close().Bytes();
}

std::string WorldText(Numbers numbers, std::size_t size) {
  static constexpr const char* kShapes[] = {"Spruce.s", "Farm.s",  "Platform.s",
                                            "Lamp.s",   "Fence.s", "Depot.s"};
  BlockText text("w0t");
  text.Open("Tr_Worldfile");
  for (int uid = 1; text.Length() < size / 2; ++uid) {
    text.Open("Static").Line("UiD", std::to_string(uid)).Line("FileName", kShapes[numbers.Bits() % 6]);
    text.Line("StaticFlags", "00200180").Line("Position", Point(numbers));
    text.Line("QDirection", "0 " + Number(numbers.Share()) + " 0 " + Number(numbers.Share()));
    text.Line("VDbId", "4294967294").Close();
  }
  return text.Close().Bytes();
}

std::string TrackDatabaseText(Numbers numbers, std::size_t size) {
  BlockText text("T0t");
  text.Open("TrackDB").Open("TrackNodes");
  for (int node = 1; text.Length() < size / 2; ++node) {
    text.Open("TrackNode", std::to_string(node)).Open("TrVectorNode");
    text.Line("TrVectorSections",
              "1 " + std::to_string(numbers.Between(1, 400)) + " -11008 14318 " + Point(numbers));
    text.Close().Line("TrPins", "1 1 TrPin ( " + std::to_string(node + 1) + " 0 )").Close();
  }
  return text.Close().Close().Bytes();
}

std::string ObjectListText(Numbers numbers, std::size_t size) {
  BlockText text("F0t");
  for (int i = 1; text.Length() < size / 2; ++i) {
    text.Open("Static").Line("Class", numbers.Bits() % 2 ? "\"Buildings\"" : "\"Trees\"");
    text.Line("Filename", "object" + std::to_string(i) + ".s").Line("Description", "\"Object\"").Close();
  }
  return text.Bytes();
}

std::string ShapeDescriptionText(const std::string& shape) {
  BlockText text("t1t");
  text.Open("shape", NameWord(shape)).Line("ESD_Detail_Level", "0").Line("ESD_Alternative_Texture", "252");
  return text.Close().Bytes();
}

std::string SoundScriptText(const std::string& wave) {
  BlockText text("x1t");
  text.Open("Tr_SMS").Open("ScalabiltyGroup", "5").Open("Streams", "1").Open("Stream");
  text.Line("FileName", NameWord(wave)).Line("Volume", "1");
  return text.Close().Close().Close().Close().Bytes();
}

std::string ReadmeText(const std::string& displayName, const std::string& description) {
  return displayName + "\r\n\r\n" + description +
         "\r\n\r\nAn invented route: its tracks lead nowhere, its files only look like a route's.\r\n";
}

std::string ReadmePage(const std::string& displayName, const std::string& description,
                       const std::vector<std::string>& pictures) {
  std::string page = "<html><head><title>" + displayName + "</title></head>\r\n<body>\r\n<h1>" + displayName +
                     "</h1>\r\n<p>" + description + "</p>\r\n";
  for (const auto& picture : pictures) page += "<p><img src=\"" + picture + "\"></p>\r\n";
  return page + "</body></html>\r\n";
}

}  // namespace quillon
