#include "checkup/ServiceVerification.h"

#include "core/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kSentinel = "qntemp tempqn";

}  // namespace

ServiceVerification::ServiceVerification(Program& program, Progress& progress,
                                         const ConsistAnalysis& consists, FinalReport& report)
    : program_(program), progress_(progress), consists_(consists), report_(report) {}

void ServiceVerification::VerifyServices(const std::vector<std::string>& lstServices) {
  const int count = static_cast<int>(lstServices.size());
  progress_.Maximum(count);
  progress_.Value(count);
  progress_.Value(0);
  VerifiedServices = VerifiedConsists = {std::string(kSentinel)};
  int value = 0;
  for (const auto& path : lstServices) {
    progress_.Value(++value);
    progress_.Detail(static_cast<std::uint64_t>(value), lstServices.size(), "services");
    program_.Step("Verifying the service " + path);
    Verify(path);
  }
  progress_.Value(count);
}

void ServiceVerification::Verify(const std::string& path) {
  const GameText text(program_.files, path);
  const RouteFile file = TakeApart(program_, path, "\\services\\");
  TakeName(text);
  TakeConsist(text);
  const std::string lowerConsist = LowerCase(consist_);
  const bool known = VerifiedConsists.contains(lowerConsist);
  if (known || ConsistIsPresent(lowerConsist)) {
    VerifiedConsists.insert(lowerConsist);
    VerifiedServices.insert(LowerCase(path));
    VerifiedServices.insert(LowerCase(name_));
    if (!known) Record(file, true);
    return;
  }
  report_.AddService(file.route, ReplaceAll(file.name, ".srv", ""), consist_);
  report_.AddCalledConsist(consist_, !program_.files.FileExists(consists_.BackupPathOf(consist_ + ".con")));
  Record(file, false);
}

/// The first one that is not empty.
void ServiceVerification::TakeName(const GameText& text) {
  constexpr std::string_view kName = "name (";
  for (auto at = text.Find(kName, 0); at != GameText::kNone;) {
    const auto start = at + kName.size(), end = text.FindCharacter('\r', start);
    const std::string name = WithoutQuotes(text.BetweenLessLast(start, end, "\"Name (\" has no end"));
    if (!name.empty()) {
      name_ = name;
      return;
    }
    at = text.Find(kName, end);
  }
}

/// The last one.
void ServiceVerification::TakeConsist(const GameText& text) {
  constexpr std::string_view kConfig = "train_config (";
  for (auto at = text.Find(kConfig, 0); at != GameText::kNone;) {
    const auto start = at + kConfig.size(), end = text.FindCharacter('\r', start);
    consist_ = WithoutQuotes(text.BetweenLessLast(start, end, "\"Train_Config (\" has no end"));
    at = text.Find(kConfig, end);
  }
}

bool ServiceVerification::ConsistIsPresent(const std::string& lowerConsist) const {
  return consists_.IsKnownName(lowerConsist) ||
         program_.files.FileExists(consists_.PathOf(lowerConsist + ".con"));
}

void ServiceVerification::Record(const RouteFile& file, bool good) {
  for (const std::string& section : {file.folder + file.name, file.folder + name_})
    program_.ini.WriteIni(section, "Verified", good ? "Yes" : "No", program_.app.TrainRecord("services.ini"));
}

bool ServiceVerification::IsGood(const std::string& path) const {
  if (VerifiedServices.contains(LowerCase(path))) return true;
  return program_.ini.ReadIni(path, "Verified", kNoData, program_.app.TrainRecord("services.ini")) == "Yes";
}

}  // namespace quillon
