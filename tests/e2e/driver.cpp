// The setup with a window that only listens: a window of the setup's class, an installation started by runInstaller as
// the real window starts it, and every status and percentage that arrives, as a line of JSON on standard output. Packed
// like the setup, so it carries the same payload and skin, and its command line is the setup's.
//
// The plain word close-at=N, which the setup passes over, closes the window when the percentage N has arrived and some
// call waits for the file C:\closed; that file is made once the installation has been told to stop, unless there is
// the word stay too.
//
// Ends with 0 on status 1, with 1 on status 2 and when the installation could not be started; the last line says what
// runInstaller answered.
#include <windows.h>
#include <ole2.h>

#include <cstdio>
#include <string>

#include "app/command_line.h"
#include "app/install_state.h"
#include "app/option_store.h"
#include "app/setup_driver.h"
#include "install/setup_messages.h"
#include "report/stats/http_log.h"
#include "setupui/skin_package.h"

namespace {

using vanta::SetupStatus;

int exit_code = 1;
int close_at = 100;  // a percentage that never arrives
bool stay = false;

void OnStatus(HWND window, LPARAM status) {
  std::printf("{\"status\": %d}\n", static_cast<int>(status));
  const bool finished = status == static_cast<LPARAM>(SetupStatus::Finished);
  if (finished) exit_code = 0;
  if (finished || status == static_cast<LPARAM>(SetupStatus::Failed)) DestroyWindow(window);
}

void OnProgress(HWND window, LPARAM percent) {
  std::printf("{\"progress\": %d}\n", static_cast<int>(percent));
  if (percent != close_at) return;
  while (GetFileAttributesW(TEXT("C:\\closed.wanted")) == INVALID_FILE_ATTRIBUTES) Sleep(1);
  DestroyWindow(window);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == vanta::WM_SETUP_STATUS) {
    OnStatus(window, lparam);
  } else if (message == vanta::WM_SETUP_PROGRESS) {
    OnProgress(window, lparam);
  } else if (message == WM_DESTROY) {
    PostQuitMessage(0);
  } else {
    return DefWindowProcW(window, message, wparam, lparam);
  }
  return 0;
}

HWND OpenWindow() {
  WNDCLASSEXW window_class = {};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = Procedure;
  window_class.lpszClassName = vanta::kSetupWindowClass;
  RegisterClassExW(&window_class);
  return CreateWindowExW(0, vanta::kSetupWindowClass, TEXT(""), WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                         nullptr);
}

void Pump(HWND window, bool started) {
  // What was posted before a refusal is still to be read.
  if (!started) PostMessageW(window, WM_CLOSE, 0, 0);
  MSG message = {};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

void ReadOwnWords() {
  const std::u16string line = GetCommandLineW();
  const std::u16string word = TEXT("close-at=");
  if (const size_t at = line.find(word); at != line.npos)
    close_at = std::stoi(std::string(line.begin() + static_cast<long>(at + word.size()), line.end()));
  stay = line.find(TEXT(" stay")) != line.npos;
}

DWORD WINAPI LetGoOnceStopped(void*) {
  while (!vanta::GetInstallState().stop_requested) Sleep(1);
  CloseHandle(CreateFileW(TEXT("C:\\closed"), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  ReadOwnWords();
  OleInitialize(nullptr);
  vanta::ParseCommandLine(GetCommandLineW(), vanta::kOptionTable, vanta::GetOptionStore());
  vanta::LoadSkinResource(vanta::kSkinResource, vanta::kSkinResourceType, "");
  vanta::InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true);
  vanta::CVantaHttpLog::Instance().SetUseWinInet(true);
  const HWND window = OpenWindow();
  const bool started = vanta::runInstaller();
  Pump(window, started);
  if (close_at < 100 && !stay) CloseHandle(CreateThread(nullptr, 0, LetGoOnceStopped, nullptr, 0, nullptr));
  vanta::EndInstallation();
  vanta::ShutdownSkin();
  OleUninitialize();
  vanta::CVantaHttpLog::Instance().WaitBeforeExit();
  std::printf("{\"started\": %s}\n", started ? "true" : "false");
  return exit_code;
}
