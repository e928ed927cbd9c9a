// A live window over a layout given as text, on a machine whose screen takes input and shows what was painted.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>

#include "lumo/controls/box_base.h"
#include "lumo/controls/control_interfaces.h"
#include "lumo/core/builder.h"
#include "lumo/core/create_window.h"
#include "lumo/core/handler.h"
#include "lumo/core/library.h"
#include "lumo/core/resource_source.h"
#include "lumo/core/window.h"
#include "lumo/core/window_messages.h"
#include "tests/support/machine_fixture.h"
#include "winhost/window/screen.h"

namespace lumo {

// Texts and files of a skin, as a test gives them.
class TestSkin final : public ResourceSource {
 public:
  bool IsPackaged() const override { return true; }
  const String& ThemeFolder() const override { return folder_; }
  bool Read(StringView path, std::vector<BYTE>* bytes) const override {
    const auto found = files.find(String(path));
    if (found == files.end()) return false;
    bytes->assign(found->second.begin(), found->second.end());
    return true;
  }
  bool Exists(StringView path) const override { return files.contains(String(path)); }
  String GetString(StringView key) const override {
    const auto found = texts.find(String(key));
    return found == texts.end() ? String() : found->second;
  }

  std::map<String, std::string> files;
  std::map<String, String> texts;

 private:
  String folder_;
};

// Writes down every event that reaches the handler, "name type", and runs what a test hooks to one.
class Recorder : public lumowin {
 public:
  void OnNotify(_Msg& record) override {
    const std::string text = vanta::ToUtf8(record.senderName) + " " + std::to_string(record.type);
    events.push_back(text);
    if (const auto hook = hooks.find(text); hook != hooks.end()) {
      const auto run = hook->second;
      run(record);
    }
  }
  LRESULT ProcessMessage(UINT message, WPARAM wParam, LPARAM, bool*) override {
    if (message == WM_CLOSE) closed_with = static_cast<int>(wParam);
    return 0;
  }
  void OnCreate(HWND) override { ++created; }
  void OnFinalMessage(HWND) override { ++ended; }

  int Count(const std::string& event) const {
    return static_cast<int>(std::count(events.begin(), events.end(), event));
  }

  std::vector<std::string> events;
  std::map<std::string, std::function<void(_Msg&)>> hooks;
  int created = 0, ended = 0, closed_with = -1;
};

class WindowTest : public testing_support::OnMachine {
 protected:
  void SetUp() override { Begin("{}"); }
  void TearDown() override {
    if (window_ && IsWindow(window_)) DestroyWindow(window_);
    Pump();
    if (running_) ShutdownLibrary();
  }

  void Begin(std::string_view facts) {
    if (running_) ShutdownLibrary();
    Start(facts);
    LoadLibraryW(TEXT("Shcore.dll"));  // its DPI functions are looked up, not loaded
    InitLibrary(skin_, true, nullptr);
    running_ = true;
  }

  // `layout` is the whole markup. The window is at (100, 100).
  HWND Open(const std::string& layout, DWORD ex_style = 0) {
    window_ = CreateSkinWindow(TEXT(""), vanta::FromUtf8(layout).c_str(), &recorder_, nullptr, TEXT("test"),
                               WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_MINIMIZEBOX, ex_style, nullptr);
    if (!window_) return nullptr;
    SetWindowPos(window_, nullptr, 100, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ShowWindow(window_, SW_SHOW);
    Pump();
    recorder_.events.clear();
    return window_;
  }

  static void Pump() {
    MSG message = {};
    for (int i = 0; i < 10'000 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }

  Window& Win() { return *reinterpret_cast<Window*>(GetWindowLongPtrW(window_, GWLP_USERDATA)); }
  ControlBase* Named(const WCHAR* name) { return Win().FindControl(name); }
  SIZE ClientSize() {
    RECT client = {};
    GetClientRect(window_, &client);
    return {client.right, client.bottom};
  }

  // Client coordinates.
  void Move(int x, int y) {
    winhost::screen::MovePointer(100 + x, 100 + y);
    Pump();
  }
  void Press(int x, int y) {
    Move(x, y);
    winhost::screen::Press();
    Pump();
  }
  void Release(int x, int y) {
    Move(x, y);
    winhost::screen::Release();
    Pump();
  }
  void Click(int x, int y) {
    Press(x, y);
    Release(x, y);
  }
  void Key(int key) {
    winhost::screen::Key(key);
    Pump();
  }

  TestSkin skin_;
  Recorder recorder_;
  HWND window_ = nullptr;

 private:
  bool running_ = false;
};

}  // namespace lumo
