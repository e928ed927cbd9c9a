// Another program on the machine, for as long as its standard input stays open: hold [SHARE PATH | load PATH | window]
//
//   SHARE PATH   keeps the file open for reading; SHARE names what others may do: any of r, w, d, or "-" for nothing
//   load PATH    has the library loaded
//   window       has a window of the setup's class
//
// Says "ready" on standard output once it does so, or "failed" and the error number. With no words it only
// runs. Ends with 7, or with 1 when it could not do so.
#include <windows.h>
#include <shellapi.h>

#include <cstdio>
#include <string>
#include <vector>

#include "base/unique.h"

namespace {

DWORD ShareMode(const std::u16string& text) {
  DWORD mode = 0;
  if (text.find(u'r') != text.npos) mode |= FILE_SHARE_READ;
  if (text.find(u'w') != text.npos) mode |= FILE_SHARE_WRITE;
  if (text.find(u'd') != text.npos) mode |= FILE_SHARE_DELETE;
  return mode;
}

bool OpenWindow() {
  WNDCLASSEXW window_class = {};
  window_class.cbSize = sizeof window_class;
  window_class.lpfnWndProc = DefWindowProcW;
  window_class.lpszClassName = TEXT("VantaPictorSetupWndClass");
  RegisterClassExW(&window_class);
  return CreateWindowExW(0, window_class.lpszClassName, TEXT(""), WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                         nullptr);
}

// Messages of other threads are answered meanwhile.
void RunUntilInputEnds() {
  const auto reader = [](void*) -> DWORD {
    while (std::getchar() != EOF) {
    }
    return 0;
  };
  const vanta::UniqueHandle end(CreateThread(nullptr, 0, reader, nullptr, 0, nullptr));
  const HANDLE handle = end.Get();
  MSG message = {};
  while (MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
}

constexpr int kEndedByItself = 7;  // tells it from a program that was ended with 0

struct Held {
  vanta::UniqueFile file;
  vanta::UniqueModule library;
};

bool Hold(const std::vector<std::u16string>& words, Held& held) {
  if (words.size() < 2) return true;
  if (words.size() == 2) return OpenWindow();
  if (words[1] == u"load") {
    held.library.Reset(LoadLibraryExW(words[2].c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    return static_cast<bool>(held.library);
  }
  held.file.Reset(CreateFileW(words[2].c_str(), GENERIC_READ, ShareMode(words[1]), nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  return static_cast<bool>(held.file);
}

std::vector<std::u16string> Words() {
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::u16string> list(words, words + count);
  LocalFree(words);
  return list;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  Held held;
  const bool good = Hold(Words(), held);
  if (good) {
    std::puts("ready");
  } else {
    std::printf("failed %u\n", static_cast<unsigned>(GetLastError()));
  }
  std::fflush(stdout);
  RunUntilInputEnds();
  return good ? kEndedByItself : 1;
}
