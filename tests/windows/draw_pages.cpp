// Draws every page of a skin's windows: draw_pages SKIN.zip FOLDER. The same program on both targets, so that the
// pictures can be laid side by side.
//
// For each page of kPages there are then FOLDER\<name>.bmp (32 bits, top row first) and FOLDER\<name>.rects, a line
// "left top right bottom class name" for every visible control in document order. Ends with 1 when one cannot be drawn.
#include <windows.h>
#include <ole2.h>
#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/text.h"
#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/create_window.h"
#include "lumo/core/handler.h"
#include "lumo/core/window.h"
#include "lumo/core/window_messages.h"
#include "setupui/skin_package.h"

namespace {

using lumo::ControlBase;
using vanta::String;

struct Change {
  const WCHAR* control;
  const WCHAR* attribute;  // null: `value` is the number of a state
  const WCHAR* value;
};

struct Page {
  const char* name;
  const WCHAR* window;
  const WCHAR* page;  // null: the window has no pages
  std::vector<Change> changes;
};

const std::vector<Page>& Pages() {
  static const std::vector<Page> pages = {
      {"install",
       TEXT("SetupWnd"),
       TEXT("vb_inst"),
       {{TEXT("lb_folder"), TEXT("text"), TEXT("C:\\Program Files\\VantaPictor")}}},
      {"install_agreed",
       TEXT("SetupWnd"),
       TEXT("vb_inst"),
       {{TEXT("cb_agree"), TEXT("selected"), TEXT("1")},
        {TEXT("btn_inst"), nullptr, TEXT("1")},
        {TEXT("btn_browse"), nullptr, TEXT("2")},
        {TEXT("__close"), nullptr, TEXT("1")}}},
      {"install_disabled",
       TEXT("SetupWnd"),
       TEXT("vb_inst"),
       {{TEXT("btn_inst"), TEXT("enabled"), TEXT("0")}, {TEXT("cb_default"), TEXT("enabled"), TEXT("0")}}},
      {"install_tip",
       TEXT("SetupWnd"),
       TEXT("vb_inst"),
       {{TEXT("lb_tips"), TEXT("textid"), TEXT("STRID_PICTOR_TIPS_USER_AGREE")},
        {TEXT("lb_tips"), TEXT("visible"), TEXT("1")}}},
      {"refused",
       TEXT("SetupWnd"),
       TEXT("vb_noinst"),
       {{TEXT("lb_tips"), TEXT("textid"), TEXT("STRID_PICTOR_NO_INST")},
        {TEXT("lb_tips"), TEXT("visible"), TEXT("1")}}},
      {"installing",
       TEXT("SetupWnd"),
       TEXT("vb_insting"),
       {{TEXT("pg_insting"), TEXT("value"), TEXT("42")}, {TEXT("__close"), TEXT("enabled"), TEXT("0")}}},
      {"uninstall", TEXT("SetupWnd"), TEXT("vb_uninst"), {}},
      {"uninstalled", TEXT("SetupWnd"), TEXT("vb_uninstok"), {}},
      {"message",
       TEXT("MessageWnd"),
       nullptr,
       {{TEXT("lb_text"), TEXT("textid"), TEXT("STRID_PICTOR_INST_ERROR_WRITE_FILE")},
        {TEXT("okbtn"), TEXT("textid"), TEXT("STRID_PICTOR_KNOWN")}}},
      {"update", TEXT("UpdateWnd"), nullptr, {}},
  };
  return pages;
}

ControlBase* Find(HWND window, const WCHAR* name) {
  const LRESULT found = SendMessageW(window, lumo::kMessageFindControl, 0, reinterpret_cast<LPARAM>(name));
  return found ? reinterpret_cast<lumo::IControl*>(found)->AsControl() : nullptr;
}

bool Dress(HWND window, const Page& page) {
  if (page.page) {
    ControlBase* const shown = Find(window, page.page);
    if (!shown || !shown->Parent() || !shown->Parent()->AsTabBox()) return false;
    shown->Parent()->AsTabBox()->SelectPage(shown);
  }
  // Where the pointer happens to be must not show.
  SendMessageW(window, WM_MOUSELEAVE, 0, 0);
  if (auto* const host = reinterpret_cast<lumo::Window*>(GetWindowLongPtrW(window, GWLP_USERDATA))) {
    host->SetFocus(nullptr);
  }
  for (const Change& change : page.changes) {
    ControlBase* const control = Find(window, change.control);
    if (!control) return false;
    if (change.attribute) {
      control->SetAttribute(change.attribute, change.value);
    } else {
      control->SetState(change.value[0] - TEXT('0'));
    }
  }
  return true;
}

void Pump() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool Write(const String& path, const std::string& bytes) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool good = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  return good && written == bytes.size();
}

template <class T>
std::string Raw(const T& record) {
  return std::string(reinterpret_cast<const char*>(&record), sizeof record);
}

// What the window shows, as the contents of a BMP file.
std::string Picture(HWND window, SIZE size) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.cx;
  info.bmiHeader.biHeight = -size.cy;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HDC screen = GetDC(window);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, size.cx, size.cy, screen, 0, 0, SRCCOPY);
  const std::string pixels(static_cast<const char*>(bits), static_cast<size_t>(size.cx) * size.cy * 4);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, screen);
  const auto little = [](DWORD value) { return Raw(value); };
  const DWORD offset = 14 + sizeof info.bmiHeader;
  return "BM" + little(offset + static_cast<DWORD>(pixels.size())) + little(0) + little(offset) + Raw(info.bmiHeader) +
         pixels;
}

void Collect(ControlBase& control, std::string* lines) {
  if (!control.IsVisible()) return;
  const RECT& place = control.Position();
  char line[300];
  std::snprintf(line, sizeof line, "%d %d %d %d %s %s\n", static_cast<int>(place.left), static_cast<int>(place.top),
                static_cast<int>(place.right), static_cast<int>(place.bottom),
                vanta::ToUtf8(control.ClassName()).c_str(), vanta::ToUtf8(control.Name()).c_str());
  *lines += line;
  const lumo::BoxBase* const box = control.AsBox();
  if (!box) return;
  for (ControlBase* const child : box->Children()) Collect(*child, lines);
}

bool Draw(const Page& page, const String& folder) {
  lumo::lumowin handler;
  const String layout = String(page.window) + TEXT(".xml");
  const HWND window = lumo::CreateSkinWindow(page.window, layout.c_str(), &handler, nullptr, TEXT("page"),
                                             WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, 0, nullptr);
  if (!window) return false;
  SetWindowRgn(window, nullptr, FALSE);  // outside the round corners there would be what is behind the window
  ShowWindow(window, SW_SHOW);
  Pump();
  bool good = Dress(window, page);
  InvalidateRect(window, nullptr, FALSE);
  UpdateWindow(window);
  GdiFlush();
  RECT client = {};
  GetClientRect(window, &client);
  const String path = folder + TEXT("\\") + vanta::FromUtf8(page.name);
  std::string lines;
  Collect(*reinterpret_cast<lumo::Window*>(GetWindowLongPtrW(window, GWLP_USERDATA))->Root(), &lines);
  good = good && Write(path + TEXT(".bmp"), Picture(window, {client.right, client.bottom})) &&
         Write(path + TEXT(".rects"), lines);
  DestroyWindow(window);
  Pump();
  return good;
}

std::string ReadWhole(const WCHAR* path) {
  std::string bytes;
  const HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return bytes;
  char piece[65536];
  DWORD got = 0;
  while (ReadFile(file, piece, sizeof piece, &got, nullptr) && got) bytes.append(piece, got);
  CloseHandle(file);
  return bytes;
}

bool DrawAll(const WCHAR* skin, const WCHAR* folder) {
  const std::string archive = ReadWhole(skin);
  LoadLibraryW(TEXT("Shcore.dll"));  // DPI functions are looked up in it
  if (vanta::LoadSkinArchive(archive, "") != vanta::SkinOk) return false;
  vanta::InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true);
  bool good = true;
  for (const Page& page : Pages()) {
    const bool drawn = Draw(page, folder);
    std::printf("%s %s\n", drawn ? "ok" : "FAIL", page.name);
    good = good && drawn;
  }
  vanta::ShutdownSkin();
  return good;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
  OleInitialize(nullptr);
  const bool good = count == 3 && DrawAll(words[1], words[2]);
  OleUninitialize();
  LocalFree(words);
  return good ? 0 : 1;
}
