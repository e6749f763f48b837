#include "core/text/LocalTime.h"

#include <array>
#include <ctime>

namespace quillon {
namespace {

std::string Written(const char* form, std::time_t time) {
  std::array<char, 64> text;
  return {text.data(), std::strftime(text.data(), text.size(), form, std::localtime(&time))};
}

}  // namespace

std::string LocalTime(const char* form) { return Written(form, std::time(nullptr)); }

std::string LocalTime(const char* form, std::int64_t nanoseconds) {
  return Written(form, static_cast<std::time_t>(nanoseconds / 1'000'000'000));
}

}  // namespace quillon
