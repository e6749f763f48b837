// Profile files: what is written is read back, and nothing else changes.
#include "core/host/ProfileText.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  ProfileText text(bytes);
  const std::string names = text.SectionNames();
  std::string before;
  for (std::string_view rest = names; !rest.empty(); rest.remove_prefix(rest.find('\0') + 1)) {
    const std::string_view section = rest.substr(0, rest.find('\0'));
    const std::string keys = text.KeyNames(section);
    before += text.SectionLines(section);
    for (std::string_view left = keys; !left.empty(); left.remove_prefix(left.find('\0') + 1))
      before += text.Value(section, left.substr(0, left.find('\0'))).value_or("none");
  }
  text.SetValue("New one", "key", "value");
  Require(text.Value("new ONE", "KEY") == "value", "a value is not read back");
  const std::string written = text.Bytes();
  Require(ProfileText(written).Bytes() == written, "a file does not stay as it is");
  Require(ProfileText(written).Value("New one", "key") == "value", "a value is not in the file");
  text.ReplaceSection("New one", std::string_view("a=1\0b=2\0", 8));
  Require(text.Value("New one", "b") == "2", "a section is not replaced");
  text.DeleteKey("New one", "a");
  text.DeleteSection("New one");
  for (std::string_view rest = names; !rest.empty(); rest.remove_prefix(rest.find('\0') + 1))
    while (text.DeleteSection(rest.substr(0, rest.find('\0')))) {
    }
}

}  // namespace quillon::fuzz
