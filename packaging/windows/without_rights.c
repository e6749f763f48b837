/* Runs a command line as a user who is no administrator, and ends with its status: for check-package. */
#include <stdio.h>
#include <windows.h>

int main(int argc, char** argv) {
  BYTE administrators[SECURITY_MAX_SID_SIZE];
  DWORD size = sizeof administrators, status = 100;
  SID_AND_ATTRIBUTES taken = {administrators, 0};
  STARTUPINFOA start = {sizeof start};
  PROCESS_INFORMATION process;
  HANDLE own, restricted;
  if (argc == 2 && CreateWellKnownSid(WinBuiltinAdministratorsSid, NULL, administrators, &size) &&
      OpenProcessToken(GetCurrentProcess(), TOKEN_ALL_ACCESS, &own) &&
      CreateRestrictedToken(own, 0, 1, &taken, 0, NULL, 0, NULL, &restricted) &&
      CreateProcessAsUserA(restricted, NULL, argv[1], NULL, NULL, FALSE, 0, NULL, NULL, &start, &process)) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
  } else {
    fprintf(stderr, "error %lu\n", GetLastError());
  }
  return (int)status;
}
