#include "report/stats/report_url.h"

#include "base/format.h"

namespace vanta {
namespace {

String ExtraQuery(const ReportParameters& p, const RequestRecord& record) {
  return Format(TEXT("/bastion/instcomp.htm?soft=%s&m=%s&m2=%s&pid=%s&ipartner=%s&ver=%s&sysver=%s&pa=%s&s1=%s&s2=%s"
                     "&com=%s&nb=%s&%s"),
                kSoftId, p.m, p.m2, p.FirstChannel(), p.SecondChannel(), p.version, p.sysver, p.pa, p.s1, p.s2, p.com,
                p.nb, record.extra);
}

String StatusQuery(const ReportParameters& p, const RequestRecord& record) {
  return Format(TEXT("/bastion/instcomp.htm?soft=2023022111&status=%s&m=%s&m2=%s&channel=%s&ochannel=%s&version=%s"
                     "&sysver=%s&pa=%s&s1=%s&s2=%s&com=%s&nb=%s"),
                record.status, p.m, p.m2, p.FirstChannel(), p.SecondChannel(), p.version, p.sysver, p.pa, p.s1, p.s2,
                p.com, p.nb);
}

String FieldsQuery(const ReportParameters& p, const RequestRecord& record) {
  return Format(TEXT("/bastion/instcomp.htm?soft=%s&a=%s&b=%s&c=%s&d=%s&e=%s&f=%s&g=%s&m=%s&m2=%s&qd=%s&oqd=%s"
                     "&version=%s&sysver=%s&pa=%s&s1=%s&s2=%s&com=%s&nb=%s"),
                kSoftId, record.a, record.b, record.c, record.d, record.e, record.f, record.g, p.m, p.m2,
                p.FirstChannel(), p.SecondChannel(), p.version, p.sysver, p.pa, p.s1, p.s2, p.com, p.nb);
}

String OnServer(const String& host) { return String(TEXT("https://")).append(host); }

}  // namespace

String StatisticsUrl(const String& host, const ReportParameters& parameters, const RequestRecord& record) {
  const String server = OnServer(host);
  if (!record.extra.empty()) return server + ExtraQuery(parameters, record);
  if (!record.status.empty()) return server + StatusQuery(parameters, record);
  return server + FieldsQuery(parameters, record);
}

String InstallReportEndpoint(const String& host) { return OnServer(host) + TEXT("/upgrade/install"); }

String InstallReportUrl(const String& endpoint, const ReportParameters& parameters) {
  const StringView query[][2] = {{TEXT("appname"), TEXT("lumen")},
                                 {TEXT("mid"), parameters.m},
                                 {TEXT("mid2"), parameters.m2},
                                 {TEXT("systemVersion"), parameters.sysver},
                                 {TEXT("version"), parameters.version}};
  String url = endpoint;
  WCHAR mark = TEXT('?');
  for (const auto& [key, value] : query) {
    url += mark;
    url.append(key).append(TEXT("=")).append(value);
    mark = TEXT('&');
  }
  return url;
}

}  // namespace vanta
