#include "screens/WayOn.h"

#include "catalogue/CatalogueCheck.h"
#include "core/NoProgress.h"
#include "intake/OddDownload.h"
#include "stage/Advice.h"
#include "stage/Setup.h"

namespace quillon {
namespace {

/// The download at which an intake has just ended; empty for all other errors.
std::string RememberedDownload(Program& program, const RunTimeError& error) {
  const std::string atWork = program.shared.DownloadAtWork;
  try {
    RememberOddDownload(program, error);
    const std::string odd = OddDownloadOf(program);
    return odd == atWork ? odd : "";  // it may be one of another day
  } catch (const RunTimeError&) {
    return {};  // the disk takes no note: the first error is the one to tell
  }
}

void RepairCatalogue(Program& program) {
  NoProgress unseen;
  CatalogueCheck(program, unseen).Run(false, true);
}

}  // namespace

WayOn WayOnAfter(Program& program, const RunTimeError& error, bool mayBeDownload) {
  if (const std::string odd = mayBeDownload ? RememberedDownload(program, error) : ""; !odd.empty())
    return {"\n\nOr let Quillon set " + odd + " aside and add the others now.", "Set it aside and go on",
            [&program] { SetOddDownloadAsideNext(program); }, true};
  const Remedy remedy = RemedyOf(error);
  if (remedy == Remedy::LayDeliveredFiles && !DeliveredTree().empty())
    return {"\n\nOr let Quillon lay the delivered files again now.", "Lay them again and go on",
            [&program] { SetUp(program, DeliveredTree(), {}); }};
  if (remedy == Remedy::RepairCatalogue)
    return {"", "Repair and go on", [&program] { RepairCatalogue(program); }};
  return {};
}

}  // namespace quillon
