// Verbs for tests on files: open, write, and the last error as a result.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "tests/support/machine_fixture.h"

namespace testing_support {

class FilesTest : public OnMachine {
 protected:
  static constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

  // The error of an open that is expected to fail; 0, and the handle closed again, when it did not.
  static DWORD OpenError(const std::u16string& path, DWORD access, DWORD share, DWORD disposition,
                         DWORD attributes = 0) {
    SetLastError(0xDEAD);
    const HANDLE file = CreateFileW(path.c_str(), access, share, nullptr, disposition, attributes, nullptr);
    if (file == INVALID_HANDLE_VALUE) return GetLastError();
    CloseHandle(file);
    return 0;
  }
  static HANDLE Open(const std::u16string& path, DWORD access = GENERIC_READ, DWORD share = kAll,
                     DWORD disposition = OPEN_EXISTING, DWORD attributes = 0) {
    const HANDLE file = CreateFileW(path.c_str(), access, share, nullptr, disposition, attributes, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << winhost::Narrow(path) << ": " << GetLastError();
    return file;
  }
  static DWORD Write(HANDLE file, std::string_view bytes) {
    DWORD written = 0;
    return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) ? 0 : GetLastError();
  }
  static std::string Read(HANDLE file, DWORD bytes = 4096) {
    std::string text(bytes, '\0');
    DWORD got = 0;
    if (!ReadFile(file, text.data(), bytes, &got, nullptr)) return "<error>";
    text.resize(got);
    return text;
  }
  static DWORD Attributes(const std::u16string& path) { return GetFileAttributesW(path.c_str()); }
  // 0, or the error of a call that answered FALSE.
  static DWORD ErrorOf(BOOL result) { return result ? 0 : GetLastError(); }
};

}  // namespace testing_support
