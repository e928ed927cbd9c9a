// The folder picker: a window of class "#32770" with the folders of the machine, drives at the top.
//
// By hand: a click chooses a folder, a double click or the right-arrow key opens it, the arrow at the top (Alt+Up, or
// Backspace in the list) leads up; a path may be typed. Return and the main button take what is in the line, Escape,
// Alt+F4, the cross and the other button take nothing. What is typed and is no folder keeps the dialog open, with a
// line that says so.
// By program: WM_SETTEXT to its child kFolderLine (GetDlgItem), then WM_COMMAND with IDOK or IDCANCEL to itself, sent
// or posted, or BM_CLICK to the buttons, which are its children IDOK and IDCANCEL. A refused path stands in the text of
// its child kFolderNotice, which is otherwise empty. From another process, where texts do not travel in messages and
// children are not known by number: typed keys, or WM_CHAR posted to its child of class "Edit".
#pragma once

#include <windows.h>

#include <string>

namespace winhost {

constexpr int kFolderLine = 1152;    // the path, of class "Edit"; as in the system's own dialog
constexpr int kFolderNotice = 1091;  // why what was typed will not do
constexpr int kFolderRows = 1120;
constexpr int kFolderUp = 1088;

struct FolderQuestion {
  HWND owner = nullptr;
  std::u16string title;
  std::u16string instruction;  // a line above the folders; empty for none
  std::u16string ok;           // the main button's text
  std::u16string start;        // the folder that it opens in; "" or one that is not there: the computer
};

// Asks, modally over the owner: runs the thread's message loop and returns with the answer. S_OK and the folder;
// HRESULT_FROM_WIN32(ERROR_CANCELLED) for none, also when the owner ends or WM_QUIT comes, which is posted again; or
// why no dialog could be made.
HRESULT AskForFolder(const FolderQuestion& question, std::u16string* folder);

}  // namespace winhost
