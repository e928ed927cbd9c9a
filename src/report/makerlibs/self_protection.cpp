#include "report/makerlibs/self_protection.h"

#include <windows.h>

#include "base/unique.h"

namespace vanta {
namespace {

constexpr WCHAR kDevice[] = TEXT("\\\\.\\VantaSelfProtection");
constexpr DWORD kAskAboutProcess = 0x22204C;

}  // namespace

SelfProtection AskSelfProtection() {
  const UniqueFile device(CreateFileW(kDevice, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!device) return SelfProtection::Absent;
  DWORD process = GetCurrentProcessId();
  DWORD answer = 0;
  DWORD returned = 0;
  const bool answered = DeviceIoControl(device.Get(), kAskAboutProcess, &process, sizeof(process), &answer,
                                        sizeof(answer), &returned, nullptr) != FALSE;
  return answered && returned == sizeof(answer) && answer != 0 ? SelfProtection::Yes : SelfProtection::No;
}

}  // namespace vanta
