#include "report/stats/report_parameters.h"

#include "base/format.h"
#include "base/registry.h"
#include "report/identity/machine_identity.h"
#include "report/probes/browser.h"
#include "report/probes/internet_cafe.h"
#include "report/probes/os_version.h"
#include "report/probes/security_software.h"
#include "report/probes/suite.h"

namespace vanta {
namespace {

// The product's configuration, whose writer is the install engine.
constexpr const WCHAR* kConfigKey = TEXT("Software\\VantaPictor\\Config");

String ReadConfig(const WCHAR* name) {
  String text;
  RegReadString(HKEY_LOCAL_MACHINE, kConfigKey, name, &text);
  return text;
}

String Flag(bool set) { return set ? TEXT("1") : TEXT("0"); }

bool HasOverride(const ReportParameters& parameters) {
  return !parameters.channel_override.empty() || !parameters.second_channel_override.empty();
}

}  // namespace

const String& ReportParameters::FirstChannel() const { return HasOverride(*this) ? channel_override : new_channel; }

const String& ReportParameters::SecondChannel() const { return HasOverride(*this) ? second_channel_override : channel; }

void ProbeReportParameters(ReportParameters* parameters) {
  const OsRecord& os = GetOsVersion();
  parameters->m = MachineIdText();
  parameters->m2 = MachineId2Text();
  parameters->pa = Is64BitOs() ? TEXT("x64") : TEXT("x86");
  parameters->sysver = Format(TEXT("%d.%d.%d"), os.major, os.minor, os.build);
  parameters->new_channel = ReadConfig(TEXT("newChannel"));
  parameters->channel = ReadConfig(TEXT("channel"));
  parameters->s1 = Flag(IsSuiteInstalled());
  parameters->s2 = Flag(DetectBrowser() == BrowserPresent);
  parameters->com = BuildSecuritySoftwareList();
  parameters->nb = Flag(IsInternetCafe());
}

}  // namespace vanta
