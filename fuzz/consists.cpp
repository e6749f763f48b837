// Consists, and the services and activities that call for them: the facts of each kind.
#include "checkup/GameFacts.h"
#include "fuzz/Target.h"

namespace quillon::fuzz {

void Try(std::string_view bytes) {
  const GameText text("\\game\\a.con", bytes);
  for (const FileKind kind : {FileKind::Consist, FileKind::Service, FileKind::Activity}) {
    std::vector<FoundItem> found;
    const FileFacts facts = TakeFacts(kind, text, found);
    for (const auto* calls : {&facts.playersServices, &facts.otherServices})
      for (const auto& call : *calls)
        Require(call.at <= call.end && call.end <= text.Text().size(), "a call leads out of the text");
    Require((facts.broken != FileFacts::Broken::Nowhere) == (facts.error != nullptr), "broken for no reason");
    text.LineOf(bytes.size());
  }
}

}  // namespace quillon::fuzz
