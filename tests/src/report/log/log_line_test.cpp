#include "report/log/log_line.h"

#include <gtest/gtest.h>

namespace {

using vanta::String;

TEST(LogLineTest, TimeTagAndMessageMakeALine) {
  EXPECT_EQ(vanta::LogLine(TEXT("2024-03-05 14:07:09"), TEXT("App - SetupHelper"), TEXT("runSetup silent 100%")),
            String(TEXT("2024-03-05 14:07:09 [App - SetupHelper] runSetup silent 100%\r\n")));
  EXPECT_EQ(vanta::LogLine(TEXT(""), TEXT(""), TEXT("")), String(TEXT(" [] \r\n")));
}

TEST(LogLineTest, LongMessagesAreCut) {
  EXPECT_EQ(vanta::LogLine(TEXT("t"), TEXT("g"), String(5000, 'x')),
            String(TEXT("t [g] ")) + String(4095, 'x') + TEXT("\r\n"));
}

TEST(LogLineTest, TimesAreFormattedWithZeros) {
  SYSTEMTIME time = {};
  time.wYear = 2024;
  time.wMonth = 3;
  time.wDay = 5;
  time.wHour = 4;
  EXPECT_EQ(vanta::LogTime(time), String(TEXT("2024-03-05 04:00:00")));
  EXPECT_EQ(vanta::LogTime(SYSTEMTIME()), String());
}

TEST(LogLineTest, FilterPassesTagsThatItContains) {
  const struct {
    const WCHAR* filter;
    const WCHAR* tag;
    bool passes;
  } rows[] = {
      {TEXT(""), nullptr, true},          {TEXT(""), TEXT("a"), true},        {TEXT("EasyCurlApp"), TEXT("App"), true},
      {TEXT("EasyCurl"), nullptr, false}, {TEXT("EasyCurl"), TEXT(""), true}, {TEXT("EasyCurl"), TEXT("easy"), false},
  };
  for (const auto& row : rows) EXPECT_EQ(vanta::LogFilterPasses(row.filter, row.tag), row.passes);
}

}  // namespace
