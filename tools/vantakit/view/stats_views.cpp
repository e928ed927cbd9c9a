#include "tools/vantakit/view/stats_views.h"

#include "base/deployment.h"
#include "report/stats/report_url.h"
#include "tools/vantakit/view/json_text.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;
using vanta::ReportParameters;
using vanta::RequestRecord;

template <class Object>
struct FieldRow {
  const char* name;
  vanta::String Object::*field;
};

constexpr FieldRow<ReportParameters> kParameters[] = {
    {"m", &ReportParameters::m},
    {"m2", &ReportParameters::m2},
    {"pa", &ReportParameters::pa},
    {"sysver", &ReportParameters::sysver},
    {"newChannel", &ReportParameters::new_channel},
    {"channel", &ReportParameters::channel},
    {"s1", &ReportParameters::s1},
    {"s2", &ReportParameters::s2},
    {"com", &ReportParameters::com},
    {"nb", &ReportParameters::nb},
    {"channelOverride", &ReportParameters::channel_override},
    {"secondChannelOverride", &ReportParameters::second_channel_override},
    {"version", &ReportParameters::version},
};

constexpr FieldRow<RequestRecord> kRecord[] = {
    {"a", &RequestRecord::a}, {"b", &RequestRecord::b},         {"c", &RequestRecord::c},
    {"d", &RequestRecord::d}, {"e", &RequestRecord::e},         {"f", &RequestRecord::f},
    {"g", &RequestRecord::g}, {"extra", &RequestRecord::extra}, {"status", &RequestRecord::status},
};

template <class Object, size_t N>
Object Read(const Json& json, const FieldRow<Object> (&rows)[N]) {
  Object object;
  for (const FieldRow<Object>& row : rows) {
    if (json.contains(row.name) && !json[row.name].is_null()) object.*row.field = TextOf(json, row.name);
  }
  return object;
}

}  // namespace

Json StatsUrlView(const Json& input) {
  const auto parameters = Read(input.at("params"), kParameters);
  const auto record = Read(input.at("record"), kRecord);
  return {{"url", vanta::ToUtf8(vanta::StatisticsUrl(vanta::Deployment().statistics_host, parameters, record))}};
}

Json StatsUpgradeView(const Json& input) {
  for (const char* field : {"m", "m2", "sysver", "version"}) input.at(field).get_ref<const std::string&>();
  const auto parameters = Read(input, kParameters);
  return {{"path", vanta::ToUtf8(vanta::InstallReportUrl(TEXT("/upgrade/install"), parameters))}};
}

Json StatsRetryView(const Json& input) {
  RequestRecord record;
  record.retry = input.at("retryFlag").get<bool>();
  int tries = 0;
  Json delays = Json::array();
  for (const Json& succeeded : input.at("outcomes")) {
    ++tries;
    if (succeeded.get<bool>() || !vanta::PlanRetry(&record)) break;
    delays.push_back(record.delay);
  }
  return {{"tries", tries}, {"delays_ms", delays}};
}

}  // namespace vantakit
