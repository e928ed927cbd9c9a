// Views of windows: where controls are, and what a press at a point does.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"
#include "tools/vantakit/view/views.h"

namespace {

using Json = nlohmann::json;

class WindowViewsTest : public testing_support::OnMachine {
 protected:
  void SetUp() override { Start(); }
  Json Ask(const char* op, const Json& input) {
    const Json answer = Json::parse(vantakit::AnswerLine(Json{{"id", 1}, {"op", op}, {"input", input}}.dump()));
    return answer.contains("output") ? answer["output"] : answer["error"];
  }
};

TEST_F(WindowViewsTest, RectsOfPagesThatWereNeverShownAreThoseThatTheyWouldHave) {
  const char* const layout =
      "<Window size='200,100'><TabBox name='tabs' padding='10,10,10,10' selectedid='1'>"
      "<VBox name='first'><Label name='top' height='30'/><TabBox name='inner'><Label name='a' margin='1,1,1,1'/>"
      "<Label name='b' width='40' height='20' halign='right'/></TabBox></VBox>"
      "<VBox name='second'><Control/><Label name='bottom' height='24'/></VBox></TabBox></Window>";
  EXPECT_EQ(Ask("layout.rects", {{"xml", layout}, {"scale", 100}}), Json::parse(R"({"client": [200, 100], "rects": {
                "tabs": [0, 0, 200, 100], "first": [10, 10, 190, 90], "top": [10, 10, 190, 40],
                "inner": [10, 40, 190, 90], "a": [11, 41, 189, 89], "b": [150, 40, 190, 60],
                "second": [10, 10, 190, 90], "bottom": [10, 66, 190, 90]}})"));
}

TEST_F(WindowViewsTest, HitAnswersAsTheWindowDoes) {
  const struct {
    int x, y, scale;
    bool maximised;
    Json control;
    const char* hit;
  } rows[] = {
      {2, 2, 100, false, nullptr, "topleft"},     {300, 5, 100, false, nullptr, "top"},
      {593, 5, 100, false, nullptr, "topright"},  {4, 200, 100, false, nullptr, "left"},
      {593, 200, 100, false, nullptr, "right"},   {0, 399, 100, false, nullptr, "bottomleft"},
      {300, 399, 100, false, nullptr, "bottom"},  {599, 399, 100, false, nullptr, "bottomright"},
      {2, 2, 100, true, "Label", "caption"},      {300, 100, 100, false, "Label", "caption"},
      {300, 100, 100, false, "Button", "client"}, {300, 100, 100, false, "CheckBox", "caption"},
      {300, 100, 100, false, nullptr, "client"},  {300, 300, 100, false, "Label", "client"},
      {300, 300, 150, false, "Label", "caption"}, {300, -1, 100, false, "Label", "client"},
  };
  for (const auto& row : rows) {
    const Json input = {{"client", {0, 0, 600, 400}}, {"point", {row.x, row.y}}, {"sizebox", {5, 6, 7, 8}},
                        {"caption", {0, 0, 0, 280}},  {"scale", row.scale},      {"maximised", row.maximised},
                        {"control", row.control}};
    EXPECT_EQ(Ask("window.hit", input), (Json{{"hit", row.hit}})) << input;
  }
  EXPECT_TRUE(Ask("window.hit", {{"client", {600, 400}},
                                 {"point", {1, 1}},
                                 {"sizebox", {0, 0, 0, 0}},
                                 {"caption", {0, 0, 0, 0}},
                                 {"scale", 100},
                                 {"maximised", false},
                                 {"control", "Knob"}})
                  .is_string());
}

}  // namespace
