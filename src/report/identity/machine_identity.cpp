#include "report/identity/machine_identity.h"

#include "base/lock.h"
#include "report/identity/mid.h"
#include "report/identity/mid1_machine.h"

namespace vanta {
namespace {

struct MachineId {
  MachineId() {
    Mid1Machine machine;
    value = Identifier1(machine);
  }
  std::string value;
};
constinit Lazy<MachineId> g_machine_id;

}  // namespace

bool GetMachineId(WCHAR* buffer, DWORD size) {
  if (!buffer || size == 0) return false;
  *buffer = 0;
  const std::string& id = g_machine_id.Get().value;
  if (size <= id.size()) return false;
  return MultiByteToWideChar(CP_THREAD_ACP, 0, id.c_str(), -1, buffer, static_cast<int>(size)) != 0;
}

HRESULT GetMachineId2(WCHAR* buffer, DWORD size) {
  if (!buffer || size < kMachineId2Room) return E_INVALIDARG;
  INewMID* const mid = CMID::Instance();
  const HRESULT result = mid->GetMid2(buffer, size);
  mid->Release();
  return result;
}

String MachineIdText() {
  WCHAR buffer[kMachineIdRoom];
  return GetMachineId(buffer, kMachineIdRoom) ? String(buffer) : String();
}

String MachineId2Text() {
  WCHAR buffer[kMachineId2Room];
  return SUCCEEDED(GetMachineId2(buffer, kMachineId2Room)) ? String(buffer) : String();
}

}  // namespace vanta
