#include "winhost/kernel/object.h"

#include <windows.h>

#include <mutex>
#include <unordered_map>

namespace winhost {
namespace {

struct Table {
  std::mutex lock;
  std::unordered_map<std::uintptr_t, std::shared_ptr<KernelObject>> objects;
  std::uintptr_t next = 4;
};

Table& TheTable() {
  static Table* table = new Table;  // outlives every static object that still closes handles
  return *table;
}

}  // namespace

HANDLE MakeHandle(std::shared_ptr<KernelObject> object) {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  const std::uintptr_t value = table.next;
  table.next += 4;
  table.objects.emplace(value, std::move(object));
  return reinterpret_cast<HANDLE>(value);
}

std::shared_ptr<KernelObject> FindObject(HANDLE handle) {
  Table& table = TheTable();
  {
    std::scoped_lock lock(table.lock);
    const auto found = table.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found != table.objects.end()) return found->second;
  }
  SetLastError(ERROR_INVALID_HANDLE);
  return nullptr;
}

}  // namespace winhost

BOOL CloseHandle(HANDLE handle) {
  winhost::Table& table = winhost::TheTable();
  std::shared_ptr<winhost::KernelObject> object;  // destroyed after the lock is given up
  {
    std::scoped_lock lock(table.lock);
    const auto found = table.objects.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found != table.objects.end()) {
      object = std::move(found->second);
      table.objects.erase(found);
    }
  }
  if (!object) SetLastError(ERROR_INVALID_HANDLE);
  return object != nullptr;
}
