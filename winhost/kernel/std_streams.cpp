#include <windows.h>

#include <errno.h>
#include <unistd.h>

#include <array>

#include "winhost/kernel/byte_sink.h"

namespace winhost {
namespace {

class StdStream final : public ByteSink {
 public:
  explicit StdStream(int descriptor) : descriptor_(descriptor) {}
  bool Write(const void* data, DWORD bytes, DWORD* written) override {
    *written = 0;
    while (*written < bytes) {
      const ssize_t step = write(descriptor_, static_cast<const char*>(data) + *written, bytes - *written);
      if (step < 0 && errno == EINTR) continue;
      if (step < 0) {
        SetLastError(ERROR_WRITE_FAULT);
        return false;
      }
      *written += static_cast<DWORD>(step);
    }
    return true;
  }

 private:
  const int descriptor_;
};

HANDLE StreamOf(int descriptor) { return MakeHandle(std::make_shared<StdStream>(descriptor)); }

}  // namespace
}  // namespace winhost

HANDLE GetStdHandle(DWORD which) {
  static const std::array<HANDLE, 3> streams = {winhost::StreamOf(0), winhost::StreamOf(1), winhost::StreamOf(2)};
  const DWORD index = STD_INPUT_HANDLE - which;  // the numbers go down from standard input's
  if (index < streams.size()) return streams[index];
  SetLastError(ERROR_INVALID_HANDLE);
  return INVALID_HANDLE_VALUE;
}
