// Small programs, as self-extracting archives have them in front. All they do is end.
#pragma once

#include <string>

namespace quillon {

/// For Linux on x86-64.
inline std::string SmallElf() {
  using namespace std::string_literals;
  return "\x7F"
         "ELF\2\1\1\0\0\0\0\0\0\0\0\0\2\0\x3E\0\1\0\0\0"s  // for this processor, executable
         "\x78\0\x40\0\0\0\0\0\x40\0\0\0\0\0\0\0"s         // where it begins; where the segment is told
         "\0\0\0\0\0\0\0\0\0\0\0\0\x40\0\x38\0\1\0\0\0\0\0\0\0"s
         "\1\0\0\0\5\0\0\0\0\0\0\0\0\0\0\0"s  // one segment, to be read and executed
         "\0\0\x40\0\0\0\0\0\0\0\x40\0\0\0\0\0"s
         "\x81\0\0\0\0\0\0\0\x81\0\0\0\0\0\0\0\0\x10\0\0\0\0\0\0"s
         "\x31\xFF\xB8\x3C\0\0\0\x0F\5"s;  // exit(0)
}

/// For Windows on any x86.
inline std::string SmallPe() {
  using namespace std::string_literals;
  std::string program = "MZ"s + std::string(58, '\0') + "\x40\0\0\0"s;       // the new header is at 0x40
  program += "PE\0\0\x4C\1\1\0"s + std::string(12, '\0') + "\xE0\0\2\1"s;    // one section
  program += "\x0B\1\0\0\0\2\0\0"s + std::string(8, '\0') + "\0\x10\0\0"s;   // where it begins
  program += "\0\x10\0\0\0\x10\0\0\0\0\x40\0\0\x10\0\0\0\2\0\0"s;            // base and alignments
  program += "\4\0\0\0\0\0\0\0\4\0\0\0\0\0\0\0\0\x20\0\0\0\2\0\0\0\0\0\0"s;  // versions and sizes
  program += "\3\0\0\0\0\0\x10\0\0\x10\0\0\0\0\x10\0\0\x10\0\0\0\0\0\0\x10\0\0\0"s;
  program += std::string(128, '\0');
  program += ".text\0\0\0\3\0\0\0\0\x10\0\0\0\2\0\0\0\2\0\0"s + std::string(12, '\0') + "\x20\0\0\x60"s;
  program.resize(0x200, '\0');
  program += "\x31\xC0\xC3"s;  // return 0
  program.resize(0x400, '\0');
  return program;
}

}  // namespace quillon
