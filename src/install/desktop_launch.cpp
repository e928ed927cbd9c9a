// LaunchAsDesktopUser: the way from the desktop's window to the shell that lives behind it.
#include "install/launch.h"

#include "base/com_ptr.h"
#include "base/com_values.h"
#include "report/probes/os_version.h"

#include <exdisp.h>
#include <servprov.h>
#include <shellapi.h>
#include <shldisp.h>
#include <shlguid.h>
#include <shlobj.h>

namespace vanta {
namespace {

bool LaunchDirectly(const WCHAR* verb, const String& file, const WCHAR* parameters, const WCHAR* directory, int show) {
  const HINSTANCE result = ShellExecuteW(nullptr, verb, file.c_str(), parameters, directory, show);
  return reinterpret_cast<INT_PTR>(result) > 32;
}

HRESULT FindDesktop(ComPtr<IDispatch>& desktop) {
  ComPtr<IShellWindows> windows;
  const HRESULT made =
      CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_LOCAL_SERVER, IID_IShellWindows, windows.PutVoid());
  if (FAILED(made)) return made;
  VARIANT desktop_place = {};
  VARIANT none = {};
  desktop_place.vt = VT_I4;  // CSIDL_DESKTOP
  LONG window = 0;
  const HRESULT found =
      windows->FindWindowSW(&desktop_place, &none, SWC_DESKTOP, &window, SWFO_NEEDDISPATCH, desktop.Put());
  // A machine without a desktop shell answers S_FALSE and no object.
  return SUCCEEDED(found) && !desktop ? E_FAIL : found;
}

// As IUnknown_QueryService, which Windows XP does not export by name.
HRESULT QueryTopLevelBrowser(const ComPtr<IDispatch>& desktop, ComPtr<IShellBrowser>& browser) {
  ComPtr<IServiceProvider> services;
  const HRESULT asked = desktop.As(IID_IServiceProvider, services);
  if (FAILED(asked)) return asked;
  return services->QueryService(SID_STopLevelBrowser, IID_IShellBrowser, browser.PutVoid());
}

HRESULT GetShellBehind(const ComPtr<IShellBrowser>& browser, ComPtr<IShellDispatch2>& shell) {
  ComPtr<IShellView> view;
  ComPtr<IDispatch> background;
  ComPtr<IShellFolderViewDual> folder_view;
  ComPtr<IDispatch> application;
  HRESULT result = browser->QueryActiveShellView(view.Put());
  if (SUCCEEDED(result)) result = view->GetItemObject(SVGIO_BACKGROUND, IID_IDispatch, background.PutVoid());
  if (SUCCEEDED(result)) result = background.As(IID_IShellFolderViewDual, folder_view);
  if (SUCCEEDED(result)) result = folder_view->get_Application(application.Put());
  if (SUCCEEDED(result)) result = application.As(IID_IShellDispatch2, shell);
  return result;
}

HRESULT FindShell(ComPtr<IShellDispatch2>& shell) {
  ComPtr<IDispatch> desktop;
  ComPtr<IShellBrowser> browser;
  HRESULT result = FindDesktop(desktop);
  if (SUCCEEDED(result)) result = QueryTopLevelBrowser(desktop, browser);
  if (SUCCEEDED(result)) result = GetShellBehind(browser, shell);
  return result;
}

}  // namespace

bool LaunchAsDesktopUser(const WCHAR* verb, const String& file, const WCHAR* parameters, const WCHAR* directory,
                         int show) {
  if (IsOsVersion(OsXp)) return LaunchDirectly(verb, file, parameters, directory, show);
  const ComScope com(COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
  ComPtr<IShellDispatch2> shell;
  if (FAILED(FindShell(shell))) return false;
  const Bstr file_text(file);
  const Variant parameter_text = Variant::FromOptional(parameters);
  const Variant directory_text = Variant::FromOptional(directory);
  const Variant verb_text = Variant::FromOptional(verb);
  const Variant show_command(LONG{show});
  return SUCCEEDED(shell->ShellExecute(file_text.Get(), parameter_text.Get(), directory_text.Get(), verb_text.Get(),
                                       show_command.Get()));
}

}  // namespace vanta
