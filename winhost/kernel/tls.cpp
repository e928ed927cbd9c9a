#include <windows.h>

#include <array>
#include <mutex>
#include <vector>

namespace {

constexpr DWORD kSlots = 1088;  // as many as the system has

struct Slot {
  DWORD generation = 0;  // odd while allocated; tells a slot's values from those of its former life
};

std::mutex g_lock;
std::array<Slot, kSlots> g_slots;

struct Value {
  DWORD generation = 0;
  LPVOID value = nullptr;
};
thread_local std::vector<Value> t_values;

// 0 for a slot that is not allocated.
DWORD Generation(DWORD index) {
  if (index >= kSlots) return 0;
  std::scoped_lock lock(g_lock);
  const DWORD generation = g_slots[index].generation;
  return generation % 2 ? generation : 0;
}

BOOL Refuse() {
  SetLastError(ERROR_INVALID_PARAMETER);
  return FALSE;
}

}  // namespace

DWORD TlsAlloc() {
  std::scoped_lock lock(g_lock);
  for (DWORD i = 0; i < kSlots; ++i) {
    if (g_slots[i].generation % 2 == 0) {
      ++g_slots[i].generation;
      return i;
    }
  }
  SetLastError(ERROR_NO_MORE_ITEMS);
  return TLS_OUT_OF_INDEXES;
}

BOOL TlsFree(DWORD index) {
  std::scoped_lock lock(g_lock);
  if (index >= kSlots || g_slots[index].generation % 2 == 0) return Refuse();
  ++g_slots[index].generation;
  return TRUE;
}

LPVOID TlsGetValue(DWORD index) {
  if (index >= kSlots) {
    Refuse();
    return nullptr;
  }
  SetLastError(ERROR_SUCCESS);  // how callers tell a null value from a failure
  const bool set = index < t_values.size() && t_values[index].generation == Generation(index);
  return set ? t_values[index].value : nullptr;
}

BOOL TlsSetValue(DWORD index, LPVOID value) {
  const DWORD generation = Generation(index);
  if (!generation) return Refuse();
  if (t_values.size() <= index) t_values.resize(index + 1);
  t_values[index] = {generation, value};
  return TRUE;
}
