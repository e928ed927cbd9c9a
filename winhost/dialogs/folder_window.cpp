// What the folder picker does; how it looks is in folder_window_look.cpp.
#include "winhost/dialogs/folder_window.h"

#include <utility>

#include "winhost/dialogs/modal_loop.h"
#include "winhost/window/dpi.h"

namespace winhost {

FolderWindow::~FolderWindow() {
  ended_ = true;
  if (window()) DestroyWindow(window());
}

bool FolderWindow::Make() {
  const Class kClass{u"#32770", CS_DBLCLKS | CS_SAVEBITS, IDC_ARROW};
  constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  look_.Follow(SystemDpi());
  if (!Create(kClass, WS_EX_DLGMODALFRAME, kStyle, question_.title.c_str(), {}, question_.owner, 0)) return false;
  if (!MakeParts()) return false;
  Center();
  std::u16string start;
  if (FindFolder(question_.start, {}, &start) != FolderSearch::Found) start.clear();
  GoTo(start, {});
  return true;
}

bool FolderWindow::MakeParts() {
  return line_.Make(window(), kFolderLine) && rows_.Make(window(), kFolderRows) &&
         ok_.Make(window(), IDOK, question_.ok) && cancel_.Make(window(), IDCANCEL, u"取消") &&
         up_.Make(window(), kFolderUp, u"") && notice_.Make(window(), kFolderNotice);
}

void FolderWindow::Present() {
  ShowWindow(window(), SW_SHOW);
  SetFocus(line_.window());
  UpdateWindow(window());
}

LRESULT FolderWindow::Handle(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      Command(LOWORD(wparam), HIWORD(wparam));
      return 0;
    case WM_CLOSE:
      End();
      return 0;
    case WM_DESTROY:
      End();
      return 0;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return TRUE;
    case WM_SIZE:
      LayOut();
      return 0;
    case WM_DPICHANGED:
      Rescale(HIWORD(wparam), reinterpret_cast<const RECT*>(lparam));
      return 0;
    case WM_NCHITTEST:
      return HitTest(PointOf(lparam));
    case WM_NCLBUTTONDOWN:
      cross_down_ = wparam == HTCLOSE;
      return cross_down_ ? 0 : Default(message, wparam, lparam);
    case WM_NCLBUTTONUP:
      if (std::exchange(cross_down_, false) && wparam == HTCLOSE) SendMessageW(window(), WM_SYSCOMMAND, SC_CLOSE, 0);
      return 0;
    case WM_NCMOUSEMOVE:
      HoverCross(wparam == HTCLOSE);
      return Default(message, wparam, lparam);
    case WM_NCMOUSELEAVE:
      HoverCross(false);
      return 0;
    case WM_MOUSEWHEEL:
      return SendMessageW(rows_.window(), message, wparam, lparam);
    case WM_ACTIVATE:
      Activated(LOWORD(wparam) != WA_INACTIVE);
      return 0;
    default:
      return Default(message, wparam, lparam);
  }
}

// The part that had the keys gets them back.
void FolderWindow::Activated(bool active) {
  if (!active) {
    focus_ = IsChild(window(), GetFocus()) ? GetFocus() : nullptr;
  } else {
    SetFocus(focus_ && IsWindowEnabled(focus_) ? focus_ : line_.window());
  }
}

void FolderWindow::Command(int id, int code) {
  switch (id) {
    case IDOK:
      return Accept();
    case IDCANCEL:
      return End();
    case kFolderUp:
      return GoUp();
    case kFolderLine:
      if (code == EN_CHANGE) LineChanged();
      return;
    case kFolderRows:
      if (code == LBN_DBLCLK) Open();
      if (code == LBN_SELCHANGE && rows_.Chosen()) {
        line_.Show(rows_.Chosen()->path);
        LineChanged();
      }
      return;
    default:
      return;
  }
}

// An empty line means the folder that is shown.
void FolderWindow::Accept() {
  std::u16string folder;
  const std::u16string& typed = line_.text().empty() ? where_ : line_.text();
  switch (typed.empty() ? FolderSearch::Missing : FindFolder(typed, where_, &folder)) {
    case FolderSearch::Found:
      answer_ = folder;
      End();
      return;
    case FolderSearch::NoFolder:
      notice_.Say(u"这不是文件夹：" + typed);
      break;
    case FolderSearch::Missing:
      notice_.Say(typed.empty() ? u"请选择一个文件夹。" : u"找不到此文件夹，请检查路径：" + typed);
      break;
  }
  MessageBeep(MB_OK);
  SetFocus(line_.window());
  SendMessageW(line_.window(), EM_SETSEL, 0, -1);
}

void FolderWindow::End() {
  if (ended_) return;
  ended_ = true;
  TurnModalLoop();
}

void FolderWindow::GoTo(const std::u16string& folder, const std::u16string& chosen) {
  where_ = folder;
  rows_.Show(PlacesIn(folder), chosen);
  line_.Show(folder);
  LineChanged();
  EnableWindow(up_.window(), !folder.empty());
  InvalidateRect(window(), nullptr, FALSE);
}

// The folder that one comes from is the chosen one, so that its neighbours are at hand.
void FolderWindow::GoUp() {
  if (!where_.empty()) GoTo(PlaceAbove(where_), std::u16string(where_));
}

void FolderWindow::Open() {
  if (rows_.Chosen()) GoTo(std::u16string(rows_.Chosen()->path), {});
}

void FolderWindow::LineChanged() {
  notice_.Say(u"");
  EnableWindow(ok_.window(), !line_.text().empty() || !where_.empty());
}

bool FolderWindow::TakeKey(const MSG& message) {
  if (!window() || (message.hwnd != window() && !IsChild(window(), message.hwnd))) return false;
  if (message.message == WM_SYSKEYDOWN && message.wParam == VK_UP) {
    GoUp();
    return true;
  }
  if (message.message != WM_KEYDOWN) return false;
  switch (message.wParam) {
    case VK_RETURN:
      return PressReturn();
    case VK_ESCAPE:
      SendMessageW(window(), WM_COMMAND, IDCANCEL, 0);
      return true;
    case VK_TAB:
      FocusNext(GetKeyState(VK_SHIFT) < 0);
      return true;
    case VK_BACK:
      if (message.hwnd != rows_.window()) return false;
      GoUp();
      return true;
    default:
      return false;
  }
}

// On a button it presses that one.
bool FolderWindow::PressReturn() {
  const HWND focus = GetFocus();
  const bool other = focus == cancel_.window() || focus == up_.window();
  SendMessageW(other ? focus : ok_.window(), BM_CLICK, 0, 0);
  return true;
}

void FolderWindow::FocusNext(bool backwards) {
  const HWND order[] = {line_.window(), rows_.window(), ok_.window(), cancel_.window(), up_.window()};
  constexpr int kParts = 5;
  int at = 0;
  for (int i = 0; i < kParts; ++i) {
    if (order[i] == GetFocus()) at = i;
  }
  for (int i = 1; i <= kParts; ++i) {
    const HWND next = order[(at + (backwards ? kParts - i : i)) % kParts];
    if (!IsWindowEnabled(next)) continue;
    SetFocus(next);
    return;
  }
}

}  // namespace winhost
