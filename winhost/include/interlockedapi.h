// Interlocked operations, sequentially consistent as the system's.
#pragma once

#include <minwindef.h>

inline LONG InterlockedIncrement(LONG volatile* value) { return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST); }
inline LONG InterlockedDecrement(LONG volatile* value) { return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST); }
inline LONG InterlockedExchange(LONG volatile* value, LONG now) {
  return __atomic_exchange_n(value, now, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedExchangeAdd(LONG volatile* value, LONG add) {
  return __atomic_fetch_add(value, add, __ATOMIC_SEQ_CST);
}
inline LONG InterlockedCompareExchange(LONG volatile* value, LONG now, LONG expected) {
  __atomic_compare_exchange_n(value, &expected, now, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
  return expected;
}
inline PVOID InterlockedExchangePointer(PVOID volatile* value, PVOID now) {
  return __atomic_exchange_n(value, now, __ATOMIC_SEQ_CST);
}
inline PVOID InterlockedCompareExchangePointer(PVOID volatile* value, PVOID now, PVOID expected) {
  __atomic_compare_exchange_n(value, &expected, now, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
  return expected;
}
