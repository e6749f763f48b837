#include "checkup/FinalReport.h"

#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {

FinalReport::FinalReport(Program& program)
    : program_(program), FinalReportPath(program.app.TrainRecord("finalreport.ini")) {}

void FinalReport::Write(std::string_view section, const std::string& key, const std::string& value) {
  program_.ini.WriteIni(section, WithoutStandIns(key), WithoutStandIns(value), FinalReportPath);
}

void FinalReport::Create() {
  for (const auto* section : {"Problem Activities", "Problem Services", "Services-Activities",
                              "Problem Consists", "Missing Locomotives", "Missing Wagons"})
    Write(section, "");
}

void FinalReport::AddActivity(const std::string& route, const std::string& activityName,
                              const std::string& file) {
  Write("Problem Activities", "ACT:" + ProperCase(route) + "][ " + activityName, file);
}

void FinalReport::AddMissingService(const std::string& route, const std::string& service,
                                    const std::string& activityName) {
  Write("Services-Activities",
        "SRVACT:" + ProperCase(route) + "][" + ProperCase(service) + ".srv MISSING: " + activityName);
}

void FinalReport::AddService(const std::string& route, const std::string& baseName,
                             const std::string& consist) {
  Write("Problem Services", "SRV:" + ProperCase(route) + "][" + ProperCase(baseName) +
                                ".srv Consist: " + ProperCase(consist) + ".con");
}

void FinalReport::AddConsist(const std::string& file) {
  Write("Problem Consists", "CON:" + ProperCase(file));
}

void FinalReport::AddCalledConsist(const std::string& consist, bool missing) {
  const std::string known = "CON:" + ProperCase(consist) + ".con", unknown = known + " (MISSING!)";
  program_.ini.DeleteIniKey("Problem Consists", missing ? known : unknown, FinalReportPath);
  Write("Problem Consists", missing ? unknown : known);
}

void FinalReport::AddTrain(const TrainFault& fault) {
  const bool engine = fault.kind == TrainKind::Engine;
  Write(engine ? "Missing Locomotives" : "Missing Wagons",
        (engine ? "ENG:" : "WAG:") + ProperCase(fault.file) + " Folder: " + ProperCase(fault.folder),
        fault.alternateFolder);
}

}  // namespace quillon
