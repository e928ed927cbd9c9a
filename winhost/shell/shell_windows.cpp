// The desktop as the shell's windows show it: from IShellWindows to the application that starts programs for the user.
#include <windows.h>
#include <exdisp.h>
#include <servprov.h>
#include <shldisp.h>
#include <shobjidl.h>

#include "winhost/com/class_table.h"
#include "winhost/com/object.h"
#include "winhost/kernel/launch.h"
#include "winhost/machine/machine.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IDispatch> = {&IID_IDispatch};
template <>
inline constexpr std::array kIids<IServiceProvider> = {&IID_IServiceProvider};
template <>
inline constexpr std::array kIids<IShellWindows> = {&IID_IShellWindows, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IShellBrowser> = {&IID_IShellBrowser, &IID_IOleWindow};
template <>
inline constexpr std::array kIids<IShellView> = {&IID_IShellView, &IID_IOleWindow};
template <>
inline constexpr std::array kIids<IShellFolderViewDual> = {&IID_IShellFolderViewDual, &IID_IDispatch};
template <>
inline constexpr std::array kIids<IShellDispatch2> = {&IID_IShellDispatch2, &IID_IShellDispatch, &IID_IDispatch};

namespace {

// An argument that may be left out (empty, null or the error "parameter not found").
HRESULT OptionalText(const VARIANT& value, std::u16string* text) {
  if (value.vt == VT_BSTR) {
    *text = BstrText(value.bstrVal);
    return S_OK;
  }
  text->clear();
  return value.vt == VT_EMPTY || value.vt == VT_NULL || value.vt == VT_ERROR ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT OptionalNumber(const VARIANT& value, int fallback, int* number) {
  *number = fallback;
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
      return S_OK;
    case VT_I2:
      *number = value.iVal;
      return S_OK;
    case VT_I4:
    case VT_INT:
    case VT_UI4:
    case VT_UINT:
      *number = value.lVal;
      return S_OK;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

class ShellApplication final : public ComObject<IShellDispatch2> {
 public:
  HRESULT ShellExecute(BSTR file, VARIANT arguments, VARIANT directory, VARIANT operation, VARIANT show) override {
    if (auto failed = PlannedFailure("IShellDispatch2::ShellExecute", file)) return *failed;
    LaunchRequest request;
    request.file = BstrText(file);
    for (const auto& [from, to] :
         {std::pair{&arguments, &request.parameters}, {&directory, &request.directory}, {&operation, &request.verb}}) {
      if (const HRESULT read = OptionalText(*from, to); FAILED(read)) return read;
    }
    if (const HRESULT read = OptionalNumber(show, SW_SHOWNORMAL, &request.show); FAILED(read)) return read;
    request.by = "desktop shell";
    request.elevated = false;
    DWORD ignored = 0;
    LaunchProgram(request, &ignored);
    return S_OK;
  }
};

class DesktopFolderView final : public ComObject<IShellFolderViewDual> {
 public:
  HRESULT get_Application(IDispatch** application) override {
    if (auto failed = PlannedFailure("IShellFolderViewDual::get_Application")) return *failed;
    return MakeObject<ShellApplication>(application);
  }
};

class DesktopView final : public ComObject<IShellView> {
 public:
  HRESULT GetWindow(HWND* window) override { return window ? (*window = nullptr, E_FAIL) : E_POINTER; }
  HRESULT GetItemObject(UINT item, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (auto failed = PlannedFailure("IShellView::GetItemObject")) return *failed;
    return item == SVGIO_BACKGROUND ? MakeObject<DesktopFolderView>(iid, object) : E_NOTIMPL;
  }
};

class DesktopBrowser final : public ComObject<IShellBrowser> {
 public:
  HRESULT GetWindow(HWND* window) override { return window ? (*window = nullptr, E_FAIL) : E_POINTER; }
  HRESULT QueryActiveShellView(IShellView** view) override {
    if (!view) return E_POINTER;
    *view = nullptr;
    if (auto failed = PlannedFailure("IShellBrowser::QueryActiveShellView")) return *failed;
    return MakeObject<DesktopView>(view);
  }
};

class Desktop final : public ComObject<IDispatch, IServiceProvider> {
 public:
  HRESULT QueryService(REFGUID service, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (auto failed = PlannedFailure("IServiceProvider::QueryService")) return *failed;
    return service == SID_STopLevelBrowser ? MakeObject<DesktopBrowser>(iid, object) : E_NOINTERFACE;
  }
};

class ShellWindows final : public ComObject<IShellWindows> {
 public:
  HRESULT FindWindowSW(VARIANT*, VARIANT*, int window_class, LONG* window, int options, IDispatch** dispatch) override {
    if (window) *window = 0;
    if (dispatch) *dispatch = nullptr;
    if (auto failed = PlannedFailure("IShellWindows::FindWindowSW")) return *failed;
    if (window_class != SWC_DESKTOP || !Machine::Current().facts().desktop_shell) return S_FALSE;
    if (!(options & SWFO_NEEDDISPATCH)) return S_OK;
    return dispatch ? MakeObject<Desktop>(dispatch) : E_POINTER;
  }
};

}  // namespace

HRESULT MakeShellWindows(REFIID iid, void** object) { return MakeObject<ShellWindows>(iid, object); }

}  // namespace winhost
