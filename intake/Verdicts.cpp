#include "intake/Verdicts.h"

#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::size_t kLongestReason = 4000;  // characters

}  // namespace

std::string Verdicts::DownloadOf(std::string zip) const {
  for (auto at = downloadOf_.find(zip); at != downloadOf_.end(); at = downloadOf_.find(zip)) zip = at->second;
  return zip;
}

void Verdicts::Note(const std::string& zip, const std::string& sentence) {
  notes_[DownloadOf(zip)] += "; " + sentence;
}

void Verdicts::Give(const std::string& zip, const char* kind, const std::string& reason) {
  const std::string download = DownloadOf(zip);
  const Verdict verdict{WithoutStandIns(download), kind,
                        std::string(FirstCharacters(reason + notes_[download], kLongestReason))};
  program_.watcher.VerdictGiven(verdict);
  log_.Add(verdict);
}

}  // namespace quillon
