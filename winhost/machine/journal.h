// Journals: what happened on a machine, in the order it happened, one JSON object a line in <machine>/<name>.jsonl.
// `vantakit machine show` reads them. Names in use: launches, deferred, messages, debugger, exits.
#pragma once

#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace winhost {

// Appends one line in one write, so that several processes may append at once. Adds the "pid" of this process.
void WriteJournal(std::string_view name, nlohmann::json entry);

}  // namespace winhost
