#include "checkup/ServiceVerification.h"

#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::string_view kSentinel = "qntemp tempqn";

}  // namespace

ServiceVerification::ServiceVerification(Program& program, Progress& progress,
                                         const ConsistAnalysis& consists, FinalReport& report)
    : program_(program), progress_(progress), consists_(consists), report_(report) {}

void ServiceVerification::VerifyServices(const std::vector<GameFile>& lstServices,
                                         const std::vector<FileFacts>& facts, bool again) {
  const int count = static_cast<int>(lstServices.size());
  progress_.Maximum(count);
  progress_.Value(count);
  progress_.Value(0);
  VerifiedServices = VerifiedConsists = {std::string(kSentinel)};
  for (std::size_t i = 0; i < lstServices.size(); ++i) {
    progress_.Value(static_cast<int>(i) + 1);
    progress_.Detail(i + 1, lstServices.size(), "services");
    const std::string path = lstServices[i].Path();
    program_.Step("Verifying the service " + path);
    if (!again) Verify(path, facts[i]);
  }
  progress_.Value(count);
}

void ServiceVerification::Verify(const std::string& path, const FileFacts& facts) {
  const FileOfRoute file = TakeApart(program_, path, "\\services\\");
  facts.Require(FileFacts::Broken::Reading);
  if (facts.name) name_ = *facts.name;
  facts.Require(FileFacts::Broken::Name);
  if (facts.consist) consist_ = *facts.consist;
  facts.Require(FileFacts::Broken::Consist);
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

bool ServiceVerification::ConsistIsPresent(const std::string& lowerConsist) const {
  return consists_.IsKnownName(lowerConsist) ||
         program_.files.FileExists(consists_.PathOf(lowerConsist + ".con"));
}

void ServiceVerification::Record(const FileOfRoute& file, bool good) {
  for (const std::string& section : {file.folder + file.name, file.folder + name_})
    program_.ini.WriteIni(section, "Verified", good ? "Yes" : "No", program_.app.TrainRecord("services.ini"));
}

bool ServiceVerification::IsGood(const std::string& path) const {
  if (VerifiedServices.contains(LowerCase(path))) return true;
  return program_.ini.ReadIni(path, "Verified", kNoData, program_.app.TrainRecord("services.ini")) == "Yes";
}

}  // namespace quillon
