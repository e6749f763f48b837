// The memory of the process.
#pragma once

namespace quillon {

/// Gives what the program has freed, and its heap still holds, back to the system. Takes time in proportion:
/// for the ends of works that needed much.
void GiveFreedMemoryBack();

}  // namespace quillon
