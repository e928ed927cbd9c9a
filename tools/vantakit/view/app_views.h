// Views of the command line: what a start's options and channel are.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"cmdline", "posixly_correct"} → {"argv", "store"}
nlohmann::json CmdlineParseView(const nlohmann::json& input);
// {"cmdline", "posixly_correct", "module", "newChannel"} → {"channel", "installer_channel"}
nlohmann::json CmdlineChannelView(const nlohmann::json& input);
// {"cmdline", "ops": [["has", name(, value)], ["get", name], ["set", name, value], ["remove", name], …]} →
// {"results" (null for set and remove), "store"}
nlohmann::json CmdlineStoreView(const nlohmann::json& input);

}  // namespace vantakit
