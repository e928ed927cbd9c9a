// COM and window declarations that winhost and the Windows headers must agree on: what does not compile on one of them
// has drifted. Sizes and offsets are those that programs hand over; signatures are the methods that the setup calls.
#include <windows.h>
#include <ole2.h>
#include <exdisp.h>
#include <mstask.h>
#include <servprov.h>
#include <shlguid.h>
#include <shlobj.h>
#include <shobjidl.h>
#include <shldisp.h>
#include <shlwapi.h>
#include <taskschd.h>

#include "seam_check.h"

#include <cstddef>
#include <type_traits>

namespace {

// SAME(ITaskService, Connect, VARIANT, VARIANT, …): the method takes exactly these and gives an HRESULT.
#define SAME(Interface, Method, ...)                                                                                 \
  static_assert(std::is_same_v<decltype(&Interface::Method), HRESULT (STDMETHODCALLTYPE Interface::*)(__VA_ARGS__)>, \
                #Interface "::" #Method)

SAME(IPersistFile, Load, LPCOLESTR, DWORD);
SAME(IPersistFile, Save, LPCOLESTR, BOOL);
SAME(IPersistFile, GetCurFile, LPOLESTR*);
SAME(IShellLinkW, GetPath, LPWSTR, int, WIN32_FIND_DATAW*, DWORD);
SAME(IShellLinkW, SetPath, LPCWSTR);
SAME(IShellLinkW, SetArguments, LPCWSTR);
SAME(IShellLinkW, SetDescription, LPCWSTR);
SAME(IShellLinkW, SetWorkingDirectory, LPCWSTR);
SAME(IShellLinkW, SetIconLocation, LPCWSTR, int);
SAME(IShellLinkW, GetIconLocation, LPWSTR, int, int*);
SAME(IShellLinkW, SetHotkey, WORD);
SAME(IShellLinkW, SetShowCmd, int);

SAME(IShellItem, GetDisplayName, SIGDN, LPWSTR*);
SAME(IModalWindow, Show, HWND);
SAME(IFileDialog, SetOptions, FILEOPENDIALOGOPTIONS);
SAME(IFileDialog, GetOptions, FILEOPENDIALOGOPTIONS*);
SAME(IFileDialog, SetDefaultFolder, IShellItem*);
SAME(IFileDialog, SetTitle, LPCWSTR);
SAME(IFileDialog, GetResult, IShellItem**);

SAME(IShellWindows, FindWindowSW, VARIANT*, VARIANT*, int, LONG*, int, IDispatch**);
SAME(IShellBrowser, QueryActiveShellView, IShellView**);
SAME(IShellView, GetItemObject, UINT, REFIID, void**);
SAME(IShellFolderViewDual, get_Application, IDispatch**);
SAME(IShellDispatch2, ShellExecute, BSTR, VARIANT, VARIANT, VARIANT, VARIANT);

SAME(ITaskService, Connect, VARIANT, VARIANT, VARIANT, VARIANT);
SAME(ITaskService, GetFolder, BSTR, ITaskFolder**);
SAME(ITaskService, NewTask, DWORD, ITaskDefinition**);
SAME(ITaskFolder, DeleteTask, BSTR, LONG);
SAME(ITaskFolder, GetTask, BSTR, IRegisteredTask**);
SAME(ITaskFolder, RegisterTaskDefinition, BSTR, ITaskDefinition*, LONG, VARIANT, VARIANT, TASK_LOGON_TYPE, VARIANT,
     IRegisteredTask**);
SAME(ITaskDefinition, get_RegistrationInfo, IRegistrationInfo**);
SAME(ITaskDefinition, get_Settings, ITaskSettings**);
SAME(ITaskDefinition, get_Principal, IPrincipal**);
SAME(ITaskDefinition, get_Triggers, ITriggerCollection**);
SAME(ITaskDefinition, get_Actions, IActionCollection**);
SAME(IRegistrationInfo, put_Description, BSTR);
SAME(IRegistrationInfo, put_Author, BSTR);
SAME(ITaskSettings, put_StartWhenAvailable, VARIANT_BOOL);
SAME(ITaskSettings, put_MultipleInstances, TASK_INSTANCES_POLICY);
SAME(ITaskSettings, put_Priority, INT);
SAME(IPrincipal, put_GroupId, BSTR);
SAME(IPrincipal, put_RunLevel, TASK_RUNLEVEL_TYPE);
SAME(IPrincipal, put_LogonType, TASK_LOGON_TYPE);
SAME(ITriggerCollection, Create, TASK_TRIGGER_TYPE2, ITrigger**);
SAME(ITriggerCollection, get_Item, LONG, ITrigger**);
SAME(ITrigger, get_Repetition, IRepetitionPattern**);
SAME(ITrigger, put_StartBoundary, BSTR);
SAME(IRepetitionPattern, put_Interval, BSTR);
SAME(IActionCollection, Create, TASK_ACTION_TYPE, IAction**);
SAME(IExecAction, put_Path, BSTR);
SAME(IExecAction, put_Arguments, BSTR);

SAME(ITaskScheduler, Delete, LPCWSTR);
SAME(ITaskScheduler, Activate, LPCWSTR, REFIID, IUnknown**);
SAME(ITaskScheduler, NewWorkItem, LPCWSTR, REFCLSID, REFIID, IUnknown**);
SAME(IScheduledWorkItem, CreateTrigger, WORD*, ITaskTrigger**);
SAME(IScheduledWorkItem, SetAccountInformation, LPCWSTR, LPCWSTR);
SAME(IScheduledWorkItem, SetComment, LPCWSTR);
SAME(IScheduledWorkItem, SetFlags, DWORD);
SAME(ITask, SetApplicationName, LPCWSTR);
SAME(ITask, SetParameters, LPCWSTR);
SAME(ITask, SetMaxRunTime, DWORD);
SAME(ITaskTrigger, SetTrigger, const PTASK_TRIGGER);

static_assert(std::is_base_of_v<IScheduledWorkItem, ITask>);
static_assert(std::is_base_of_v<IFileDialog, IFileOpenDialog> && std::is_base_of_v<IModalWindow, IFileDialog>);
static_assert(std::is_base_of_v<ITrigger, ITimeTrigger>);
static_assert(std::is_base_of_v<IDispatch, IShellDispatch2>);

constexpr bool k64 = sizeof(void*) == 8;
static_assert(sizeof(BROWSEINFOW) == (k64 ? 64 : 32) && offsetof(BROWSEINFOW, ulFlags) == (k64 ? 32 : 16));
static_assert(sizeof(ITEMIDLIST) == 3 && offsetof(SHITEMID, abID) == 2);
static_assert(FOS_PICKFOLDERS == 0x20 && FOS_PATHMUSTEXIST == 0x800 && FOS_FILEMUSTEXIST == 0x1000);
static_assert(BIF_RETURNONLYFSDIRS == 1 && BIF_DONTGOBELOWDOMAIN == 2);
static_assert(SIGDN_FILESYSPATH == static_cast<int>(0x80058000) && SIGDN_NORMALDISPLAY == 0);
static_assert(sizeof(VARIANT) == (k64 ? 24 : 16) && sizeof(VARIANT_BOOL) == 2 && VARIANT_TRUE == -1);
static_assert(sizeof(TASK_TRIGGER) == 0x30 && offsetof(TASK_TRIGGER, TriggerType) == 32 &&
              offsetof(TASK_TRIGGER, Type) == 36 && offsetof(TASK_TRIGGER, wRandomMinutesInterval) == 46);
static_assert(sizeof(MSG) == (k64 ? 48 : 28) && sizeof(WNDCLASSEXW) == (k64 ? 80 : 48));
static_assert(sizeof(CREATESTRUCTW) == (k64 ? 80 : 48));

static_assert(TASK_TRIGGER_TIME == 1 && TASK_ACTION_EXEC == 0 && TASK_LOGON_GROUP == 4 && TASK_RUNLEVEL_HIGHEST == 1 &&
              TASK_CREATE_OR_UPDATE == 6 && TASK_TIME_TRIGGER_DAILY == 1 && TASK_FLAG_RUN_ONLY_IF_LOGGED_ON == 0x2000);
static_assert(SWC_DESKTOP == 8 && SWFO_NEEDDISPATCH == 1 && SVGIO_BACKGROUND == 0);
static_assert(COINIT_APARTMENTTHREADED == 2 && COINIT_DISABLE_OLE1DDE == 4 && CLSCTX_LOCAL_SERVER == 4);
static_assert(WM_USER == 0x400 && WM_APP == 0x8000 && WM_TIMER == 0x113 && WM_QUIT == 0x12 && WM_NCCREATE == 0x81);
static_assert(GWLP_USERDATA == -21 && GWLP_WNDPROC == -4 && SW_RESTORE == 9 && PM_REMOVE == 1 && QS_ALLINPUT == 0x1CFF);
static_assert(VT_BSTR == 8 && VT_I4 == 3 && VT_BOOL == 11 && VT_EMPTY == 0);

// Identities are data, which not every header gives as constants, so they are compared when the checks run.
struct NamedId {
  const GUID& id;
  const WCHAR* text;
};
const NamedId kIds[] = {
    {IID_IUnknown, TEXT("{00000000-0000-0000-C000-000000000046}")},
    {IID_IPersistFile, TEXT("{0000010B-0000-0000-C000-000000000046}")},
    {IID_IDispatch, TEXT("{00020400-0000-0000-C000-000000000046}")},
    {CLSID_ShellLink, TEXT("{00021401-0000-0000-C000-000000000046}")},
    {IID_IShellLinkW, TEXT("{000214F9-0000-0000-C000-000000000046}")},
    {IID_IShellItem, TEXT("{43826D1E-E718-42EE-BC55-A1E261C37BFE}")},
    {IID_IModalWindow, TEXT("{B4DB1657-70D7-485E-8E3E-6FCB5A5C1802}")},
    {IID_IFileDialog, TEXT("{42F85136-DB7E-439C-85F1-E4075D135FC8}")},
    {IID_IFileOpenDialog, TEXT("{D57C7288-D4AD-4768-BE02-9D969532D960}")},
    {CLSID_FileOpenDialog, TEXT("{DC1C5A9C-E88A-4DDE-A5A1-60F82A20AEF7}")},
    {CLSID_ShellWindows, TEXT("{9BA05972-F6A8-11CF-A442-00A0C90A8F39}")},
    {IID_IShellWindows, TEXT("{85CB6900-4D95-11CF-960C-0080C7F4EE85}")},
    {SID_STopLevelBrowser, TEXT("{4C96BE40-915C-11CF-99D3-00AA004AE837}")},
    {IID_IShellBrowser, TEXT("{000214E2-0000-0000-C000-000000000046}")},
    {IID_IShellFolderViewDual, TEXT("{E7A1AF80-4D96-11CF-960C-0080C7F4EE85}")},
    {IID_IShellDispatch2, TEXT("{A4C6892C-3BA9-11D2-9DEA-00C04FB16162}")},
    {CLSID_TaskScheduler, TEXT("{0F87369F-A4E5-4CFC-BD3E-73E6154572DD}")},
    {IID_ITaskService, TEXT("{2FABA4C7-4DA9-4013-9697-20CC3FD40F85}")},
    {IID_ITimeTrigger, TEXT("{B45747E0-EBA7-4276-9F29-85C5BB300006}")},
    {IID_IExecAction, TEXT("{4C3D624D-FD6B-49A3-B9B7-09CB3CD3F047}")},
    {CLSID_CTaskScheduler, TEXT("{148BD52A-A2AB-11CE-B11F-00AA00530503}")},
    {IID_ITaskScheduler, TEXT("{148BD527-A2AB-11CE-B11F-00AA00530503}")},
    {CLSID_CTask, TEXT("{148BD520-A2AB-11CE-B11F-00AA00530503}")},
    {IID_ITask, TEXT("{148BD524-A2AB-11CE-B11F-00AA00530503}")},
};

bool SameText(const WCHAR* a, const WCHAR* b) {
  while (*a && *a == *b) ++a, ++b;
  return *a == *b;
}

bool IdentitiesAreTheSame() {
  for (const NamedId& row : kIds) {
    WCHAR text[39];
    if (StringFromGUID2(row.id, text, 39) != 39 || !SameText(text, row.text)) return false;
  }
  return true;
}

HRESULT MakeLink() {
  IUnknown* link = nullptr;
  const HRESULT made = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                        reinterpret_cast<void**>(&link));
  if (link) link->Release();
  return made;
}

bool ApartmentsAreCounted() {
  const HRESULT without = MakeLink();
  const HRESULT first = CoInitialize(nullptr), second = CoInitialize(nullptr);
  const HRESULT other = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
  CoUninitialize();
  const HRESULT within = MakeLink();
  CoUninitialize();
  return without == CO_E_NOTINITIALIZED && first == S_OK && second == S_FALSE && other == RPC_E_CHANGED_MODE &&
         within == S_OK && MakeLink() == CO_E_NOTINITIALIZED;
}

// A file dialog that is never shown: what it is told it keeps, and it has no answer yet.
bool AFileDialogKeepsItsOptions(IFileOpenDialog* dialog) {
  FILEOPENDIALOGOPTIONS options = 0;
  IShellItem* item = nullptr;
  constexpr FILEOPENDIALOGOPTIONS kUsual = FOS_PATHMUSTEXIST | FOS_FILEMUSTEXIST;
  const bool usual = dialog->GetOptions(&options) == S_OK && (options & (kUsual | FOS_PICKFOLDERS)) == kUsual;
  const bool set = dialog->SetOptions(options | FOS_PICKFOLDERS) == S_OK && dialog->SetTitle(TEXT("seam")) == S_OK;
  const bool kept = dialog->GetOptions(&options) == S_OK && (options & FOS_PICKFOLDERS);
  const bool no_answer = FAILED(dialog->GetResult(&item)) && !item;
  return usual && set && kept && no_answer;
}

bool FileDialogsAreToldBeforeTheyAreShown() {
  CoInitialize(nullptr);
  IFileOpenDialog* dialog = nullptr;
  const HRESULT made = CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog,
                                        reinterpret_cast<void**>(&dialog));
  const bool right = made == S_OK && AFileDialogKeepsItsOptions(dialog);
  if (dialog) dialog->Release();
  CoUninitialize();
  return right;
}

// What the setup asks for with its folder's path: an item that gives that path back.
bool AnItemOfAPathGivesThePath() {
  using Create = HRESULT(WINAPI*)(PCWSTR, IBindCtx*, REFIID, void**);
  const FARPROC found = GetProcAddress(GetModuleHandleW(TEXT("shell32.dll")), "SHCreateItemFromParsingName");
  const auto create = reinterpret_cast<Create>(reinterpret_cast<void*>(found));
  IShellItem* item = nullptr;
  LPWSTR path = nullptr;
  CoInitialize(nullptr);
  const bool made = create && create(TEXT("C:\\"), nullptr, IID_IShellItem, reinterpret_cast<void**>(&item)) == S_OK &&
                    item->GetDisplayName(SIGDN_FILESYSPATH, &path) == S_OK && SameText(path, TEXT("C:\\"));
  CoTaskMemFree(path);
  if (item) item->Release();
  item = nullptr;
  const bool refused =
      create && FAILED(create(TEXT("C:\\no such folder"), nullptr, IID_IShellItem, reinterpret_cast<void**>(&item)));
  CoUninitialize();
  return made && refused && !item;
}

bool BstrsKnowTheirLength() {
  const BSTR text = SysAllocStringLen(TEXT("a\0b"), 3);
  const bool right = text && SysStringLen(text) == 3 && text[3] == 0 && SysStringLen(nullptr) == 0;
  SysFreeString(text);
  return right;
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_USER + 7) return static_cast<LRESULT>(wparam) + lparam;
  return DefWindowProcW(window, message, wparam, lparam);
}

constexpr WCHAR kClass[] = TEXT("SeamCheckWnd");

ATOM RegisterSeamClass() {
  WNDCLASSEXW values{};
  values.cbSize = sizeof values;
  values.lpfnWndProc = Procedure;
  values.hInstance = GetModuleHandleW(nullptr);
  values.lpszClassName = kClass;
  return RegisterClassExW(&values);
}

// A window of the class, there for a check.
class SeamWindow {
 public:
  SeamWindow()
      : atom_(RegisterSeamClass()),
        window_(CreateWindowExW(0, kClass, TEXT("seam"), WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                GetModuleHandleW(nullptr), nullptr)) {}
  ~SeamWindow() {
    DestroyWindow(window_);
    UnregisterClassW(kClass, GetModuleHandleW(nullptr));
  }
  SeamWindow(const SeamWindow&) = delete;
  SeamWindow& operator=(const SeamWindow&) = delete;
  operator HWND() const { return window_; }
  ATOM atom() const { return atom_; }

 private:
  ATOM atom_;
  HWND window_;
};

bool AClassIsRegisteredOnce() {
  const SeamWindow window;
  const ATOM again = RegisterSeamClass();
  const DWORD error = GetLastError();
  const BOOL gone = UnregisterClassW(kClass, GetModuleHandleW(nullptr));
  return window && window.atom() && !again && error == ERROR_CLASS_ALREADY_EXISTS && !gone &&
         GetLastError() == ERROR_CLASS_HAS_WINDOWS;
}

bool WindowsAreFoundWhateverTheCase() {
  const SeamWindow window;
  return FindWindowW(TEXT("seamcheckWND"), nullptr) == window && FindWindowW(kClass, TEXT("SEAM")) == window &&
         !FindWindowW(kClass, TEXT("sea")) && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

bool QuitComesAfterWhatWasPosted() {
  const SeamWindow window;
  MSG message;
  PostQuitMessage(9);
  PostMessageW(window, WM_USER + 1, 1, 2);
  const bool sent = SendMessageW(window, WM_USER + 7, 40, 2) == 42;
  const bool posted = GetMessageW(&message, nullptr, 0, 0) && message.message == WM_USER + 1 && message.lParam == 2;
  return sent && posted && !GetMessageW(&message, nullptr, 0, 0) && message.wParam == 9;
}

bool TimersSendTheirNumber() {
  const SeamWindow window;
  MSG message;
  SetTimer(window, 5, 10, nullptr);
  const bool came = GetMessageW(&message, window, WM_TIMER, WM_TIMER) > 0 && message.wParam == 5;
  return came && KillTimer(window, 5);
}

bool DeadWindowsRefuse() {
  HWND dead;
  {
    const SeamWindow window;
    dead = window;
  }
  return !IsWindow(dead) && !PostMessageW(dead, WM_USER, 0, 0) && GetLastError() == ERROR_INVALID_WINDOW_HANDLE;
}

bool OneExtraLongPastTheEndIsRefused() {
  const SeamWindow window;
  SetWindowLongPtrW(window, GWLP_USERDATA, 77);
  const bool kept = SetWindowLongPtrW(window, GWLP_USERDATA, 78) == 77;
  SetLastError(0);
  return kept && GetWindowLongPtrW(window, 0) == 0 && GetLastError() == ERROR_INVALID_INDEX;
}

constexpr SeamCheck kChecks[] = {
    {"interface and class ids are the same", IdentitiesAreTheSame},
    {"apartments are counted and keep their model", ApartmentsAreCounted},
    {"a file dialog keeps its options and has no answer before it is shown", FileDialogsAreToldBeforeTheyAreShown},
    {"a shell item of a path gives the path", AnItemOfAPathGivesThePath},
    {"BSTRs know their length", BstrsKnowTheirLength},
    {"a window class is registered once and stays while it has windows", AClassIsRegisteredOnce},
    {"FindWindowW looks at class and title without regard to case", WindowsAreFoundWhateverTheCase},
    {"WM_QUIT comes after posted messages", QuitComesAfterWhatWasPosted},
    {"timers send their number", TimersSendTheirNumber},
    {"messages to destroyed windows are refused", DeadWindowsRefuse},
    {"window longs are kept, those past the end refused", OneExtraLongPastTheEndIsRefused},
};

}  // namespace

std::span<const SeamCheck> ComChecks() { return kChecks; }
