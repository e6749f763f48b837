// What the windows and links of the program are to those who can't see them.
#pragma once

namespace quillon {

/// Teaches the toolkit the roles that it can't know. May be called again.
void TeachRoles();

}  // namespace quillon
