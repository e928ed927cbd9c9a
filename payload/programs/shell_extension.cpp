// A stand-in for the product's shell extension: registers and unregisters itself as a context menu handler of files,
// and offers no object, so a desktop that asks gets a clean refusal.
#include <windows.h>
// The shell's headers want the ones above.
#include <objbase.h>
#include <shlwapi.h>

namespace {

constexpr const WCHAR* kClassKey = TEXT("Software\\Classes\\CLSID\\{5A7C1E52-8B0D-4E0B-9A35-6D1F0C8E2B47}");
constexpr const WCHAR* kServerKey =
    TEXT("Software\\Classes\\CLSID\\{5A7C1E52-8B0D-4E0B-9A35-6D1F0C8E2B47}\\InprocServer32");
constexpr const WCHAR* kHandlerKey = TEXT("Software\\Classes\\*\\shellex\\ContextMenuHandlers\\VantaView");
constexpr const WCHAR* kClassId = TEXT("{5A7C1E52-8B0D-4E0B-9A35-6D1F0C8E2B47}");

HINSTANCE g_library;

bool SetText(const WCHAR* key, const WCHAR* value, const WCHAR* text) {
  const auto bytes = static_cast<DWORD>((static_cast<size_t>(lstrlenW(text)) + 1) * sizeof(WCHAR));
  return SHSetValueW(HKEY_LOCAL_MACHINE, key, value, REG_SZ, text, bytes) == ERROR_SUCCESS;
}

}  // namespace

extern "C" __declspec(dllexport) BOOL WINAPI DllMain(HINSTANCE library, DWORD, LPVOID) {
  g_library = library;
  return TRUE;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllRegisterServer() {
  WCHAR path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(g_library, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return E_FAIL;
  const bool registered = SetText(kClassKey, nullptr, TEXT("VantaView")) && SetText(kServerKey, nullptr, path) &&
                          SetText(kServerKey, TEXT("ThreadingModel"), TEXT("Apartment")) &&
                          SetText(kHandlerKey, nullptr, kClassId);
  return registered ? S_OK : E_FAIL;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllUnregisterServer() {
  SHDeleteKeyW(HKEY_LOCAL_MACHINE, kHandlerKey);
  SHDeleteKeyW(HKEY_LOCAL_MACHINE, kClassKey);
  return S_OK;
}

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllCanUnloadNow() { return S_OK; }

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID, REFIID, LPVOID* object) {
  if (object) *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}
