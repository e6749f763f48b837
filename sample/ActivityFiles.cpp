#include "sample/ActivityFiles.h"

#include "sample/FileTexts.h"
#include "sample/RollingStock.h"

namespace quillon {
namespace {

std::string NameOf(const ActivityPlan& plan, const char* what, int number) {
  return plan.stem + "_" + what + std::to_string(number);
}

std::string ConsistOf(const ActivityPlan& plan, int number) {
  const auto index = static_cast<std::size_t>(number);
  return plan.ownConsist.empty() || index % 2 ? GameConsists()[index % GameConsists().size()]
                                              : plan.ownConsist;
}

std::string StartOf(int number) {
  return std::to_string(21600 + 1800 * (number % 30));
}  // seconds of the day

std::string PathText(const std::string& name, int number) {
  BlockText text("P0t");
  text.Line("Serial", "1").Open("TrackPDPs");
  for (int i = 0; i < 6; ++i)
    text.Line("TrackPDP", "-11008 14318 " + std::to_string(40 * i + number % 40) + " 120.5 -340.25 1 1");
  text.Close()
      .Open("TrackPath")
      .Line("TrPathName", NameWord(name))
      .Line("Name", Quoted("From valley to summit"));
  text.Line("TrPathStart", "Valley").Line("TrPathEnd", "Summit").Open("TrPathNodes", "6");
  for (int i = 0; i < 6; ++i)
    text.Line("TrPathNode", "00000000 " + std::to_string(i + 1) + " 4294967295 " + std::to_string(i));
  return text.Close().Close().Bytes();
}

std::string ServiceText(const std::string& name, const std::string& consist, const std::string& path) {
  BlockText text("v1t");
  text.Open("Service_Definition").Line("Serial", "1").Line("Name", Quoted(name));
  text.Line("Train_Config", NameWord(consist))
      .Line("PathID", NameWord(path))
      .Line("MaxWheelAcceleration", "0.2");
  text.Line("Efficiency", "0.75").Open("TimeTable").Line("StartingSpeed", "0").Line("EndingSpeed", "0");
  return text.Close().Close().Bytes();
}

std::string TrafficText(const std::string& name, const std::string& service, const std::string& start) {
  BlockText text("f0t");
  text.Open("Traffic_Definition", NameWord(name)).Line("Serial", "1");
  text.Open("Service_Definition", NameWord(service) + " " + start);
  text.Line("ArrivalTime", start)
      .Line("DepartTime", start)
      .Line("SkipCount", "0")
      .Line("DistanceDownPath", "120.5");
  return text.Close().Close().Bytes();
}

std::string ActivityText(const ActivityPlan& plan, int number) {
  const std::string service = NameWord(NameOf(plan, "srv", number));
  BlockText text("a0t");
  text.Open("Tr_Activity")
      .Line("Serial", "1")
      .Open("Tr_Activity_Header")
      .Line("RouteID", NameWord(plan.routeId));
  text.Line("Name", Quoted("Morning run no. " + std::to_string(number)));
  text.Line("Description", Quoted("Take the train from the valley to the summit."))
      .Line("StartTime", "8 30 0");
  text.Line("Season", "1").Line("Weather", "0").Line("PathID", NameWord(NameOf(plan, "pat", number)));
  text.Line("StartingSpeed", "0").Line("Duration", "0 45").Line("Difficulty", "1").Close();
  text.Open("Tr_Activity_File").Open("Player_Service_Definition", service);
  text.Line("Player_Traffic_Definition", StartOf(number)).Line("UiD", "0").Close();
  text.Line("NextServiceUID", "2").Open("Traffic_Definition", NameWord(NameOf(plan, "trf", number)));
  text.Open("Service_Definition", service + " " + StartOf(number + 2)).Line("UiD", "1").Close().Close();
  text.Open("ActivityObjects").Open("ActivityObject").Line("ObjectType", "WagonsList").Open("Train_Config");
  text.Open("TrainCfg", "\"\"").Open("Wagon").Line("WagonData", "ore_hopper ORECAR").Line("UiD", "0");
  for (int depth = 6; depth > 0; --depth) text.Close();
  return text.Close().Bytes();
}

}  // namespace

SampleFile PathFile(const ActivityPlan& plan, int number) {
  const std::string name = NameOf(plan, "pat", number);
  return {"PATHS\\" + name + ".pat", [=] { return PathText(name, number); }};
}

SampleFile ServiceFile(const ActivityPlan& plan, int number) {
  const std::string name = NameOf(plan, "srv", number);
  return {"SERVICES\\" + name + ".srv",
          [=] { return ServiceText(name, ConsistOf(plan, number), NameOf(plan, "pat", number)); }};
}

SampleFile TrafficFile(const ActivityPlan& plan, int number) {
  const std::string name = NameOf(plan, "trf", number);
  return {"TRAFFIC\\" + name + ".trf",
          [=] { return TrafficText(name, NameOf(plan, "srv", number), StartOf(number + 2)); }};
}

SampleFile ActivityFile(const ActivityPlan& plan, int number) {
  return {"ACTIVITIES\\" + NameOf(plan, "act", number) + ".act", [=] { return ActivityText(plan, number); }};
}

}  // namespace quillon
