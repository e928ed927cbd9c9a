// The maker's optional crash reporter "CrashReport.dll". Absence of the file, of trust in it or of an export is silent.
#pragma once

namespace vanta {

// Loads the library and calls its export Initialize. Trust comes first: with the maker's base library at hand the file
// needs that library's highest level, without it the maker's signature.
void StartCrashReporter();

// Calls the export OnExiting of the loaded library, under the same condition.
void TellCrashReporterExiting();

}  // namespace vanta
