// A machine: one folder that stands for one Windows computer.
//
//   C/, D/ …        its drives                      machine.json    its facts, read once a process
//   registry.db     its registry (SQLite)           *.jsonl         journals: what happened, a JSON object a line
//   .shared         memory that all its processes map: the clock's advance, the table of open files
//
// VANTA_MACHINE names the folder; without it a fresh one is made below the system's temporary folder. A folder that
// does not exist or is empty becomes a machine on first use. Several processes may live on one machine at once.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <typeindex>
#include <unordered_map>

#include "winhost/machine/facts.h"

namespace winhost {

class Machine {
 public:
  // The machine that this process lives on. The first call makes or opens it. Any thread; the reference stays valid
  // until the machine is replaced by MachineScope.
  static Machine& Current();

  // Opens the machine in `folder`, making its folder tree where it is new. Aborts with a message on standard error
  // when the folder cannot be made or machine.json is no valid facts file.
  explicit Machine(std::filesystem::path folder);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Absolute Linux path of the machine's folder.
  const std::filesystem::path& folder() const { return folder_; }
  const Facts& facts() const { return facts_; }

  // A subsystem's state on this machine (its registry connection, its directory cache …): made as T(Machine&) on
  // first use, destroyed with the machine, in reverse order of making. Any thread.
  template <class T>
  T& Get() {
    return *static_cast<T*>(Slot(typeid(T), [this]() -> std::shared_ptr<void> { return std::make_shared<T>(*this); }));
  }

 private:
  friend class MachineScope;
  void* Slot(std::type_index type, const std::function<std::shared_ptr<void>()>& make);

  std::filesystem::path folder_;
  Facts facts_;
  std::recursive_mutex lock_;
  std::unordered_map<std::type_index, std::shared_ptr<void>> slots_;
  std::vector<std::type_index> order_;
};

// Moves this process onto another machine for the scope's life; for tests and tools that look at several machines.
// The process must be single-threaded while a scope begins or ends, and hold no open handles of the machine.
class MachineScope {
 public:
  explicit MachineScope(std::filesystem::path folder);
  ~MachineScope();
  MachineScope(const MachineScope&) = delete;
  MachineScope& operator=(const MachineScope&) = delete;
  Machine& machine() { return *machine_; }

 private:
  std::unique_ptr<Machine> machine_;
  Machine* previous_;
};

}  // namespace winhost
