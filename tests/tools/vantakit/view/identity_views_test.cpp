#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"
#include "tools/vantakit/view/views.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

class IdentityViewsTest : public testing_support::OnMachine {
 protected:
  Json Ask(const char* op, const Json& input) {
    const Json answer = Json::parse(AnswerLine(Json{{"id", 1}, {"op", op}, {"input", input}}.dump()));
    return answer.contains("output") ? answer["output"] : answer["error"];
  }
};

TEST_F(IdentityViewsTest, HashAndCrc) {
  EXPECT_EQ(Ask("identity.hash", {{"hex", "AB"}}), Json::parse(R"({"hash": "1bd71411a70f0c8f279401da65d34276"})"));
  EXPECT_EQ(Ask("identity.crc8", {{"text", "abc"}}), Json::parse(R"({"crc": "42"})"));
  EXPECT_EQ(Ask("identity.hash", {{"hex", "A"}}), "bad hexadecimal digits");
}

TEST_F(IdentityViewsTest, StoredMidIsReplacedAndKept) {
  const Json answer = Ask("identity.mid", {{"stored", "x"}, {"hardware", ""}});
  EXPECT_EQ(answer["writes"][0], Json::parse(R"(["mid_old", "x"])"));
  EXPECT_EQ(answer["writes"][1][0], "mid");
  EXPECT_EQ(answer["writes"].size(), 2u);
  const std::string stored = answer["writes"][1][1];
  EXPECT_EQ(stored.substr(0, 32), answer["mid"]);
  EXPECT_EQ(Ask("identity.mid", {{"stored", stored}, {"hardware", "other"}}),
            (Json{{"mid", answer["mid"]}, {"writes", Json::array()}}));
  EXPECT_EQ(Ask("identity.mid", {{"stored", nullptr}, {"hardware", "Mid2Failed"}})["mid"], answer["mid"]);
}

TEST_F(IdentityViewsTest, M2TellsItsWaitsAndRandomForm) {
  Json input = Json::parse(R"({"cached": "", "elevated": true, "device": "absent", "first": ["", "", "p"],
      "second": ["", "", ""], "guid": "000102030405060708090a0b0c0d0e0f"})");
  Json answer = Ask("identity.m2", input);
  EXPECT_EQ(answer["m2"].get<std::string>().substr(0, 42), "ffffffff000102030405060708090a0b0c0d0e0f10");
  EXPECT_EQ(answer["waits"], 1);
  EXPECT_EQ(answer["writes"], Json::array({Json::array({"m2", answer["m2"]})}));
  input["guid"] = "";
  EXPECT_EQ(Ask("identity.m2", input)["m2"].get<std::string>().substr(0, 42), std::string(40, '0') + "10");
  input["device"] = "perhaps";
  EXPECT_EQ(Ask("identity.m2", input), "device: absent, yes or no");
}

TEST_F(IdentityViewsTest, MachineItLivesOnTellsEverything) {
  Start(R"({"registry": {"HKLM\\Software\\Bastion\\Freshen": {"m2": "old"}}})");
  const Json answer = Ask("machine.identity", {{"machine", folder_.string()}});
  EXPECT_EQ(answer["hardware"], "GenuineIntel:bfebfbffS0VP000000000001025650000001");
  EXPECT_EQ(answer["mid"], "42a83fe878c3eff817f46ff45ccc6480");
  EXPECT_EQ(answer["m2"], "e311a99ec7a62503c87bda02da37993218ca29e82b79");
  EXPECT_EQ(answer["writes"].size(), 3u);
  EXPECT_EQ(answer["writes"][0][0], "mid");
  EXPECT_EQ(answer["writes"][1], Json::parse(R"(["m2_old", "old"])"));
  EXPECT_EQ(answer["writes"][2], Json::array({"m2", answer["m2"]}));
}

}  // namespace
}  // namespace vantakit
