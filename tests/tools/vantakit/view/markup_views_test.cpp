#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tools/vantakit/view/views.h"

namespace {

using Json = nlohmann::json;

// What the view answers; its "error" as text when it refuses.
Json Ask(const char* op, const Json& input) {
  const Json answer = Json::parse(vantakit::AnswerLine(Json{{"id", 1}, {"op", op}, {"input", input}}.dump()));
  return answer.contains("output") ? answer["output"] : answer["error"];
}

TEST(MarkupViewsTest, LoadPrintsVerdictLogAndTree) {
  EXPECT_EQ(Ask("markup.load", {{"text", "<r a='&lt;'><b/>text<b c=\"1\"/></r>"}}),
            Json::parse(
                R"({"ok": true, "log": [], "tree": [["r", [["a", "<"]], [["b", [], []], ["b", [["c", "1"]], []]]]]})"));
  EXPECT_EQ(Ask("markup.load", {{"text", "<a><b></a></c><d/>"}}),
            Json::parse(R"({"ok": false, "log": ["unended_start_tag", "lone_end_tag", "root_has_sibling"],
                            "tree": [["a", [], [["b", [], []]]], ["d", [], []]]})"));
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<a>";
  EXPECT_TRUE(Ask("markup.load", {{"text", deep}}).is_string()) << "an error, no crash";
}

TEST(MarkupViewsTest, NavigateAnswersInOrder) {
  const Json ops = Json::parse(R"([["TagName"], ["NextElement", ""], ["NextElement", "x"], ["NextChild", "b"],
                                   ["EnterChild"], ["TagName"], ["AttributeAt", 0], ["AttributeAt", 1],
                                   ["AttributeAt", -1], ["LeaveElement"], ["NextChild", null], ["Rewind"]])");
  EXPECT_EQ(Ask("markup.navigate", {{"text", "<r><a/><b c='1'/></r>"}, {"ops", ops}})["results"],
            Json::parse(R"(["", true, false, true, null, "b", ["c", "1"], null, null, null, false, null])"));
}

TEST(GlobalsViewsTest, LoadAnswersCodesAndQueries) {
  const Json input = {
      {"xml",
       "<Global><Font id='f' name='system' size='12' bold='1' default='1'/><X/><Color name='c' value='#ff010203'/>"
       "<Color name='c' value='#0'/><Theme name='t' x='1' theme='u'/><Theme name='u' y='2'/></Global>"},
      {"os_major", 5},
      {"queries", Json::parse(R"([["font", "", 150], ["font", "g", 100], ["color", "c"], ["theme", "t"], ["default"],
                                  ["apply", [["a", "0"], ["theme", "u t"]]]])")}};
  const Json output = Ask("globals.load", input);
  EXPECT_EQ(output["codes"], Json::parse("[0, null, 0, 2, 0, 0]"));
  const Json& results = output["results"];
  EXPECT_EQ(results[0]["face"], "\xE6\x96\xB0\xE5\xAE\x8B\xE4\xBD\x93");
  EXPECT_EQ(results[0]["height"], -18);
  EXPECT_EQ(results[0]["weight"], 1100);
  EXPECT_EQ(results[0]["italic"], false);
  EXPECT_EQ(results[0]["charset"], 1);
  EXPECT_EQ(results[0]["cacheKey"], "f_factor_150");
  EXPECT_EQ(results[0]["cacheHash"], Ask("globals.hash", {{"text", "f_factor_150"}})["hash"]);
  EXPECT_EQ(results[1], nullptr);
  EXPECT_EQ(results[2], 0xFF010203u);
  EXPECT_EQ(results[3], "x=\"1\" theme=\"u\"");
  EXPECT_EQ(results[4], "f");
  EXPECT_EQ(results[5], Json::parse(R"([["a", "0"], ["y", "2"], ["x", "1"], ["y", "2"]])"));
  EXPECT_EQ(Ask("globals.attributeList", {{"list", "a=\"1\" b=\"2\"  c=\"3\""}})["pairs"],
            Json::parse(R"([["a", "1"], ["b", "2"]])"));
}

}  // namespace
