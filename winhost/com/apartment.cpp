#include "winhost/com/apartment.h"

#include <windows.h>
#include <ole2.h>

#include <atomic>

#include "winhost/com/object.h"

namespace winhost {
namespace {

std::atomic<int> g_multithreaded{0};  // threads that are in the multithreaded apartment

struct Apartment {
  int entered = 0;
  int ole = 0;
  bool multithreaded = false;

  HRESULT Enter(bool wants_multithreaded) {
    if (entered > 0 && multithreaded != wants_multithreaded) return RPC_E_CHANGED_MODE;
    if (entered++ > 0) return S_FALSE;
    multithreaded = wants_multithreaded;
    if (multithreaded) ++g_multithreaded;
    return S_OK;
  }
  void Leave() {
    if (entered == 0 || --entered > 0) return;
    if (multithreaded) --g_multithreaded;
  }
  ~Apartment() {
    if (entered > 0 && multithreaded) --g_multithreaded;  // a thread that ended without leaving
  }
};

thread_local Apartment t_apartment;

}  // namespace

bool ThreadHasCom() { return t_apartment.entered > 0 || g_multithreaded > 0; }

}  // namespace winhost

HRESULT CoInitializeEx(LPVOID reserved, DWORD model) {
  if (auto failed = winhost::PlannedFailure("CoInitializeEx")) return *failed;
  constexpr DWORD kKnown = COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE | COINIT_SPEED_OVER_MEMORY;
  if (reserved || (model & ~kKnown)) return E_INVALIDARG;
  return winhost::t_apartment.Enter(!(model & COINIT_APARTMENTTHREADED));
}

HRESULT CoInitialize(LPVOID reserved) { return CoInitializeEx(reserved, COINIT_APARTMENTTHREADED); }

void CoUninitialize() { winhost::t_apartment.Leave(); }

HRESULT OleInitialize(LPVOID reserved) {
  if (auto failed = winhost::PlannedFailure("OleInitialize")) return *failed;
  if (reserved) return E_INVALIDARG;
  winhost::Apartment& apartment = winhost::t_apartment;
  const HRESULT entered = apartment.Enter(false);
  if (FAILED(entered)) return entered;
  return apartment.ole++ > 0 ? S_FALSE : S_OK;
}

void OleUninitialize() {
  winhost::Apartment& apartment = winhost::t_apartment;
  if (apartment.ole == 0) return;
  --apartment.ole;
  apartment.Leave();
}
