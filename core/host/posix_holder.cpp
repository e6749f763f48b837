#include "core/host/Holder.h"

namespace quillon {

std::string HolderOf(std::string_view) { return {}; }

}  // namespace quillon
