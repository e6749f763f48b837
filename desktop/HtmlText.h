// What a person reads of an HTML page.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// The text of a page of the help, without tags and head, entities as their characters, each run of blanks as
/// one blank. UTF-8 in, UTF-8 out; an entity that is not known stays as it is.
std::string PlainText(std::string_view html);

}  // namespace quillon
