#include "winhost/window/window_table.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include "winhost/machine/text.h"
#include "winhost/window/live_process.h"

namespace winhost {
namespace {

constexpr std::uint32_t kSlots = 1024;
constexpr std::size_t kTitle = 512, kName = 256, kAtoms = 1024;
constexpr ATOM kFirstAtom = 0xC000;

std::uint32_t Number(HWND window) { return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window)); }
HWND Handle(std::uint32_t number) { return reinterpret_cast<HWND>(static_cast<std::uintptr_t>(number)); }

template <std::size_t N>
void Copy(std::u16string_view text, char16_t (&into)[N]) {
  const std::size_t count = std::min(text.size(), N - 1);
  text.copy(into, count);
  into[count] = 0;
}

struct Holder {
  explicit Holder(Machine& machine) : table(std::make_shared<WindowTable>(machine)) {}
  std::shared_ptr<WindowTable> table;
};

}  // namespace

// Zero-filled when new; the layout is only ever read by programs of one build.
struct WindowTable::Slot {
  std::uint32_t window;  // 0: free
  std::int32_t process;
  std::uint64_t process_start;
  std::uint64_t rank;  // the greater the further in front; even, so that one fits between two
  std::uint32_t thread;
  std::uint32_t parent;
  std::uint32_t style;
  std::uint32_t ex_style;
  std::uint32_t message_only;
  RECT place;
  RECT client;
  char16_t class_name[kName];
  char16_t title[kTitle];
};

struct WindowTable::Block {
  std::uint32_t generation;
  std::uint32_t foreground;
  std::uint64_t next_rank;
  std::uint32_t atoms;
  std::uint32_t touched;  // slots behind this many were never used
  char16_t atom_text[kAtoms][kName];
  Slot slots[kSlots];

  std::span<Slot> Touched() { return {slots, std::min(touched, kSlots)}; }
};

// One thread of one process at a time; the kernel gives up the file's lock when a process dies with it.
class WindowTable::Lock {
 public:
  explicit Lock(WindowTable& table) : lock_(table.mutex_), file_(table.file_) { flock(file_, LOCK_EX); }
  ~Lock() { flock(file_, LOCK_UN); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

 private:
  std::scoped_lock<std::mutex> lock_;
  int file_;
};

WindowTable::WindowTable(Machine& machine) {
  const auto path = machine.folder() / ".windows";
  file_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  void* memory = MAP_FAILED;
  if (file_ >= 0 && ftruncate(file_, sizeof(Block)) == 0) {
    memory = mmap(nullptr, sizeof(Block), PROT_READ | PROT_WRITE, MAP_SHARED, file_, 0);
  }
  if (memory == MAP_FAILED) {
    std::fprintf(stderr, "machine: cannot map %s\n", path.c_str());
    std::exit(3);
  }
  block_ = static_cast<Block*>(memory);
}

WindowTable::~WindowTable() {
  munmap(block_, sizeof(Block));
  close(file_);
}

std::shared_ptr<WindowTable> WindowTable::Current() { return Machine::Current().Get<Holder>().table; }

WindowTable::Slot* WindowTable::SlotOf(HWND window) {
  const std::uint32_t number = Number(window);
  if (number == 0 || reinterpret_cast<std::uintptr_t>(window) != number) return nullptr;
  Slot& slot = block_->slots[(number >> 1) % kSlots];
  return slot.window == number && Live(slot) ? &slot : nullptr;
}

bool WindowTable::Live(Slot& slot) {
  if (slot.window == 0) return false;
  if (slot.process == getpid() || ProcessStartTicks(slot.process) == slot.process_start) return true;
  slot.window = 0;
  return false;
}

WindowInfo WindowTable::Read(const Slot& slot) {
  return {Handle(slot.window), slot.process,  slot.thread,     Handle(slot.parent), slot.message_only != 0,
          slot.style,          slot.ex_style, slot.class_name, slot.title,          slot.place,
          slot.client};
}

HWND WindowTable::Add(const WindowInfo& info) {
  static_assert((kSlots & (kSlots - 1)) == 0);
  const Lock lock(*this);
  Slot* const end = block_->slots + kSlots;
  Slot* slot = std::find_if(block_->slots, end, [](const Slot& place) { return place.window == 0; });
  if (slot == end) slot = std::find_if(block_->slots, end, [](Slot& place) { return !Live(place); });
  if (slot == end) return nullptr;
  // Even, positive as a 32-bit number, its slot in bits 1…10 and above it a count that makes it new.
  constexpr std::uint32_t kGenerations = 1u << 20;
  block_->generation = block_->generation % (kGenerations - 1) + 1;
  const auto index = static_cast<std::uint32_t>(slot - block_->slots);
  block_->touched = std::max(block_->touched, index + 1);
  *slot = Slot{};
  slot->process = getpid();
  slot->process_start = ProcessStartTicks(getpid());
  slot->rank = block_->next_rank += 2;
  slot->thread = info.thread;
  slot->parent = Number(info.parent);
  slot->style = info.style;
  slot->ex_style = info.ex_style;
  slot->message_only = info.message_only;
  slot->place = info.place;
  slot->client = info.client;
  Copy(info.class_name, slot->class_name);
  Copy(info.title, slot->title);
  slot->window = (block_->generation * kSlots + index) << 1;
  return Handle(slot->window);
}

void WindowTable::Remove(HWND window) {
  const Lock lock(*this);
  if (Slot* slot = SlotOf(window)) slot->window = 0;
  if (block_->foreground == Number(window)) block_->foreground = 0;
}

std::optional<WindowInfo> WindowTable::Find(HWND window) {
  const Lock lock(*this);
  const Slot* slot = SlotOf(window);
  return slot ? std::optional(Read(*slot)) : std::nullopt;
}

std::vector<WindowInfo> WindowTable::List(const std::function<bool(const WindowInfo&)>& wanted) {
  std::vector<std::pair<std::uint64_t, WindowInfo>> found;
  constexpr std::uint64_t kTopmost = 1ull << 63;
  {
    const Lock lock(*this);
    for (Slot& slot : block_->Touched()) {
      if (slot.window == 0) continue;
      WindowInfo info = Read(slot);
      // The question whether its process lives is the dear one, so it comes last.
      if (wanted(info) && Live(slot)) {
        found.emplace_back(slot.rank | (info.ex_style & WS_EX_TOPMOST ? kTopmost : 0), std::move(info));
      }
    }
  }
  std::ranges::sort(found, std::greater(), [](const auto& pair) { return pair.first; });
  std::vector<WindowInfo> windows;
  for (auto& [rank, info] : found) windows.push_back(std::move(info));
  return windows;
}

bool WindowTable::Change(HWND window, const std::function<void(Slot&)>& change) {
  const Lock lock(*this);
  Slot* slot = SlotOf(window);
  if (slot) change(*slot);
  return slot != nullptr;
}

bool WindowTable::SetStyle(HWND window, DWORD clear, DWORD set) {
  return Change(window, [&](Slot& slot) { slot.style = (slot.style & ~clear) | set; });
}
bool WindowTable::SetExStyle(HWND window, DWORD style) {
  return Change(window, [&](Slot& slot) { slot.ex_style = style; });
}
bool WindowTable::SetTitle(HWND window, std::u16string_view title) {
  return Change(window, [&](Slot& slot) { Copy(title, slot.title); });
}
bool WindowTable::SetParent(HWND window, HWND parent) {
  return Change(window, [&](Slot& slot) { slot.parent = Number(parent); });
}
bool WindowTable::SetPlace(HWND window, const RECT& place, const RECT& client) {
  return Change(window, [&](Slot& slot) {
    slot.place = place;
    slot.client = client;
  });
}
bool WindowTable::Raise(HWND window) {
  return Change(window, [&](Slot& slot) { slot.rank = block_->next_rank += 2; });
}
bool WindowTable::Lower(HWND window) {
  return Change(window, [&](Slot& slot) {
    slot.rank = 0;
    Renumber();
  });
}
bool WindowTable::PutBehind(HWND window, HWND other) {
  return Change(window, [&](Slot& slot) {
    const Slot* before = SlotOf(other);
    if (!before || before == &slot) return;
    slot.rank = before->rank - 1;
    Renumber();
  });
}

void WindowTable::Renumber() {
  std::vector<Slot*> order;
  for (Slot& slot : block_->Touched()) {
    if (slot.window != 0) order.push_back(&slot);
  }
  std::ranges::stable_sort(order, {}, [](const Slot* slot) { return slot->rank; });
  std::uint64_t rank = 0;
  for (Slot* slot : order) slot->rank = rank += 2;
  block_->next_rank = rank;
}

HWND WindowTable::Foreground() {
  const Lock lock(*this);
  const HWND window = Handle(block_->foreground);
  return SlotOf(window) ? window : nullptr;
}

HWND WindowTable::SetForeground(HWND window) {
  const Lock lock(*this);
  const HWND former = Handle(block_->foreground);
  block_->foreground = Number(window);
  return SlotOf(former) ? former : nullptr;
}

ATOM WindowTable::AtomOf(std::u16string_view text) {
  if (text.empty() || text.size() >= kName) return 0;
  const Lock lock(*this);
  for (std::uint32_t i = 0; i < block_->atoms; ++i) {
    if (EqualNoCase(block_->atom_text[i], text)) return static_cast<ATOM>(kFirstAtom + i);
  }
  if (block_->atoms == kAtoms) return 0;
  Copy(text, block_->atom_text[block_->atoms]);
  return static_cast<ATOM>(kFirstAtom + block_->atoms++);
}

std::u16string WindowTable::AtomText(ATOM atom) {
  const Lock lock(*this);
  const std::uint32_t index = static_cast<std::uint32_t>(atom) - kFirstAtom;
  return atom >= kFirstAtom && index < block_->atoms ? std::u16string(block_->atom_text[index]) : std::u16string();
}

}  // namespace winhost
