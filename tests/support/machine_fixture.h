// A fresh machine for every test. ctest runs each test in a process of its own, so the process-wide once-only services
// of the setup (operating-system record, logger, own version …) start anew as well.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace testing_support {

class OnMachine : public testing::Test {
 protected:
  OnMachine();
  ~OnMachine() override;

  // Starts the machine with these facts (the text of machine.json). Without a call it starts with none on first use.
  winhost::Machine& Start(std::string_view facts = "{}");
  // The Linux path of a file of the machine: Disk("C:\\a\\b") is <machine>/C/a/b.
  std::filesystem::path Disk(std::string_view windows_path);
  // Writes / reads a file of the machine, around the code under test. Folders are made as needed.
  void Put(std::string_view windows_path, std::string_view bytes);
  std::string Contents(std::string_view windows_path);
  bool Exists(std::string_view windows_path);

  std::filesystem::path folder_;

 private:
  std::optional<winhost::MachineScope> scope_;
};

}  // namespace testing_support
