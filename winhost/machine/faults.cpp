#include "winhost/machine/faults.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "winhost/machine/journal.h"
#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

std::string ImageName() {
  char buffer[4096];
  const ssize_t length = readlink("/proc/self/exe", buffer, sizeof buffer);
  return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

constexpr auto kHeldAtMost = std::chrono::seconds(60);

void AwaitFile(const std::filesystem::path& file) {
  const std::filesystem::path wanted = file.string() + ".wanted";
  std::ofstream(wanted).close();
  const auto deadline = std::chrono::steady_clock::now() + kHeldAtMost;
  while (!std::filesystem::exists(file) && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  std::error_code ignored;
  std::filesystem::remove(wanted, ignored);
}

struct Plan {
  std::uint32_t error = 0;
  std::string until;
};

class FaultPlan {
 public:
  explicit FaultPlan(Machine& machine) {
    const std::u16string image = Upcase(Wide(ImageName()));
    for (const FaultFacts& fault : machine.facts().faults) {
      if (image.find(Upcase(Wide(fault.process))) == std::u16string::npos) continue;
      rows_.push_back({fault, Upcase(Wide(fault.subject)), 0});
    }
  }

  std::optional<Plan> Next(std::string_view operation, std::u16string_view subject) {
    if (rows_.empty()) return std::nullopt;
    std::scoped_lock lock(lock_);
    std::optional<Plan> planned;
    for (Row& row : rows_) {
      if (row.fault.operation != operation) continue;
      if (!row.subject.empty() && Upcase(subject).find(row.subject) == std::u16string::npos) continue;
      ++row.calls;
      const FaultFacts& fault = row.fault;
      const bool due = fault.nth == 0 || (row.calls >= fault.nth && row.calls - fault.nth < fault.times);
      if (due && !planned) planned = {fault.error, fault.until};
    }
    return planned;
  }

 private:
  struct Row {
    FaultFacts fault;
    std::u16string subject;
    std::uint32_t calls;
  };
  std::mutex lock_;
  std::vector<Row> rows_;
};

}  // namespace

std::optional<std::uint32_t> PlannedFault(const char* operation, std::u16string_view subject) {
  Machine& machine = Machine::Current();
  if (machine.facts().trace_calls) {
    WriteJournal("calls", {{"operation", operation}, {"subject", Narrow(subject)}, {"program", ImageName()}});
  }
  if (machine.facts().faults.empty()) return std::nullopt;
  const auto planned = machine.Get<FaultPlan>().Next(operation, subject);
  if (!planned) return std::nullopt;
  if (!planned->until.empty()) AwaitFile(machine.folder() / planned->until);
  return planned->error ? std::optional(planned->error) : std::nullopt;
}

}  // namespace winhost
