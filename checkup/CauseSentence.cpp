#include "checkup/CauseSentence.h"

#include "core/ReportPage.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

/// What is wrong with the cause itself, up to the colon.
std::string Trouble(const Cause& cause) {
  const std::string name = "<b class=\"name\">" + Safe(cause.name) + "</b>",
                    place = "<b>" + Safe(cause.place) + "</b>";
  switch (cause.kind) {
    case Cause::Kind::MissingFolder: return name + " is missing";
    case Cause::Kind::MisplacedFolder: return name + " is misplaced, its trains lie in another folder";
    case Cause::Kind::MissingFile: return name + " is missing in the folder " + place;
    case Cause::Kind::MissingConsist: return "The consist " + name + " is missing";
    case Cause::Kind::MissingService: return "The service " + name + " is missing in the route " + place;
  }
  return name;
}

/// How many of those that need it have nothing else to wait for.
std::string Mended(int needing, int mended, const std::string& one, const std::string& many) {
  if (needing == 0) return "";
  if (needing == 1) return mended > 0 ? " and " + one : ", but not it alone";
  if (mended == 0) return ", none " + one;
  if (mended == needing) return (needing == 2 ? ", both " : ", all ") + many;
  return ", " + std::to_string(mended) + " " + (mended == 1 ? one : many);
}

std::string Effect(const Cause& cause) {
  const int consists = Size(cause.consists), services = Size(cause.services),
            activities = Size(cause.activities);
  if (consists == 0 && services == 0)
    return Count(activities, "activity needs it", "activities need it") +
           Mended(activities, cause.activitiesHealed, "becomes playable by it alone",
                  "become playable by it alone");
  const std::string needed =
      consists > 0 ? Count(consists, "consist needs it", "consists need it") +
                         Mended(consists, cause.consistsHealed, "heals by it alone", "heal by it alone")
                   : Count(services, "service needs it", "services need it");
  if (activities == 0) return needed + ", no activity waits for it";
  return needed + ", " +
         Count(cause.activitiesHealed, "activity becomes playable", "activities become playable") +
         (cause.activitiesHealed == 0 ? " by it alone" : "");
}

}  // namespace

std::string Safe(std::string_view name) {
  // `Harmless` is for text only: it leaves entities and quotes alone.
  const std::string harmless = Harmless(ReplaceAll(name, "&", "&amp;"));
  return ReplaceAll(ReplaceAll(harmless, "\"", "&quot;"), "'", "&#39;");
}

std::string Count(int number, const char* one, const char* many) {
  return (number == 0 ? "no " : std::to_string(number) + " ") + (number > 1 ? many : one);
}

std::string CauseSentence(const Cause& cause) { return Trouble(cause) + ": " + Effect(cause); }

}  // namespace quillon
