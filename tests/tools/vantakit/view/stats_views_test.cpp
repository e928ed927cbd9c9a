#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"
#include "tools/vantakit/view/views.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

class StatsViewsTest : public testing_support::OnMachine {
 protected:
  Json Ask(const std::string& op, const std::string& input) {
    const Json answer = Json::parse(AnswerLine(R"({"id": 1, "op": ")" + op + R"(", "input": )" + input + "}"));
    return answer.contains("output") ? answer["output"] : answer;
  }
};

TEST_F(StatsViewsTest, UrlOfAStatusReport) {
  EXPECT_EQ(Ask("stats.url", R"({"params": {"m": "M", "m2": "N", "pa": "x86", "sysver": "5.1.2600", "newChannel": "a",
                                 "channel": "b", "s1": "0", "s2": "1", "com": "", "nb": "1", "version": "2.0"},
                                 "record": {"status": "1"}})")["url"],
            "https://statistics.invalid/bastion/instcomp.htm?soft=2023022111&status=1&m=M&m2=N&channel=a&ochannel=b"
            "&version=2.0&sysver=5.1.2600&pa=x86&s1=0&s2=1&com=&nb=1");
}

TEST_F(StatsViewsTest, PathOfTheInstallReport) {
  EXPECT_EQ(Ask("stats.upgrade", R"({"m": "M", "m2": "N", "sysver": "10.0.1", "version": "2.0"})")["path"],
            "/upgrade/install?appname=lumen&mid=M&mid2=N&systemVersion=10.0.1&version=2.0");
  EXPECT_TRUE(Ask("stats.upgrade", R"({"m": "M"})").contains("error"));
}

TEST_F(StatsViewsTest, TriesAndTheirDelays) {
  struct Row {
    const char *input, *output;
  };
  for (const Row& row : {
           Row{R"({"outcomes": [false, false, false, false, false], "retryFlag": true})",
               R"({"tries": 4, "delays_ms": [300000, 600000, 900000]})"},
           Row{R"({"outcomes": [false, true, false], "retryFlag": true})", R"({"tries": 2, "delays_ms": [300000]})"},
           Row{R"({"outcomes": [false, false], "retryFlag": false})", R"({"tries": 1, "delays_ms": []})"},
           Row{R"({"outcomes": [true], "retryFlag": true})", R"({"tries": 1, "delays_ms": []})"},
           Row{R"({"outcomes": [], "retryFlag": true})", R"({"tries": 0, "delays_ms": []})"},
       }) {
    EXPECT_EQ(Ask("stats.retry", row.input), Json::parse(row.output)) << row.input;
  }
}

}  // namespace
}  // namespace vantakit
