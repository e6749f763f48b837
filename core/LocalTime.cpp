#include "core/LocalTime.h"

#include <array>
#include <ctime>

namespace quillon {

std::string LocalTime(const char* form) {
  const std::time_t now = std::time(nullptr);
  std::array<char, 64> text;
  return {text.data(), std::strftime(text.data(), text.size(), form, std::localtime(&now))};
}

}  // namespace quillon
