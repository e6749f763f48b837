// What a user is told when a run-time error ends the program.
#pragma once

#include <string>

#include "core/Program.h"
#include "core/RunTimeError.h"

namespace quillon {

/// What failed and where: step, text, path and reason in one line.
std::string ErrorLine(const Program& program, const RunTimeError& error);

/// Start-up ends with it, and a repair of the catalogue helps.
bool IsMissingPreview(const RunTimeError& error);

/// What to do next.
std::string Advice(const RunTimeError& error);

/// Both, each in paragraphs of its own.
std::string ErrorReport(const Program& program, const RunTimeError& error);

}  // namespace quillon
