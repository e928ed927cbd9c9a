#include "report/identity/elevation.h"

#include "base/unique.h"

namespace vanta {

bool IsProcessElevated() {
  UniqueHandle token;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.Put())) return false;
  TOKEN_ELEVATION elevation = {};
  DWORD size = 0;
  if (GetTokenInformation(token.Get(), TokenElevation, &elevation, sizeof elevation, &size)) {
    return elevation.TokenIsElevated != 0;
  }
  // What a system answers that does not know the question.
  return GetLastError() == ERROR_INVALID_PARAMETER;
}

}  // namespace vanta
