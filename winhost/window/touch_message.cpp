// Touch and pen contacts as WM_TOUCH or as pointer messages, and the calls about them.
#include <algorithm>

#include "winhost/kernel/waitable.h"
#include "winhost/machine/machine.h"
#include "winhost/window/inject.h"
#include "winhost/window/take_input.h"
#include "winhost/window/window.h"

namespace winhost {
namespace {

constexpr int kHundredths = 100;
constexpr std::size_t kMostOpen = 1024;  // inputs that nobody closes go away, oldest first

// Guarded by WaitLock.
struct Contacts {
  struct Open {
    std::uintptr_t handle;
    TOUCHINPUT input;
  };
  std::uintptr_t last = 0;
  std::vector<Open> open;
  std::vector<POINTER_INFO> pointers;  // the latest of each contact
};

Contacts& TheContacts() {
  static Contacts contacts;
  return contacts;
}

DWORD TouchFlags(UINT message) {
  switch (message) {
    case WM_POINTERDOWN:
      return TOUCHEVENTF_DOWN | TOUCHEVENTF_INRANGE;
    case WM_POINTERUP:
      return TOUCHEVENTF_UP;
    default:
      return TOUCHEVENTF_MOVE | TOUCHEVENTF_INRANGE;
  }
}

HTOUCHINPUT OpenTouch(const InputEvent& event) {
  TOUCHINPUT input{};
  input.x = event.point.x * kHundredths;
  input.y = event.point.y * kHundredths;
  input.dwID = static_cast<DWORD>(event.data);
  input.dwFlags = TouchFlags(event.message) | TOUCHEVENTF_PRIMARY;
  if (event.contact == ContactKind::Pen) input.dwFlags |= TOUCHEVENTF_PEN;
  input.dwTime = event.time;
  Contacts& contacts = TheContacts();
  if (contacts.open.size() == kMostOpen) contacts.open.erase(contacts.open.begin());
  contacts.open.push_back({++contacts.last, input});
  return reinterpret_cast<HTOUCHINPUT>(contacts.last);
}

UINT PointerFlags(UINT message) {
  constexpr UINT kHere = POINTER_FLAG_INRANGE | POINTER_FLAG_PRIMARY | POINTER_FLAG_CONFIDENCE;
  constexpr UINT kTouching = POINTER_FLAG_INCONTACT | POINTER_FLAG_FIRSTBUTTON;
  switch (message) {
    case WM_POINTERDOWN:
      return kHere | kTouching | POINTER_FLAG_DOWN | POINTER_FLAG_NEW;
    case WM_POINTERUP:
      return POINTER_FLAG_PRIMARY | POINTER_FLAG_CONFIDENCE | POINTER_FLAG_UP;
    default:
      return kHere | kTouching | POINTER_FLAG_UPDATE;
  }
}

void NotePointer(const InputEvent& event, HWND window) {
  POINTER_INFO info{};
  info.pointerType = event.contact == ContactKind::Pen ? PT_PEN : PT_TOUCH;
  info.pointerId = static_cast<UINT32>(event.data);
  info.pointerFlags = PointerFlags(event.message);
  info.hwndTarget = window;
  info.ptPixelLocation = info.ptPixelLocationRaw = event.point;
  info.dwTime = event.time;
  info.historyCount = 1;
  auto& pointers = TheContacts().pointers;
  std::erase_if(pointers, [&](const POINTER_INFO& each) { return each.pointerId == info.pointerId; });
  pointers.push_back(info);
}

MSG PointerMessage(const InputEvent& event, HWND window) {
  const UINT flags = PointerFlags(event.message) & 0xFFFF;
  return {window,     event.message, MAKEWPARAM(event.data, flags), MAKELPARAM(event.point.x, event.point.y),
          event.time, event.point};
}

bool HasPointers() { return Machine::Current().facts().AtLeast(6, 2); }

const POINTER_INFO* FindPointer(UINT32 id) {
  const auto& pointers = TheContacts().pointers;
  const auto found = std::ranges::find(pointers, id, &POINTER_INFO::pointerId);
  return found == pointers.end() ? nullptr : &*found;
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

}  // namespace

std::optional<MSG> TouchMessage(ThreadQueue& queue, const InputEvent& event, bool remove) {
  HWND handle = event.window;
  {
    std::scoped_lock lock(WaitLock());
    if (queue.capture) handle = queue.capture;
  }
  const auto window = FindLocalWindow(handle);
  if (!window || !IsWindowEnabled(handle)) return std::nullopt;
  const bool pointers = HasPointers();
  std::scoped_lock lock(WaitLock());
  if (window->touch) {
    const HTOUCHINPUT input = remove ? OpenTouch(event) : nullptr;
    return MSG{handle, WM_TOUCH, MAKEWPARAM(1, 0), reinterpret_cast<LPARAM>(input), event.time, event.point};
  }
  if (!pointers) return std::nullopt;
  if (remove) NotePointer(event, handle);
  return PointerMessage(event, handle);
}

}  // namespace winhost

using namespace winhost;

BOOL RegisterTouchWindow(HWND handle, ULONG flags) {
  const auto window = MyWindow(handle);
  if (!window) return FALSE;
  std::scoped_lock lock(WaitLock());
  window->touch = flags;
  return TRUE;
}

BOOL UnregisterTouchWindow(HWND handle) {
  const auto window = MyWindow(handle);
  if (!window) return FALSE;
  std::scoped_lock lock(WaitLock());
  window->touch.reset();
  return TRUE;
}

BOOL IsTouchWindow(HWND handle, PULONG flags) {
  const auto window = FindLocalWindow(handle);
  std::scoped_lock lock(WaitLock());
  if (!window || !window->touch) return FALSE;
  if (flags) *flags = *window->touch;
  return TRUE;
}

BOOL GetTouchInputInfo(HTOUCHINPUT handle, UINT count, PTOUCHINPUT inputs, int size) {
  if (!inputs || count == 0 || size != sizeof(TOUCHINPUT)) return Fail(ERROR_INVALID_PARAMETER);
  std::scoped_lock lock(WaitLock());
  const auto& open = TheContacts().open;
  const auto found = std::ranges::find(open, reinterpret_cast<std::uintptr_t>(handle), &Contacts::Open::handle);
  if (found == open.end()) return Fail(ERROR_INVALID_HANDLE);
  inputs[0] = found->input;
  return TRUE;
}

BOOL CloseTouchInputHandle(HTOUCHINPUT handle) {
  std::scoped_lock lock(WaitLock());
  const auto number = reinterpret_cast<std::uintptr_t>(handle);
  const auto gone = std::erase_if(TheContacts().open, [&](const auto& each) { return each.handle == number; });
  return gone > 0 ? TRUE : Fail(ERROR_INVALID_HANDLE);
}

BOOL GetPointerType(UINT32 id, POINTER_INPUT_TYPE* type) {
  std::scoped_lock lock(WaitLock());
  const POINTER_INFO* info = FindPointer(id);
  if (!info || !type) return Fail(ERROR_INVALID_PARAMETER);
  *type = info->pointerType;
  return TRUE;
}

BOOL GetPointerInfo(UINT32 id, POINTER_INFO* into) {
  std::scoped_lock lock(WaitLock());
  const POINTER_INFO* info = FindPointer(id);
  if (!info || !into) return Fail(ERROR_INVALID_PARAMETER);
  *into = *info;
  return TRUE;
}
