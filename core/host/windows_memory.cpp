#include <windows.h>

#include "core/host/Memory.h"

namespace quillon {

void GiveFreedMemoryBack() { ::HeapCompact(::GetProcessHeap(), 0); }

}  // namespace quillon
