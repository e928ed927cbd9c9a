// Shell links, and the browser and view of the desktop.
//
// Promises: IPersistFile::Save writes a real .lnk file (identifier list, link info, strings) that other systems read,
// and replaces one that is there; Load reads what any shell wrote. Files go through the machine's own file calls, so
// shares, full disks and planned faults hold.
// Simplifies: a target is a path on a drive; identifier lists are not handed out; nothing is resolved or searched.
// To fail: CoCreateInstance of "CLSID_ShellLink"; the fault plan: "IShellLinkW::SetPath" (and its fellows, subject:
// the argument), "IPersistFile::Save", "IPersistFile::Load" (subject: the file),
// "IShellBrowser::QueryActiveShellView", "IShellView::GetItemObject".
#pragma once

#include <fileapi.h>
#include <ole2.h>
#include <shlguid.h>

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
