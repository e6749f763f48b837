#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <clocale>
#include <cstdlib>

#include "core/host/Console.h"
#include "core/host/windows_text.h"

namespace quillon {
namespace {

HANDLE HandleOf(std::FILE* file) { return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(file))); }

UINT oldCodePage = 0;

/// The console belongs to whoever started the program.
void ShowUtf8() {
  oldCodePage = ::GetConsoleOutputCP();
  if (oldCodePage == 0 || oldCodePage == CP_UTF8) return;
  ::SetConsoleOutputCP(CP_UTF8);
  std::atexit([] { ::SetConsoleOutputCP(oldCodePage); });
}

}  // namespace

std::vector<std::string> PrepareProcess(int, char**) {
  // No box asks for a disk: an empty drive is an error like any other.
  ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  // Lines end as elsewhere: whoever reads events need not know the platform.
  for (std::FILE* file : {stdin, stdout, stderr}) ::_setmode(::_fileno(file), _O_BINARY);
  std::setlocale(LC_TIME, "");  // dates as the user writes them
  ShowUtf8();

  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
  ::LocalFree(words);
  return arguments;
}

/// A console that knows how to clear a line, too.
bool IsTerminal(std::FILE* file) {
  DWORD mode = 0;
  return ::GetConsoleMode(HandleOf(file), &mode) != 0 &&
         ::SetConsoleMode(HandleOf(file), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace quillon
