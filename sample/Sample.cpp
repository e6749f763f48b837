#include "sample/Sample.h"

#include "core/RunTimeError.h"
#include "core/host/StandardPath.h"
#include "sample/GameMaker.h"
#include "sample/HostFiles.h"
#include "sample/RouteZips.h"

namespace quillon {
namespace {

void RefuseWhenInUse(const std::string& hostFolder) {
  if (HoldsSomething(hostFolder))
    throw RunTimeError(ErrorNumber::PathFileAccessError, hostFolder, "it exists and is not empty");
}

}  // namespace

SampleReport MakeSample(const std::string& hostFolder, int scale) {
  if (scale < 1) throw RunTimeError(ErrorNumber::InvalidProcedureCall, {}, "the scale has to be 1 or more");
  SampleReport report;
  report.gameFolder = FromPath(ToPath(hostFolder) / "game");
  report.zipFolder = FromPath(ToPath(hostFolder) / "zips");
  RefuseWhenInUse(report.gameFolder);
  RefuseWhenInUse(report.zipFolder);
  MakeGame(report.gameFolder);
  report.zips = MakeRouteZips(report.zipFolder, scale);
  return report;
}

SampleInstallation MakeGameForInstallation(const std::string& hostFolder) {
  const SampleInstallation made{FromPath(ToPath(hostFolder) / "game"), FromPath(ToPath(hostFolder) / "app")};
  RefuseWhenInUse(made.gameFolder);
  RefuseWhenInUse(made.appFolder);
  MakeGame(made.gameFolder);
  return made;
}

}  // namespace quillon
