// Whether a program file is the maker's own, by its embedded Authenticode signature. A file is acceptable when the
// signature verifies over its content and the signer's public key is one of those that the setup was packed with.
#pragma once

#include <windows.h>

#include "base/text.h"
#include "base/unique.h"
#include "report/makerlibs/trust_level.h"

namespace vanta {

struct SignatureResult {
  int status = 0;               // 0 unsigned or unreadable, 1 refused, 2 the maker's own
  LONG level = TrustUndecided;  // as the base library's levels
  bool Accepted() const { return status != 0 && status != 1; }
};

// Opens a file so that nobody can change, replace or delete it while the handle is held. What is checked and then used
// (loaded) is used under one such handle. Invalid, with the last error set, when that is impossible.
UniqueFile OpenForCheck(const String& path);

// `file` comes from OpenForCheck; `path` is its name. Blocks for the time of reading the file. Any thread, COM not
// needed.
SignatureResult CheckFileSignature(HANDLE file, const String& path);
SignatureResult CheckFileSignature(const String& path);

// The file exists and the check accepts it.
bool IsSignedMakerFile(const String& path);

}  // namespace vanta
