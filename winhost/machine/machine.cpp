#include "winhost/machine/machine.h"

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace winhost {
namespace {

std::atomic<Machine*> g_current{nullptr};
std::mutex g_making;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "machine: %s\n", what.c_str());
  std::exit(3);
}

std::filesystem::path FolderFromEnvironment() {
  if (const char* named = std::getenv("VANTA_MACHINE"); named && *named) return named;
  std::string pattern = (std::filesystem::temp_directory_path() / "vanta-machine-XXXXXX").string();
  if (!mkdtemp(pattern.data())) Fail("no temporary folder for a machine");
  setenv("VANTA_MACHINE", pattern.c_str(), 1);  // programs started from here live on the same machine
  return pattern;
}

}  // namespace

Machine& Machine::Current() {
  if (Machine* machine = g_current.load(std::memory_order_acquire)) return *machine;
  std::scoped_lock lock(g_making);
  if (Machine* machine = g_current.load(std::memory_order_acquire)) return *machine;
  auto* machine = new Machine(FolderFromEnvironment());
  std::atexit([] { delete g_current.exchange(nullptr); });
  g_current.store(machine, std::memory_order_release);
  return *machine;
}

Machine::Machine(std::filesystem::path folder) {
  std::error_code error;
  folder_ = std::filesystem::absolute(folder, error).lexically_normal();
  std::filesystem::create_directories(folder_ / "C", error);
  if (!std::filesystem::is_directory(folder_ / "C")) Fail("cannot make " + folder_.string());
  try {
    facts_ = ReadFacts(folder_ / "machine.json");
  } catch (const std::exception& wrong) {
    Fail((folder_ / "machine.json").string() + ": " + wrong.what());
  }
}

Machine::~Machine() {
  while (!order_.empty()) {
    slots_.erase(order_.back());
    order_.pop_back();
  }
}

void* Machine::Slot(std::type_index type, const std::function<std::shared_ptr<void>()>& make) {
  std::scoped_lock lock(lock_);
  if (auto found = slots_.find(type); found != slots_.end()) return found->second.get();
  std::shared_ptr<void> made = make();
  void* state = made.get();
  slots_.emplace(type, std::move(made));
  order_.push_back(type);
  return state;
}

MachineScope::MachineScope(std::filesystem::path folder) : machine_(new Machine(std::move(folder))) {
  previous_ = g_current.exchange(machine_.get());
}

MachineScope::~MachineScope() { g_current.store(previous_); }

}  // namespace winhost
