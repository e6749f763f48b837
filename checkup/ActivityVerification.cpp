#include "checkup/ActivityVerification.h"

#include "core/Text.h"

namespace quillon {

ActivityVerification::ActivityVerification(Program& program, Progress& progress, ItemScan& scan,
                                           const ServiceVerification& services, FinalReport& report)
    : program_(program), progress_(progress), scan_(scan), services_(services), report_(report) {}

void ActivityVerification::VerifyActivities(const std::vector<std::string>& lstAllActivities) {
  scan_.BeginPass();
  const int count = static_cast<int>(lstAllActivities.size());
  progress_.Maximum(count);
  progress_.Value(count);
  progress_.Value(0);
  int value = 0;
  for (const auto& path : lstAllActivities) {
    progress_.Value(++value);
    progress_.Detail(static_cast<std::uint64_t>(value), lstAllActivities.size(), "activities");
    program_.Step("Verifying the activity " + path);
    Verify(path);
  }
}

void ActivityVerification::Verify(const std::string& path) {
  const GameText text(program_.files, path);
  const RouteFile file = TakeApart(program_, path, "\\activities\\");
  TakeName(text);
  VerifyOtherServices(text, file, VerifyPlayersService(text, file));
  scan_.ScanFile(text, [&](const TrainFault& fault) {
    report_.AddActivity(file.route, activityName_, file.name);
    report_.AddTrain(fault);
  });
}

void ActivityVerification::TakeName(const GameText& text) {
  constexpr std::string_view kName = "name (";
  if (text.Empty()) return;
  const auto at = text.Find(kName, 0);
  if (at == GameText::kNone) {
    activityName_ = "unknown";
    return;
  }
  const auto start = at + kName.size();
  const auto name = text.Between(start, text.FindCharacter(')', start), "\"Name (\" is not closed");
  activityName_ = "\"" + WithoutQuotes(name) + "\"";
}

std::size_t ActivityVerification::VerifyPlayersService(const GameText& text, const RouteFile& file) {
  constexpr std::string_view kDefinition = "player_service_definition (";
  std::size_t from = 0;
  for (auto at = text.Find(kDefinition, from); at != GameText::kNone; at = text.Find(kDefinition, from)) {
    const auto start = at + kDefinition.size(), end = text.FindCharacter('\r', start);
    const auto name = text.Between(start, end, "\"Player_Service_Definition (\" has no end");
    if (!ServiceIsGood(file, WithoutQuotes(name))) break;
    from = end;
  }
  return from;
}

void ActivityVerification::VerifyOtherServices(const GameText& text, const RouteFile& file,
                                               std::size_t from) {
  // The tab keeps the player's definition out.
  constexpr std::string_view kDefinition = "\tservice_definition (";
  for (auto at = text.Find(kDefinition, from); at != GameText::kNone; at = text.Find(kDefinition, from)) {
    const auto start = at + kDefinition.size(), end = text.FindCharacter('\r', start);
    const std::string line = Trim(text.Between(start, end, "\"Service_Definition (\" has no end"));
    // The name ends where the start time begins; the blank in front of the name makes up for the one behind
    // it.
    const auto blank = line.rfind(' ');
    const std::size_t length =
        blank == line.npos ? 0 : CharacterCount(std::string_view(line).substr(0, blank + 1));
    const std::string_view name = FirstCharacters(text.Text().substr(start), length);
    if (!ServiceIsGood(file, WithoutQuotes(name))) break;
    from = end;
  }
}

bool ActivityVerification::ServiceIsGood(const RouteFile& file, const std::string& service) {
  const std::string path = ReplaceAll(file.folder, "\\activities\\", "\\services\\") + service + ".srv";
  if (services_.IsGood(path)) return true;
  report_.AddActivity(file.route, activityName_, file.name);
  report_.AddMissingService(file.route, service, activityName_);
  return false;
}

}  // namespace quillon
