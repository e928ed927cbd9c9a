// Views of the install statistics: what would be sent where, and when again.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"params": {"m", "m2", "pa", "sysver", "newChannel", "channel", "s1", "s2", "com", "nb", "channelOverride",
//   "secondChannelOverride", "version"}, "record": {"a" … "g", "extra", "status"}} → {"url"}, on the statistics host of
// a setup that is not packed. A field that is left out is empty.
nlohmann::json StatsUrlView(const nlohmann::json& input);
// {"m", "m2", "sysver", "version"} → {"path"}
nlohmann::json StatsUpgradeView(const nlohmann::json& input);
// {"outcomes": [whether each try succeeds, in order], "retryFlag"} → {"tries", "delays_ms": before each retry}. What
// would come after the last outcome is not counted as a try.
nlohmann::json StatsRetryView(const nlohmann::json& input);

}  // namespace vantakit
