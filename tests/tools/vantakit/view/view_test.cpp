#include "tools/vantakit/view/views.h"

#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

class ViewTest : public testing_support::OnMachine {
 protected:
  Json Ask(const std::string& line) { return Json::parse(AnswerLine(line)); }
};

TEST_F(ViewTest, ARequestIsAnsweredUnderItsId) {
  const Json answer = Ask(R"({"id": [7], "op": "version.compare", "input": {"a": "10.0", "b": "9.9"}})");
  EXPECT_EQ(answer, Json::parse(R"({"id": [7], "output": {"value": 1}})"));
}

TEST_F(ViewTest, WhatCannotBeAnsweredSaysWhy) {
  for (const char* line :
       {"", "nonsense", "[]", "{}", R"({"id": 1, "op": "no.such", "input": {}})",
        R"({"id": 1, "op": "version.compare"})", R"({"id": 1, "op": "version.compare", "input": {"a": "1"}})",
        R"({"id": 1, "op": "version.compare", "input": {"a": 1, "b": 2}})",
        R"({"id": 1, "op": "machine.probes", "input": {"machine": "/no/such/folder"}})"}) {
    const Json answer = Ask(line);
    EXPECT_TRUE(answer.contains("error")) << line;
    EXPECT_FALSE(answer.contains("output")) << line;
  }
}

TEST_F(ViewTest, TheOperatingSystemIsClassified) {
  const Json answer =
      Ask(R"({"id": 1, "op": "probes.os", "input": {"platform": 2, "major": 6, "minor": 4, "build": 9841}})")["output"];
  EXPECT_EQ(answer["name"], "Windows 10");
  EXPECT_EQ(answer["code"], 0x4000);
  EXPECT_EQ(answer["sysver"], "6.4.9841");
  EXPECT_EQ(answer["atLeast7"], true);
  EXPECT_EQ(answer["isXP"], false);
}

TEST_F(ViewTest, TheMachineItLivesOnIsProbed) {
  Start(R"({"version": "xp", "windows_bits": 32,
            "registry": {"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\HuorongSysdiag": {"x": "y"}}})");
  const Json answer = Ask(Json{{"id", 1}, {"op", "machine.probes"}, {"input", {{"machine", folder_.string()}}}}.dump());
  ASSERT_TRUE(answer.contains("output")) << answer;
  const Json& probes = answer["output"];
  EXPECT_EQ(probes["os"]["isXP"], true);
  EXPECT_EQ(probes["is64Bit"], false);
  EXPECT_EQ(probes["security"], "d");
  EXPECT_EQ(probes["browser"], 0);
  EXPECT_EQ(probes["installDirectory"], "C:\\Program Files\\VantaPictor");
  EXPECT_EQ(probes["isInstalled"], false);
  EXPECT_EQ(probes["trust"]["VantaGlimpse.exe"]["status"], 0);
}

}  // namespace
}  // namespace vantakit
