// A step of a script: {"KIND": what, "timeout": seconds}.
#pragma once

#include <chrono>
#include <nlohmann/json_fwd.hpp>
#include <string>

namespace vantakit {

// Throws WrongArguments unless the text is one step of a known kind with nothing else in it.
nlohmann::ordered_json ParseStep(const std::string& text);
// The step's kind.
std::string KindOf(const nlohmann::ordered_json& step);
// How long it may take, in real time.
std::chrono::milliseconds TimeoutOf(const nlohmann::ordered_json& step);
// Whether the step does something, in which case the setup may end of it.
bool IsAction(const nlohmann::ordered_json& step);
// The lines of the help that list the kinds.
std::string ListKinds();

}  // namespace vantakit
