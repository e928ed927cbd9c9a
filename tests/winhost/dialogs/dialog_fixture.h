// A machine with an owner window, and a user who does one thing each time the dialog has nothing left to do.
#pragma once

#include <shlobj.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/machine_fixture.h"
#include "winhost/dialogs/folder_dialog.h"
#include "winhost/window/screen.h"

namespace testing_support {

class OnMachineWithDialogs : public OnMachine {
 protected:
  static constexpr WCHAR kOwner[] = u"OwnerWnd";

  void SetUp() override { CoInitialize(nullptr); }
  void TearDown() override {
    if (owner_) DestroyWindow(owner_);
    CoUninitialize();
  }

  // Two drives; D: has Music, Pictures with 2023 and 2024 in it, a hidden folder and a file.
  void StartWithFolders(const std::string& version = "10") {
    Start(R"({"version": ")" + version + R"(", "drives": {"D": {}}})");
    for (const char* file : {"D:\\Music\\x", "D:\\Pictures\\2023\\x", "D:\\Pictures\\2024\\x", "D:\\Secret\\x"})
      Put(file, "");
    Put("D:\\notes.txt", "");
    SetFileAttributesW(u"D:\\Secret", FILE_ATTRIBUTE_HIDDEN);
    MakeOwner();
  }
  void MakeOwner() {
    WNDCLASSEXW values{};
    values.cbSize = sizeof values;
    values.lpfnWndProc = DefWindowProcW;
    values.lpszClassName = kOwner;
    RegisterClassExW(&values);
    owner_ = CreateWindowExW(0, kOwner, u"owner", WS_POPUP | WS_VISIBLE, 400, 200, 600, 400, nullptr, nullptr, nullptr,
                             nullptr);
  }

  // The steps are done one a timer, which comes when no message and no input is left.
  void User(std::vector<std::function<void()>> steps) {
    Steps() = std::move(steps);
    SetTimer(nullptr, 0, 10, NextStep);
  }
  bool UserIsDone() { return Steps().empty(); }

  static HWND Dialog() { return FindWindowW(u"#32770", nullptr); }
  static HWND Part(int id) { return GetDlgItem(Dialog(), id); }
  static std::u16string TextOf(HWND window) {
    WCHAR text[300] = {};
    GetWindowTextW(window, text, 300);
    return text;
  }
  // The middle of a part, moved by (dx, dy), as a point of the screen.
  static POINT At(int id, int dx = 0, int dy = 0) {
    RECT frame{};
    GetWindowRect(Part(id), &frame);
    return {(frame.left + frame.right) / 2 + dx, (frame.top + frame.bottom) / 2 + dy};
  }
  static void Click(int id) {
    const POINT point = At(id);
    winhost::screen::Click(point.x, point.y);
  }
  // The n-th row of the folders, from 0.
  static void ClickRow(int row, int times = 1) {
    RECT frame{};
    GetWindowRect(Part(winhost::kFolderRows), &frame);
    for (int i = 0; i < times; ++i) winhost::screen::Click(frame.left + 60, frame.top + 12 + 24 * row);
  }
  static void SetLine(const WCHAR* text) {
    SendMessageW(Part(winhost::kFolderLine), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
  }
  static void Press(int key) { winhost::screen::Key(key); }

  HWND owner_ = nullptr;

 private:
  static std::vector<std::function<void()>>& Steps() {
    static std::vector<std::function<void()>> steps;
    return steps;
  }
  // A step that ends the dialog may run in another loop before it returns, so it is taken off first.
  static void CALLBACK NextStep(HWND, UINT, UINT_PTR timer, DWORD) {
    if (Steps().empty()) {
      KillTimer(nullptr, timer);
      return;
    }
    const auto step = Steps().front();
    Steps().erase(Steps().begin());
    step();
  }
};

}  // namespace testing_support
