// Shell links, shell items, the file dialog, and the browser and view of the desktop.
//
// Promises: IPersistFile::Save writes a real .lnk file (identifier list, link info, strings) that other systems read,
// and replaces one that is there; Load reads what any shell wrote. Files go through the machine's own file calls, so
// shares, full disks and planned faults hold. The file dialog (Vista and later) is a real window, of class "#32770":
// winhost/dialogs/folder_dialog.h says how to use it, and how a program answers it.
// Simplifies: a target is a path on a drive; identifier lists are not handed out; nothing is resolved or searched. A
// shell item is a path of the file system. The file dialog picks folders only: without FOS_PICKFOLDERS showing it is
// E_NOTIMPL; it remembers nothing from one time to the next, and does not draw itself in a program without the drawing
// library, where its class is not registered.
// To fail: CoCreateInstance of "CLSID_ShellLink"; the fault plan: "IShellLinkW::SetPath" (and its fellows, subject:
// the argument), "IPersistFile::Save", "IPersistFile::Load" (subject: the file),
// "IShellBrowser::QueryActiveShellView", "IShellView::GetItemObject"; CoCreateInstance of "CLSID_FileOpenDialog";
// "SHCreateItemFromParsingName" (subject: the path), "IShellItem::GetDisplayName", "IModalWindow::Show" (instead of a
// dialog), "IFileDialog::SetOptions", "IFileDialog::GetOptions", "IFileDialog::SetDefaultFolder",
// "IFileDialog::SetTitle", "IFileDialog::GetResult"; CreateWindowExW of "#32770" makes Show fail with that error.
#pragma once

#include <fileapi.h>
#include <ole2.h>
#include <shlguid.h>
#include <shtypes.h>

struct WIN32_FIND_DATAW;

inline constexpr CLSID CLSID_ShellLink = {0x00021401, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

#define SLGP_SHORTPATH 0x1
#define SLGP_UNCPRIORITY 0x2
#define SLGP_RAWPATH 0x4
#define INFOTIPSIZE 1024

struct IShellLinkW : IUnknown {
  // S_FALSE without a path; `found` may be null and is otherwise zeroed.
  virtual HRESULT STDMETHODCALLTYPE GetPath(LPWSTR path, int capacity, WIN32_FIND_DATAW* found, DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDescription(LPWSTR text, int capacity) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDescription(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetWorkingDirectory(LPWSTR folder, int capacity) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetWorkingDirectory(LPCWSTR folder) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetArguments(LPWSTR text, int capacity) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetArguments(LPCWSTR text) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetHotkey(WORD* key) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHotkey(WORD key) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetShowCmd(int* show) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetShowCmd(int show) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIconLocation(LPWSTR file, int capacity, int* index) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetIconLocation(LPCWSTR file, int index) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetRelativePath(LPCWSTR path, DWORD reserved) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetPath(LPCWSTR path) = 0;
};
inline constexpr IID IID_IShellLinkW = {0x000214f9, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct IOleWindow : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) = 0;
};
inline constexpr IID IID_IOleWindow = {0x00000114, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

enum _SVGIO : unsigned {
  SVGIO_BACKGROUND = 0x0,
  SVGIO_SELECTION = 0x1,
  SVGIO_ALLVIEW = 0x2,
};

struct IShellView : IOleWindow {
  virtual HRESULT STDMETHODCALLTYPE GetItemObject(UINT item, REFIID iid, void** object) = 0;
};
inline constexpr IID IID_IShellView = {0x000214e3, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct IShellBrowser : IOleWindow {
  virtual HRESULT STDMETHODCALLTYPE QueryActiveShellView(IShellView** view) = 0;
};
inline constexpr IID IID_IShellBrowser = {0x000214e2, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct IBindCtx;

enum SIGDN : int {
  SIGDN_NORMALDISPLAY = 0,
  SIGDN_DESKTOPABSOLUTEPARSING = static_cast<int>(0x80028000),
  SIGDN_FILESYSPATH = static_cast<int>(0x80058000),
};

struct IShellItem : IUnknown {
  // The caller frees the name with CoTaskMemFree. Names other than the three above are E_INVALIDARG.
  virtual HRESULT STDMETHODCALLTYPE GetDisplayName(SIGDN kind, LPWSTR* name) = 0;
};
inline constexpr IID IID_IShellItem = {0x43826d1e, 0xe718, 0x42ee, {0xbc, 0x55, 0xa1, 0xe2, 0x61, 0xc3, 0x7b, 0xfe}};

// Vista and later have it: products look it up at run time. The path must be full and exist.
HRESULT WINAPI SHCreateItemFromParsingName(PCWSTR path, IBindCtx* context, REFIID iid, void** item);

using FILEOPENDIALOGOPTIONS = DWORD;
enum _FILEOPENDIALOGOPTIONS : unsigned {
  FOS_NOCHANGEDIR = 0x8,
  FOS_PICKFOLDERS = 0x20,
  FOS_FORCEFILESYSTEM = 0x40,
  FOS_PATHMUSTEXIST = 0x800,
  FOS_FILEMUSTEXIST = 0x1000,
};

struct IModalWindow : IUnknown {
  // Returns when the user has answered; HRESULT_FROM_WIN32(ERROR_CANCELLED) when with no.
  virtual HRESULT STDMETHODCALLTYPE Show(HWND owner) = 0;
};
inline constexpr IID IID_IModalWindow = {0xb4db1657, 0x70d7, 0x485e, {0x8e, 0x3e, 0x6f, 0xcb, 0x5a, 0x5c, 0x18, 0x02}};

struct IFileDialog : IModalWindow {
  virtual HRESULT STDMETHODCALLTYPE SetOptions(FILEOPENDIALOGOPTIONS options) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetOptions(FILEOPENDIALOGOPTIONS* options) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDefaultFolder(IShellItem* folder) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetTitle(LPCWSTR title) = 0;
  // E_UNEXPECTED unless the last Show ended with an answer.
  virtual HRESULT STDMETHODCALLTYPE GetResult(IShellItem** item) = 0;
};
inline constexpr IID IID_IFileDialog = {0x42f85136, 0xdb7e, 0x439c, {0x85, 0xf1, 0xe4, 0x07, 0x5d, 0x13, 0x5f, 0xc8}};

struct IFileOpenDialog : IFileDialog {};
inline constexpr IID IID_IFileOpenDialog = {
    0xd57c7288, 0xd4ad, 0x4768, {0xbe, 0x02, 0x9d, 0x96, 0x95, 0x32, 0xd9, 0x60}};
inline constexpr CLSID CLSID_FileOpenDialog = {
    0xdc1c5a9c, 0xe88a, 0x4dde, {0xa5, 0xa1, 0x60, 0xf8, 0x2a, 0x20, 0xae, 0xf7}};
