// Views of the archive reader. Each takes a request's input and gives its output; nlohmann::json::exception or
// std::runtime_error for a missing or impossible field. Names of errors are those of ZipError.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace vantakit {

// {"archive": Linux path, "password": text or null, "indices": [index …], "find": [[name, ignoreCase] …],
//  "memory": [[[index, bufferLength] …] …]} → {"open", "count", "entries", "find", "memory"}. Every index is extracted
// into an empty folder of the machine; every list of "memory" is a run of ExtractToMemory calls on a fresh reader.
nlohmann::json ZipArchiveView(const nlohmann::json& input);

// {"dos_date", "dos_time", "bias_minutes", "local_extra": hex} → {"modification", "access", "creation"}: FILETIME
// numbers
nlohmann::json ZipTimesView(const nlohmann::json& input);

// {"host", "external"} → {"attributes"}
nlohmann::json ZipAttributesView(const nlohmann::json& input);

// {"name"} → {"name"}
nlohmann::json ZipSanitiseView(const nlohmann::json& input);

}  // namespace vantakit
