#include "report/identity/device.h"

#include <cstring>
#include <vector>

#include "base/lock.h"

namespace vanta {
namespace {

class GivenUp {
 public:
  void Add(const String& path) {
    const Guard guard(lock_);
    paths_.push_back(path);
  }
  bool Has(const String& path) {
    const Guard guard(lock_);
    for (const String& known : paths_) {
      if (known == path) return true;
    }
    return false;
  }

 private:
  CriticalSection lock_;
  std::vector<String> paths_;
};
constinit Lazy<GivenUp> g_given_up;

bool IsTimeOut(DWORD error) { return error == ERROR_SEM_TIMEOUT || error == ERROR_TIMEOUT; }

void NoteFailure(const String& path) {
  if (IsTimeOut(GetLastError())) g_given_up.Get().Add(path);
}

}  // namespace

Device::Device(const String& path, DWORD access, DWORD share) : path_(path) {
  if (g_given_up.Get().Has(path)) return;
  handle_.Reset(CreateFileW(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!handle_) NoteFailure(path);
}

bool Device::Ask(DWORD code, const void* in, size_t in_size, void* out, size_t out_size, size_t* returned) {
  *returned = 0;
  std::memset(out, 0, out_size);
  if (!handle_ || g_given_up.Get().Has(path_)) return false;
  DWORD filled = 0;
  // The system takes what is asked through a pointer that is not const; it does not write there.
  if (!DeviceIoControl(handle_.Get(), code, const_cast<void*>(in), static_cast<DWORD>(in_size), out,
                       static_cast<DWORD>(out_size), &filled, nullptr)) {
    NoteFailure(path_);
    return false;
  }
  *returned = filled < out_size ? filled : out_size;
  return true;
}

}  // namespace vanta
