#include <nlohmann/json.hpp>

#include "winhost/machine/journal.h"
#include "winhost/machine/text.h"
#include "winhost/window/window.h"

namespace winhost {

// Numbers from WM_APP on are a program's talk with itself, often many times a second.
void JournalPosted(const WindowInfo& window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message < WM_USER || message >= WM_APP) return;
  WriteJournal("messages", {{"class", Narrow(window.class_name)},
                            {"message", message},
                            {"wParam", static_cast<std::uint64_t>(wparam)},
                            {"lParam", static_cast<std::int64_t>(lparam)}});
}

}  // namespace winhost
