#include "app/message_loop.h"

#include "base/lock.h"

namespace vanta {
namespace {

constexpr UINT kSystemTimer = 0x118;  // WM_SYSTIMER, which the SDK does not name

struct Registry {
  CriticalSection lock;
  std::vector<std::pair<DWORD, MessageLoop*>> loops;
};
constinit Lazy<Registry> registry;

bool RearmsIdle(UINT message) {
  return message != WM_MOUSEMOVE && message != WM_NCMOUSEMOVE && message != WM_PAINT && message != kSystemTimer;
}

}  // namespace

MessageLoop::MessageLoop() : thread_(GetCurrentThreadId()) {
  const Guard guard(registry.Get().lock);
  registry.Get().loops.emplace_back(thread_, this);
}

MessageLoop::~MessageLoop() {
  const Guard guard(registry.Get().lock);
  std::erase(registry.Get().loops, std::pair(thread_, this));
}

MessageLoop* MessageLoop::Current() {
  const Guard guard(registry.Get().lock);
  for (const auto& [thread, loop] : registry.Get().loops) {
    if (thread == GetCurrentThreadId()) return loop;
  }
  return nullptr;
}

bool MessageLoop::PassFilters(MSG* message) {
  // By index and from the newest on: a filter may remove itself.
  for (size_t i = filters_.size(); i-- > 0;) {
    if (i < filters_.size() && filters_[i]->PreTranslateMessage(message)) return true;
  }
  return false;
}

void MessageLoop::RunIdleHandlers() {
  for (size_t i = 0; i < idle_handlers_.size(); ++i) idle_handlers_[i]->OnIdle();
}

WPARAM MessageLoop::Run() {
  bool idle_due = true;
  MSG message = {};
  for (;;) {
    if (idle_due && !PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
      RunIdleHandlers();
      idle_due = false;
    }
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == -1) continue;
    if (!got) return message.wParam;
    if (!PassFilters(&message)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    idle_due = idle_due || RearmsIdle(message.message);
  }
}

}  // namespace vanta
