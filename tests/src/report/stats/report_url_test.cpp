#include "report/stats/report_url.h"

#include <gtest/gtest.h>

namespace vanta {
namespace {

ReportParameters Sample() {
  ReportParameters p;
  p.m = TEXT("M");
  p.m2 = TEXT("MM");
  p.pa = TEXT("x64");
  p.sysver = TEXT("10.0.1");
  p.new_channel = TEXT("new");
  p.channel = TEXT("old");
  p.s1 = TEXT("1");
  p.s2 = TEXT("0");
  p.com = TEXT("a|c");
  p.nb = TEXT("0");
  p.version = TEXT("1.2.3.4");
  return p;
}

std::string Url(const ReportParameters& parameters, const RequestRecord& record) {
  return ToUtf8(StatisticsUrl(TEXT("s.example:8443"), parameters, record));
}

TEST(ReportUrlTest, StatusReport) {
  RequestRecord record;
  record.status = TEXT("2");
  EXPECT_EQ(Url(Sample(), record),
            "https://s.example:8443/bastion/instcomp.htm?soft=2023022111&status=2&m=M&m2=MM&channel=new&ochannel=old"
            "&version=1.2.3.4&sysver=10.0.1&pa=x64&s1=1&s2=0&com=a|c&nb=0");
}

TEST(ReportUrlTest, ExtraQueryWinsOverEverything) {
  RequestRecord record;
  record.status = TEXT("2");
  record.a = TEXT("A");
  record.extra = TEXT("x=1&y=2");
  EXPECT_EQ(Url(Sample(), record),
            "https://s.example:8443/bastion/instcomp.htm?soft=2023022111&m=M&m2=MM&pid=new&ipartner=old&ver=1.2.3.4"
            "&sysver=10.0.1&pa=x64&s1=1&s2=0&com=a|c&nb=0&x=1&y=2");
}

TEST(ReportUrlTest, FieldsWhenThereIsNeither) {
  RequestRecord record;
  record.a = TEXT("A");
  record.g = TEXT("%s&");
  EXPECT_EQ(Url(Sample(), record),
            "https://s.example:8443/bastion/instcomp.htm?soft=2023022111&a=A&b=&c=&d=&e=&f=&g=%s&&m=M&m2=MM&qd=new"
            "&oqd=old&version=1.2.3.4&sysver=10.0.1&pa=x64&s1=1&s2=0&com=a|c&nb=0");
}

TEST(ReportUrlTest, EitherOverrideReplacesBothChannels) {
  struct Row {
    const WCHAR *first, *second;
    const char* query;
  };
  RequestRecord record;
  record.status = TEXT("0");
  for (const Row& row :
       {Row{TEXT(""), TEXT(""), "&channel=new&ochannel=old&"},
        Row{TEXT("one"), TEXT("two"), "&channel=one&ochannel=two&"},
        Row{TEXT("one"), TEXT(""), "&channel=one&ochannel=&"}, Row{TEXT(""), TEXT("two"), "&channel=&ochannel=two&"}}) {
    ReportParameters parameters = Sample();
    parameters.channel_override = row.first;
    parameters.second_channel_override = row.second;
    EXPECT_NE(Url(parameters, record).find(row.query), std::string::npos) << row.query;
  }
}

TEST(ReportUrlTest, InstallReportHasItsKeysInOrder) {
  EXPECT_EQ(ToUtf8(InstallReportUrl(InstallReportEndpoint(TEXT("u.example")), Sample())),
            "https://u.example/upgrade/install?appname=lumen&mid=M&mid2=MM&systemVersion=10.0.1&version=1.2.3.4");
}

TEST(RetryPlanTest, FiveTenAndFifteenMinutes) {
  RequestRecord record;
  record.retry = true;
  for (const DWORD delay : {300000u, 600000u, 900000u}) {
    EXPECT_TRUE(PlanRetry(&record));
    EXPECT_EQ(record.delay, delay);
  }
  EXPECT_FALSE(PlanRetry(&record));
  EXPECT_EQ(record.retry_count, 3u);
}

TEST(RetryPlanTest, WithoutTheFlagNever) {
  RequestRecord record;
  EXPECT_FALSE(PlanRetry(&record));
  EXPECT_EQ(record.delay, 0u);
}

}  // namespace
}  // namespace vanta
