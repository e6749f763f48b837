#include <malloc.h>

#include "core/host/Memory.h"

namespace quillon {

void GiveFreedMemoryBack() { ::malloc_trim(0); }

}  // namespace quillon
