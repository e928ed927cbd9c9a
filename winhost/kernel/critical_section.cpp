#include <windows.h>

#include <pthread.h>

#include <new>

namespace {

static_assert(sizeof(pthread_mutex_t) <= sizeof(CRITICAL_SECTION) &&
              alignof(pthread_mutex_t) <= alignof(CRITICAL_SECTION));

pthread_mutex_t* Mutex(LPCRITICAL_SECTION section) {
  return std::launder(reinterpret_cast<pthread_mutex_t*>(section->mutex));
}

}  // namespace

void InitializeCriticalSection(LPCRITICAL_SECTION section) {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(::new (static_cast<void*>(section->mutex)) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}

BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD) {
  InitializeCriticalSection(section);
  return TRUE;
}

void EnterCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_lock(Mutex(section)); }
BOOL TryEnterCriticalSection(LPCRITICAL_SECTION section) { return pthread_mutex_trylock(Mutex(section)) == 0; }
void LeaveCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_unlock(Mutex(section)); }
void DeleteCriticalSection(LPCRITICAL_SECTION section) { pthread_mutex_destroy(Mutex(section)); }
