// A library to be loaded by the tests: counts its attachments, registers, refuses to unregister. Files of the machine
// steer it: with C:\refuse it refuses to be attached, and with C:\wait its registration renames that to C:\waiting and
// lasts as long as that is there.
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>

#include <winerror.h>

#include <libloaderapi.h>

namespace {
int g_attached = 0;

std::string OnMachine(const char* name) {
  const char* const machine = getenv("VANTA_MACHINE");
  return std::string(machine ? machine : "") + "/C/" + name;
}

bool MachineHas(const char* name) { return access(OnMachine(name).c_str(), F_OK) == 0; }
}  // namespace

extern "C" {

__declspec(dllexport) BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  ++g_attached;
  return !MachineHas("refuse");
}

__declspec(dllexport) int AttachCount() { return g_attached; }
__declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
  if (MachineHas("wait")) rename(OnMachine("wait").c_str(), OnMachine("waiting").c_str());
  while (MachineHas("waiting")) usleep(1000);
  return S_OK;
}
__declspec(dllexport) HRESULT WINAPI DllUnregisterServer() { return E_FAIL; }
}
