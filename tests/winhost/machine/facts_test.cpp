#include "winhost/machine/facts.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace winhost {
namespace {

TEST(FactsTest, AnEmptyFileIsAPlainElevatedWindows10) {
  const Facts facts = ParseFacts("{}");
  EXPECT_TRUE(facts.AtLeast(10, 0));
  EXPECT_FALSE(facts.AtLeast(10, 1));
  EXPECT_EQ(facts.windows_bits, 64);
  EXPECT_EQ(facts.process_bits, 32);
  EXPECT_TRUE(facts.elevated);
}

TEST(FactsTest, VersionsHaveNames) {
  struct Row {
    const char* name;
    std::uint32_t major, minor;
  };
  for (const Row& row : {Row{"xp", 5, 1}, Row{"vista", 6, 0}, Row{"7", 6, 1}, Row{"8.1", 6, 3}, Row{"11", 10, 0}}) {
    const Facts facts = ParseFacts(std::string("{\"version\": \"") + row.name + "\"}");
    EXPECT_EQ(facts.version.major, row.major) << row.name;
    EXPECT_EQ(facts.version.minor, row.minor) << row.name;
  }
}

TEST(FactsTest, WhatIsMisspeltOrImpossibleIsRefused) {
  for (const char* wrong : {"", "[]", "{", R"({"elevatd": true})", R"({"version": "95"})", R"({"elevated": 3})",
                            R"({"version": {"major": 6, "patch": 1}})", R"({"windows_bits": 16})",
                            R"({"windows_bits": 32, "process_bits": 64})", R"({"clock": {"speed": 0}})",
                            R"({"faults": [{"nth": 2}]})", R"({"drives": {"D": {"free": 1}}})"}) {
    EXPECT_THROW(ParseFacts(wrong), std::runtime_error) << wrong;
  }
}

TEST(FactsTest, CommentsAreAllowed) { EXPECT_EQ(ParseFacts("{\"dpi\": 144 /* 150 % */}").dpi, 144); }

}  // namespace
}  // namespace winhost
