// What every report says of the machine and of the installation.
#pragma once

#include "base/text.h"

namespace vanta {

inline constexpr const WCHAR* kSoftId = TEXT("2023022111");

struct ReportParameters {
  // Probed once, when the sender is first used.
  String m;
  String m2;
  String pa;      // "x64" or "x86"
  String sysver;  // "10.0.19045"
  String new_channel;
  String channel;
  String s1;   // "1": the maker's security suite is here
  String s2;   // "1": the maker's browser is here
  String com;  // codes of other security products, "a|c"
  String nb;   // "1": internet-café software is here

  // Set by whoever drives the setup.
  String channel_override;
  String second_channel_override;
  String version;

  // The two overrides when at least one of them is set, otherwise the registry's "newChannel" and "channel".
  const String& FirstChannel() const;
  const String& SecondChannel() const;
};

// Asks the machine for the probed fields and leaves the others alone. Takes as long as the probes do; the machine's
// identifiers may be computed and stored by this.
void ProbeReportParameters(ReportParameters* parameters);

}  // namespace vanta
