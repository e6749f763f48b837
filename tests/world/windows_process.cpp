#include <windows.h>

#include <stdexcept>

#include "core/host/windows_text.h"
#include "tests/world/Process.h"

namespace quillon {
namespace {

/// A word as the platform's programs take it off their command line.
std::wstring Quoted(const std::string& word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : Widen(word)) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L"\"";
}

HANDLE OpenInherited(const std::wstring& name, DWORD access, SECURITY_ATTRIBUTES& inherited) {
  return ::CreateFileW(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING, 0,
                       nullptr);
}

}  // namespace

struct Process::State {
  HANDLE output = nullptr, process = nullptr;
  DWORD status = 0;
};

Process::Process(const std::vector<std::string>& words, const std::string& input, int)
    : state_(std::make_unique<State>()) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  if (::CreatePipe(&state_->output, &start.hStdOutput, &inherited, 0) == 0)
    throw std::runtime_error("no pipe");
  ::SetHandleInformation(state_->output, HANDLE_FLAG_INHERIT, 0);
  start.hStdInput = OpenInherited(input.empty() ? L"NUL" : Widen(input), GENERIC_READ, inherited);
  start.hStdError = OpenInherited(L"NUL", GENERIC_WRITE, inherited);
  std::wstring command = Quoted(QUILLON_PROGRAM);
  for (const auto& word : words) command += L" " + Quoted(word);
  PROCESS_INFORMATION made = {};
  const BOOL started = ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                        nullptr, nullptr, &start, &made);
  for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError}) ::CloseHandle(handle);
  if (started == 0) throw std::runtime_error("can't start " QUILLON_PROGRAM);
  ::CloseHandle(made.hThread);
  state_->process = made.hProcess;
}

Process::~Process() {
  End();
  ::CloseHandle(state_->process);
}

bool Process::CanLimitFiles() { return false; }

bool Process::Line(std::string& line) {
  line.clear();
  char c = 0;
  DWORD count = 0;
  while (::ReadFile(state_->output, &c, 1, &count, nullptr) != 0 && count == 1) {
    if (c == '\n') return true;
    line += c;
  }
  return false;
}

bool Process::Runs() const { return ::WaitForSingleObject(state_->process, 0) == WAIT_TIMEOUT; }

void Process::Kill() const { ::TerminateProcess(state_->process, static_cast<UINT>(kKilled)); }

int Process::End() {
  if (state_->output == nullptr) return static_cast<int>(state_->status);
  ::CloseHandle(state_->output);
  state_->output = nullptr;
  ::WaitForSingleObject(state_->process, INFINITE);
  ::GetExitCodeProcess(state_->process, &state_->status);
  return static_cast<int>(state_->status);
}

}  // namespace quillon
