#include <windows.h>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

class Event final : public Waitable {
 public:
  Event(bool manual, bool set) : manual_(manual), set_(set) {}
  bool Signalled() override { return set_; }
  void Consume() override { set_ = set_ && manual_; }
  void Set(bool set) {
    {
      std::scoped_lock lock(WaitLock());
      set_ = set;
    }
    if (set) WakeWaiters();
  }

 private:
  const bool manual_;
  bool set_;
};

BOOL SetTo(HANDLE handle, bool set) {
  const auto event = ObjectAs<Event>(handle);
  if (!event) {
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
  }
  event->Set(set);
  return TRUE;
}

}  // namespace
}  // namespace winhost

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES, BOOL manual_reset, BOOL initially_set, LPCWSTR name) {
  if (const auto error = winhost::PlannedFault("CreateEventW", name ? name : u"")) {
    SetLastError(*error);
    return nullptr;
  }
  if (name && *name) {
    SetLastError(ERROR_NOT_SUPPORTED);
    return nullptr;
  }
  SetLastError(ERROR_SUCCESS);
  return winhost::MakeHandle(std::make_shared<winhost::Event>(manual_reset != FALSE, initially_set != FALSE));
}

BOOL SetEvent(HANDLE event) { return winhost::SetTo(event, true); }
BOOL ResetEvent(HANDLE event) { return winhost::SetTo(event, false); }
