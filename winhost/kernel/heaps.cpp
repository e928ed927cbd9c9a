#include <windows.h>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "winhost/machine/faults.h"

namespace winhost {
namespace {

constexpr SIZE_T kMostBytes = SIZE_T{1} << 38;  // beyond, the sanitizers end the program instead of refusing

struct Freed {
  void operator()(void* memory) const { std::free(memory); }
};

struct Block {
  SIZE_T bytes = 0;
  bool movable = false;
  DWORD locks = 0;
  std::unique_ptr<void, Freed> memory;
};

struct Heap {
  std::mutex lock;
  std::unordered_map<HGLOBAL, Block> blocks;
  std::uintptr_t next_movable = 2;  // low bit pattern no pointer has; so a handle taken for memory crashes at once
};

Heap& TheHeap() {
  static auto* heap = new Heap;
  return *heap;
}

HGLOBAL Allocate(const char* call, UINT flags, SIZE_T bytes) {
  if (const auto error = PlannedFault(call)) {
    SetLastError(*error);
    return nullptr;
  }
  Block block{bytes, (flags & GMEM_MOVEABLE) != 0, 0, nullptr};
  // Zeroed in any case: reading what was never written is for the sanitizers to find in plain memory, not here.
  block.memory.reset(bytes <= kMostBytes ? std::calloc(1, bytes ? bytes : 1) : nullptr);
  if (!block.memory) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  Heap& heap = TheHeap();
  std::scoped_lock lock(heap.lock);
  const HGLOBAL handle = block.movable ? reinterpret_cast<HGLOBAL>(heap.next_movable) : block.memory.get();
  heap.next_movable += block.movable ? 4 : 0;
  heap.blocks.emplace(handle, std::move(block));
  return handle;
}

// Runs `use` on the block under the lock; `otherwise` with ERROR_INVALID_HANDLE when there is none.
template <class Use, class Result>
Result With(HGLOBAL handle, Result otherwise, Use use) {
  Heap& heap = TheHeap();
  std::scoped_lock lock(heap.lock);
  const auto found = heap.blocks.find(handle);
  if (found == heap.blocks.end()) {
    SetLastError(ERROR_INVALID_HANDLE);
    return otherwise;
  }
  return use(found->second);
}

HGLOBAL Free(HGLOBAL handle) {
  if (!handle) return nullptr;
  Heap& heap = TheHeap();
  std::scoped_lock lock(heap.lock);
  if (heap.blocks.erase(handle)) return nullptr;
  SetLastError(ERROR_INVALID_HANDLE);
  return handle;
}

SIZE_T Size(HGLOBAL handle) {
  return With(handle, SIZE_T{0}, [](const Block& block) { return block.bytes; });
}

}  // namespace
}  // namespace winhost

HLOCAL LocalAlloc(UINT flags, SIZE_T bytes) { return winhost::Allocate("LocalAlloc", flags, bytes); }
HLOCAL LocalFree(HLOCAL block) { return winhost::Free(block); }
SIZE_T LocalSize(HLOCAL block) { return winhost::Size(block); }
HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) { return winhost::Allocate("GlobalAlloc", flags, bytes); }
HGLOBAL GlobalFree(HGLOBAL block) { return winhost::Free(block); }
SIZE_T GlobalSize(HGLOBAL block) { return winhost::Size(block); }

LPVOID GlobalLock(HGLOBAL handle) {
  return winhost::With(handle, LPVOID{}, [](winhost::Block& block) {
    block.locks += block.movable ? 1 : 0;
    return block.memory.get();
  });
}

BOOL GlobalUnlock(HGLOBAL handle) {
  return winhost::With(handle, FALSE, [](winhost::Block& block) {
    if (!block.movable) return TRUE;
    if (block.locks == 0) {
      SetLastError(ERROR_NOT_LOCKED);
      return FALSE;
    }
    SetLastError(NO_ERROR);
    return --block.locks ? TRUE : FALSE;
  });
}
