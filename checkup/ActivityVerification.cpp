#include "checkup/ActivityVerification.h"

#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {

ActivityVerification::ActivityVerification(Program& program, Progress& progress, ItemScan& scan,
                                           const ServiceVerification& services, FinalReport& report)
    : program_(program), progress_(progress), scan_(scan), services_(services), report_(report) {}

void ActivityVerification::VerifyActivities(const std::vector<GameFile>& lstAllActivities,
                                            const std::vector<FileFacts>& facts, bool again) {
  if (!again) scan_.BeginPass();
  const int count = static_cast<int>(lstAllActivities.size());
  progress_.Maximum(count);
  progress_.Value(count);
  progress_.Value(0);
  for (std::size_t i = 0; i < lstAllActivities.size(); ++i) {
    progress_.Value(static_cast<int>(i) + 1);
    progress_.Detail(i + 1, lstAllActivities.size(), "activities");
    const std::string path = lstAllActivities[i].Path();
    program_.Step("Verifying the activity " + path);
    if (!again) Verify(path, facts[i]);
  }
}

void ActivityVerification::Verify(const std::string& path, const FileFacts& facts) {
  const FileOfRoute file = TakeApart(program_, path, "\\activities\\");
  facts.Require(FileFacts::Broken::Reading);
  facts.Require(FileFacts::Broken::Name);
  if (facts.name) activityName_ = *facts.name;
  VerifyOtherServices(facts, file, VerifyPlayersService(facts, file));
  scan_.ScanFile(path, facts, [&](const TrainFault& fault) {
    report_.AddActivity(file.route, activityName_, file.name);
    report_.AddTrain(fault);
  });
}

std::uint32_t ActivityVerification::VerifyPlayersService(const FileFacts& facts, const FileOfRoute& file) {
  std::uint32_t from = 0;
  for (const auto& call : facts.playersServices) {
    if (!ServiceIsGood(file, call.service)) return from;
    from = call.end;
  }
  facts.Require(FileFacts::Broken::PlayersServices);
  return from;
}

void ActivityVerification::VerifyOtherServices(const FileFacts& facts, const FileOfRoute& file,
                                               std::uint32_t from) {
  for (const auto& call : facts.otherServices) {
    if (call.at < from) continue;
    if (!ServiceIsGood(file, call.service)) return;
  }
  facts.Require(FileFacts::Broken::OtherServices);
}

bool ActivityVerification::ServiceIsGood(const FileOfRoute& file, const std::string& service) {
  const std::string path =
      ReplaceAll(file.folder, "\\activities\\", "\\services\\") + WithStandIns(service) + ".srv";
  if (services_.IsGood(path)) return true;
  report_.AddActivity(file.route, activityName_, file.name);
  report_.AddMissingService(file.route, service, activityName_);
  return false;
}

}  // namespace quillon
