// Handles of the service control manager, and how every call on one begins and ends.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "winhost/kernel/object.h"
#include "winhost/machine/faults.h"

namespace winhost {

struct ServiceManagerHandle final : KernelObject {
  explicit ServiceManagerHandle(DWORD granted) : access(granted) {}
  DWORD access;
};

struct ServiceHandle final : KernelObject {
  ServiceHandle(std::u16string service, DWORD granted) : name(std::move(service)), access(granted) {}
  std::u16string name;
  DWORD access;
};

inline BOOL FailService(DWORD error) {
  SetLastError(error);
  return FALSE;
}

// TRUE for no error; else FALSE with it as the last error.
inline BOOL ServiceResult(DWORD error) { return error == ERROR_SUCCESS || FailService(error); }

inline bool ServiceFault(const char* function, std::u16string_view subject = {}) {
  const auto error = PlannedFault(function, subject);
  return error && !FailService(*error);
}

// The object behind a handle of this kind that was opened with these rights; null with the last error set.
template <class T>
std::shared_ptr<T> OpenedWith(SC_HANDLE handle, DWORD rights, const char* function) {
  auto object = ObjectAs<T>(reinterpret_cast<HANDLE>(handle));
  std::u16string subject;
  if constexpr (std::is_same_v<T, ServiceHandle>) subject = object ? object->name : u"";
  if (ServiceFault(function, subject)) return nullptr;
  if (!object) {
    SetLastError(ERROR_INVALID_HANDLE);
  } else if ((object->access & rights) != rights) {
    SetLastError(ERROR_ACCESS_DENIED);
    object.reset();
  }
  return object;
}

// Runs a call's work; running out of memory becomes its failure.
inline BOOL GuardedService(const std::function<BOOL()>& work) {
  try {
    return work();
  } catch (const std::exception&) {
    return FailService(ERROR_NOT_ENOUGH_MEMORY);
  }
}

}  // namespace winhost
