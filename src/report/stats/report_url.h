// The URL that a report is: everything it says stands in its query. Values go in as they are, without encoding. Pure.
#pragma once

#include "report/stats/report_parameters.h"
#include "report/stats/request_record.h"

namespace vanta {

// On the statistics host, which may name a port ("host:8443"). Which query it is decides the record: the one with an
// extra query, else the one with a status, else the one of its fields a to g.
String StatisticsUrl(const String& host, const ReportParameters& parameters, const RequestRecord& record);

// Where install reports go on the upgrade host, which may name a port.
String InstallReportEndpoint(const String& host);

// The endpoint's URL or path with the query of the install report behind it, keys in their order.
String InstallReportUrl(const String& endpoint, const ReportParameters& parameters);

}  // namespace vanta
