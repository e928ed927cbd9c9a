#include "tools/vantakit/view/zip_views.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/src/install/zip/zip_builder.h"
#include "tests/support/machine_fixture.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

class ZipViewsTest : public testing_support::OnMachine {
 protected:
  Json Ask(const std::string& archive, Json input = Json::object()) {
    const auto path = folder_ / "a.zip";
    std::ofstream(path, std::ios::binary) << archive;
    Json request = {{"archive", path.string()},
                    {"password", nullptr},
                    {"indices", Json::array()},
                    {"find", Json::array()},
                    {"memory", Json::array()}};
    request.update(input);
    return ZipArchiveView(request);
  }
  zip_testing::ZipBuilder zip_;
};

TEST_F(ZipViewsTest, ArchiveReportsWhatTheReaderSays) {
  zip_.AddDeflated("d/a.txt", "hello").local_extra = zip_testing::UnixTimes(1, {0});
  zip_.AddStored("nul", "x");
  zip_.AddStored("dir/", "").external = 0x10;
  const Json names = Json::parse(R"([["D/A.TXT", true], ["D/A.TXT", false]])");
  const Json output = Ask(zip_.Build(), {{"indices", {0, 1, 2, 9}}, {"find", names}});
  EXPECT_EQ(output["open"], "ok");
  EXPECT_EQ(output["count"], 3);
  EXPECT_EQ(output["find"], (Json{0, -1}));
  const Json& file = output["entries"][0];
  EXPECT_EQ(file["name"], "d/a.txt");
  EXPECT_EQ(file["info"], "ok");
  EXPECT_EQ(file["extract"], "ok");
  EXPECT_EQ(file["attributes"], 32);
  EXPECT_EQ(file["uncompressed"], 5);
  EXPECT_EQ(file["size"], 5);
  EXPECT_EQ(file["sha256"], "2cf24dba5fb0a30e26e83b2ac5b9e29e1b161e5c1fa7425e73043362938b9824");
  EXPECT_EQ(file["times"]["modification"], 116444736000000000u);
  EXPECT_EQ(file["times"]["access"], 133485840000000000u);  // 1 January 2024, 12:00:00 in UTC
  EXPECT_EQ(file["nofile"], false);
  EXPECT_EQ(file["directory"], false);
  EXPECT_EQ(output["entries"][1]["extract"], "ZipNoFile");
  EXPECT_EQ(output["entries"][1]["nofile"], true);
  EXPECT_EQ(output["entries"][2]["extract"], "ok");
  EXPECT_EQ(output["entries"][2]["directory"], true);
  EXPECT_EQ(output["entries"][3]["info"], "ZipArgs");
}

TEST_F(ZipViewsTest, MemoryRunsStandForThemselves) {
  zip_.AddStored("a", "hello");
  const Json output = Ask(zip_.Build(), {{"memory", {{{0, 3}, {0, 3}}, {{0, 5}}, {{1, 5}}}}});
  EXPECT_EQ(output["memory"][0]["codes"], (Json{"ZipMore", "ZipOk"}));
  EXPECT_EQ(output["memory"][0]["bytes"], (Json{3, 2}));
  EXPECT_EQ(output["memory"][1]["codes"], Json::array({"ZipOk"}));
  EXPECT_EQ(output["memory"][1]["sha256"], output["memory"][0]["sha256"]);
  EXPECT_EQ(output["memory"][2]["codes"], Json::array({"ZipArgs"}));
}

TEST_F(ZipViewsTest, WhatIsNoArchiveSaysSo) {
  const Json output = Ask("no archive", {{"indices", {0}}});
  EXPECT_EQ(output["open"], "ZipNoFile");
  EXPECT_EQ(output["entries"], Json::array());
  EXPECT_THROW(ZipArchiveView({{"archive", "/nowhere"}}), std::exception);
}

TEST(ZipFieldViewsTest, AnswerOnTheReadersRules) {
  EXPECT_EQ(ZipSanitiseView({{"name", "C:\\..\\\xE4\xB8\xAD"}}), (Json{{"name", "\xE4\xB8\xAD"}}));
  EXPECT_EQ(ZipAttributesView({{"host", 3}, {"external", 0100644u << 16}}), (Json{{"attributes", 32}}));
  const Json times = ZipTimesView(
      {{"dos_date", 0x5821}, {"dos_time", 0x6000}, {"bias_minutes", 60}, {"local_extra", "555405000200000000"}});
  EXPECT_EQ(times, (Json{{"modification", 133485876000000000u},
                         {"access", 116444736000000000u},
                         {"creation", 133485876000000000u}}));
}

TEST(ZipFieldViewsTest, ImpossibleFieldsAreRefused) {
  EXPECT_THROW(ZipAttributesView({{"host", 256}, {"external", 0}}), std::exception);
  EXPECT_THROW(ZipAttributesView({{"host", 3}}), std::exception);
  const Json bad = {{"dos_date", 0}, {"dos_time", 0}, {"bias_minutes", 0}, {"local_extra", "5g"}};
  EXPECT_THROW(ZipTimesView(bad), std::exception);
}

}  // namespace
}  // namespace vantakit
