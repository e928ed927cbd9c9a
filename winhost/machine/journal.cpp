#include "winhost/machine/journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "winhost/machine/machine.h"

namespace winhost {

void WriteJournal(std::string_view name, nlohmann::json entry) {
  const auto path = Machine::Current().folder() / (std::string(name) + ".jsonl");
  entry["pid"] = getpid();
  const std::string line = entry.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
  const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  if (file < 0) return;
  [[maybe_unused]] const ssize_t written = write(file, line.data(), line.size());
  close(file);
}

}  // namespace winhost
