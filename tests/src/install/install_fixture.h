// Tests of the install engine: an install directory, a window of the setup's class that collects what is posted to it,
// and a payload archive in memory.
#pragma once

#include "app/install_state.h"
#include "install/directories.h"
#include "install/zip/zip_reader.h"
#include "tests/src/install/zip/zip_builder.h"
#include "tests/support/machine_fixture.h"

namespace install_testing {

class InstallTest : public testing_support::OnMachine {
 protected:
  ~InstallTest() override {
    if (window_) DestroyWindow(window_);
    vanta::GetInstallState().target_window = nullptr;
    if (vanta::GetInstallState().payload) vanta::Close(vanta::GetInstallState().payload);
    vanta::GetInstallState().payload = nullptr;
  }

  void InstallTo(const WCHAR* directory) { vanta::SetInstallDirectory(directory); }

  // A window of the setup's class on this thread, which becomes the target of messages.
  HWND OpenWindow() {
    WNDCLASSEXW window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = DefWindowProcW;
    window_class.lpszClassName = vanta::kSetupWindowClass;
    RegisterClassExW(&window_class);
    window_ = CreateWindowExW(0, vanta::kSetupWindowClass, TEXT(""), WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                              nullptr);
    vanta::GetInstallState().target_window = window_;
    return window_;
  }

  // What has been posted to the window, as "s0 p5 …": statuses and percentages.
  std::string Posted() {
    std::string text;
    MSG message = {};
    while (PeekMessageW(&message, window_, WM_USER + 1000, WM_USER + 1001, PM_REMOVE)) {
      text += (text.empty() ? "" : " ") + std::string(message.message == WM_USER + 1000 ? "p" : "s");
      text += std::to_string(message.lParam);
    }
    return text;
  }

  void OpenPayload() {
    archive_ = zip_.Build();
    vanta::GetInstallState().payload = vanta::OpenFromMemory(archive_.data(), archive_.size(), nullptr);
    ASSERT_NE(vanta::GetInstallState().payload, nullptr);
  }

  zip_testing::ZipBuilder zip_;
  HWND window_ = nullptr;

 private:
  std::string archive_;
};

}  // namespace install_testing
