#include <windows.h>

#include <shlwapi.h>

#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"
#include "tools/vantakit/machine/diff.h"
#include "tools/vantakit/machine/state.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

class MachineStateTest : public testing_support::OnMachine {};

TEST_F(MachineStateTest, AFreshMachineHoldsNothing) {
  Start();
  const Json state = MachineState();
  for (const char* key : {"files", "registry", "shortcuts", "tasks", "launches", "deferred", "messages", "exits"}) {
    EXPECT_EQ(state[key], Json::array()) << key;
  }
  EXPECT_EQ(state["log"]["files"], Json::object());
}

TEST_F(MachineStateTest, FilesValuesAndLogsAreListed) {
  Start();
  Put("C:\\Data\\a.txt", "hello");
  Put("C:\\Data\\Logs\\b.log", std::string("h\0i\0\r\0\n\0", 8));
  SHSetValueW(HKEY_CURRENT_USER, TEXT("Software\\X"), TEXT("n"), REG_SZ, TEXT("ab."), 4);
  const Json state = MachineState();
  ASSERT_EQ(state["files"].size(), 2u);
  EXPECT_EQ(state["files"][0]["path"], "C:\\Data\\a.txt");
  EXPECT_EQ(state["files"][0]["size"], 5);
  EXPECT_EQ(state["files"][0]["sha256"], "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824");
  EXPECT_EQ(state["files"][0]["attributes"], Json::parse(R"(["archive"])"));
  ASSERT_EQ(state["registry"].size(), 1u);
  EXPECT_EQ(state["registry"][0],
            Json::parse(R"({"key": "HKCU\\Software\\X", "name": "n", "type": "REG_SZ", "bytes": 4, "value": "ab"})"));
  EXPECT_EQ(state["log"]["files"]["C:\\Data\\Logs\\b.log"], Json::parse(R"(["hi"])"));
}

TEST_F(MachineStateTest, TheDifferenceNamesWhatCameWentAndChanged) {
  Start();
  Put("C:\\stays.txt", "1");
  Put("C:\\goes.txt", "1");
  Put("C:\\changes.txt", "1");
  const Json before = MachineState();
  EXPECT_EQ(DiffStates(before, before), Json::object());
  Put("C:\\changes.txt", "2");
  Put("C:\\comes.txt", "1");
  ASSERT_TRUE(DeleteFileW(TEXT("C:\\goes.txt")));
  const Json difference = DiffStates(before, MachineState());
  std::vector<std::string> told;
  for (const Json& change : difference.at("files")) {
    told.push_back(change["change"].get<std::string>() + " " + change["entry"].get<std::string>());
  }
  EXPECT_EQ(told, (std::vector<std::string>{"changed C:\\changes.txt", "removed C:\\goes.txt", "added C:\\comes.txt"}));
  EXPECT_EQ(difference.size(), 1u);
}

}  // namespace
}  // namespace vantakit
