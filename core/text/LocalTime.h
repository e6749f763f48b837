// Local time as text.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// ISO 8601 to the second, for LocalTime.
inline constexpr const char* kIsoTime = "%Y-%m-%dT%H:%M:%S";

/// The present local time in `form`, as strftime has it.
std::string LocalTime(const char* form);
/// The same of a time in nanoseconds since 1970, as files have it.
std::string LocalTime(const char* form, std::int64_t nanoseconds);

}  // namespace quillon
