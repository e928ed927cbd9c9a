// The windows of a machine: what all its processes may know of one, in a file that they map. A window's procedure, data
// and messages stay with its own process (see window.h and thread_queue.h).
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "winhost/machine/machine.h"

namespace winhost {

struct WindowInfo {
  HWND window = nullptr;
  pid_t process = 0;
  DWORD thread = 0;
  HWND parent = nullptr;  // of a child its parent, of a top-level window its owner
  bool message_only = false;
  DWORD style = 0;  // WS_VISIBLE, WS_MINIMIZE … are its state
  DWORD ex_style = 0;
  std::u16string class_name;
  std::u16string title;  // at most 511 characters
  RECT place{};          // of a child in its parent's client coordinates, of others on the screen
  RECT client{};         // from the window's top left corner

  bool child() const { return (style & WS_CHILD) != 0; }
  bool shown() const { return (style & WS_VISIBLE) != 0; }
  // Windows that stand on the screen by themselves.
  bool top_level() const { return !message_only && !child(); }
};

// Any thread, any process. A window whose process has ended is gone; its place is used again, its handle is not.
class WindowTable {
 public:
  explicit WindowTable(Machine& machine);
  ~WindowTable();
  WindowTable(const WindowTable&) = delete;
  WindowTable& operator=(const WindowTable&) = delete;

  // The table of the machine that this process lives on. A holder keeps it beyond the machine's end.
  static std::shared_ptr<WindowTable> Current();

  // Enters a window of this process, foremost; `info.window` and `info.process` are not read. Null when the table is
  // full.
  HWND Add(const WindowInfo& info);
  void Remove(HWND window);
  std::optional<WindowInfo> Find(HWND window);
  // The windows for which `wanted` says yes, foremost first. `wanted` runs under the table's lock.
  std::vector<WindowInfo> List(const std::function<bool(const WindowInfo&)>& wanted);

  // All answer false when there is no such window.
  bool SetStyle(HWND window, DWORD clear, DWORD set);
  bool SetExStyle(HWND window, DWORD style);
  bool SetTitle(HWND window, std::u16string_view title);
  bool SetParent(HWND window, HWND parent);
  bool SetPlace(HWND window, const RECT& place, const RECT& client);

  // To the front of its kind: windows with WS_EX_TOPMOST stay before the others.
  bool Raise(HWND window);
  bool Lower(HWND window);
  // Just behind another one.
  bool PutBehind(HWND window, HWND other);
  HWND Foreground();
  // Null: nobody. The former one.
  HWND SetForeground(HWND window);

  // A number 0xC000…0xFFFF that stands for this text on the machine, whatever its case; 0 when there are too many texts
  // or this one is longer than 255 characters.
  ATOM AtomOf(std::u16string_view text);
  // Empty for a number that stands for nothing.
  std::u16string AtomText(ATOM atom);

 private:
  struct Slot;
  struct Block;
  class Lock;

  Slot* SlotOf(HWND window);
  void Renumber();
  bool Change(HWND window, const std::function<void(Slot&)>& change);
  static WindowInfo Read(const Slot& slot);
  static bool Live(Slot& slot);

  std::mutex mutex_;
  int file_ = -1;
  Block* block_ = nullptr;
};

}  // namespace winhost
