// What a user is told when a run-time error ends the program.
#pragma once

#include <string>
#include <string_view>

#include "core/Program.h"
#include "core/RunTimeError.h"

namespace quillon {

/// Where it failed, as the host names it; empty when the error has no path.
std::string HostPathOf(const Program& program, const RunTimeError& error);

/// What failed and where: step, text, host's path and reason in one line.
std::string ErrorLine(const Program& program, const RunTimeError& error);

/// What to do next, by the cause of the error; `step` is what was being done.
std::string Advice(const RunTimeError& error, std::string_view step = {});

/// What the program can do about an error by itself.
enum class Remedy { None, LayDeliveredFiles, RepairCatalogue };
Remedy RemedyOf(const RunTimeError& error);

/// Both, each in paragraphs of its own.
std::string ErrorReport(const Program& program, const RunTimeError& error);

}  // namespace quillon
