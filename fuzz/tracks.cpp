// Track files: the route's name and description.
#include "catalogue/RouteName.h"
#include "core/text/Text.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  const std::string text = DecodeGameText(bytes);
  RouteDescriptionFrom(text);
  EncodeGameText(text);
  const std::string name = RouteNameFrom(text, "\\game\\a.trk");
  const std::string usable = UsableRouteName(name, "zip");
  Require(!usable.empty(), "a route without a name");
  LowerCase(usable);
  ProperCase(usable);
  Require(EqualNoCase(UpperCase(usable), usable), "upper case is another name");
}

}  // namespace quillon::fuzz
