// Locks and once-only making, written with what Windows XP has.
//
// Function-local statics with constructors are not used in this program (their guards cost more than all of this file),
// so process-wide services are Lazy<T> objects at namespace scope, which need no constructor to run.
#pragma once

#include <windows.h>

#include <atomic>
#include <new>

namespace vanta {

class CriticalSection {
 public:
  CriticalSection() { InitializeCriticalSection(&section_); }
  ~CriticalSection() { DeleteCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;
  void Enter() { EnterCriticalSection(&section_); }
  void Leave() { LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

class Guard {
 public:
  explicit Guard(CriticalSection& section) : section_(section) { section_.Enter(); }
  ~Guard() { section_.Leave(); }
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

 private:
  CriticalSection& section_;
};

// Runs a step exactly once; callers that come meanwhile wait for it.
class Once {
 public:
  template <class Step>
  void Run(Step&& step) {
    if (!Begin()) return;
    step();
    End();
  }

 private:
  // True for the one caller who is to run the step; the others wait for its end.
  bool Begin();
  void End();

  static constexpr LONG kNew = 0, kRunning = 1, kDone = 2;
  std::atomic<LONG> state_{kNew};
};

// A process-wide T, made by its default constructor on first use and never destroyed.
template <class T>
class Lazy {
 public:
  T& Get() {
    once_.Run([this] { made_ = ::new (static_cast<void*>(storage_)) T; });
    return *made_;
  }

 private:
  Once once_;
  T* made_ = nullptr;
  alignas(T) unsigned char storage_[sizeof(T)] = {};
};

}  // namespace vanta
