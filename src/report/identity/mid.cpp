#include "report/identity/mid.h"

#include "report/identity/machine_identity.h"
#include "report/identity/mid2_machine.h"

namespace vanta {
namespace {

struct OneMid {
  CMID* const object = new CMID;
};
constinit Lazy<OneMid> g_mid;

}  // namespace

INewMID* CMID::Instance() {
  CMID* const object = g_mid.Get().object;
  object->AddRef();
  return object;
}

ULONG CMID::AddRef() { return ++references_; }

ULONG CMID::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT CMID::GetMid2(WCHAR* buffer, DWORD room) {
  if (!buffer || room < kMachineId2Room) return E_INVALIDARG;
  const Guard guard(lock_);
  if (value_.empty()) {
    Mid2Machine machine;
    value_ = Identifier2(machine);
  }
  for (const char c : value_) *buffer++ = static_cast<WCHAR>(c);
  *buffer = 0;
  return S_OK;
}

HRESULT CMID::GetMid(WCHAR*, DWORD) { return E_NOTIMPL; }

HRESULT CMID::RefreshMid2() { return E_NOTIMPL; }

}  // namespace vanta
