// What a walk can wait for.
#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>

namespace vantakit {

// Asked about what Look() gave.
using Condition = std::function<bool(const nlohmann::ordered_json& seen)>;

// "page NAME", "open", "message", "no message", "tip", "no tip", "folder", "no folder", "progress N" (at least),
// "enabled NAME", "disabled NAME", "minimised", "active", "file PATH" (of the machine). Throws Failure for others.
Condition ParseCondition(const std::string& text);

}  // namespace vantakit
