// What a program needs of its platform before it begins.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace quillon {

/// The arguments as UTF-8, without the program's name. A reader that goes away does not end the program from
/// then on. To be called before any thread starts.
std::vector<std::string> PrepareProcess(int argc, char** argv);

/// True when a person watches `file`.
bool IsTerminal(std::FILE* file);

}  // namespace quillon
