#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "winhost/kernel/object.h"
#include "winhost/machine/faults.h"
#include "winhost/machine/machine.h"

namespace {

struct Token final : winhost::KernelObject {
  explicit Token(DWORD granted) : access(granted) {}
  DWORD access;
};

// As the system lays a SID out.
struct Sid {
  BYTE revision;
  BYTE count;
  BYTE authority[6];
  DWORD sub[8];
};

// What the desktop's shell starts has the user's plain rights, whatever the machine's facts say of the others.
bool Elevated() {
  const char* started = std::getenv("VANTA_ELEVATED");
  return started ? *started == '1' : winhost::Machine::Current().facts().elevated;
}

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL Planned(const char* function) {
  const auto error = winhost::PlannedFault(function);
  return error ? !Fail(*error) : FALSE;
}

template <class T>
BOOL PutInformation(const T& information, LPVOID data, DWORD bytes, PDWORD needed) {
  *needed = sizeof information;
  if (!data || bytes < sizeof information) return Fail(ERROR_INSUFFICIENT_BUFFER);
  std::memcpy(data, &information, sizeof information);
  return TRUE;
}

bool IsGroup(const Sid& sid, BYTE authority, std::initializer_list<DWORD> sub) {
  return sid.authority[5] == authority && sid.count == sub.size() && std::equal(sub.begin(), sub.end(), sid.sub);
}

}  // namespace

BOOL OpenProcessToken(HANDLE process, DWORD access, PHANDLE token) {
  if (Planned("OpenProcessToken")) return FALSE;
  if (!token) return Fail(ERROR_NOACCESS);
  const bool own = process == INVALID_HANDLE_VALUE;  // what GetCurrentProcess answers
  if (!own && !winhost::FindObject(process)) return FALSE;
  *token = winhost::MakeHandle(std::make_shared<Token>(access));
  return TRUE;
}

BOOL GetTokenInformation(HANDLE handle, TOKEN_INFORMATION_CLASS kind, LPVOID data, DWORD bytes, PDWORD needed) {
  if (Planned("GetTokenInformation")) return FALSE;
  const auto token = winhost::ObjectAs<Token>(handle);
  if (!token) return Fail(ERROR_INVALID_HANDLE);
  if (!needed) return Fail(ERROR_NOACCESS);
  if (!(token->access & TOKEN_QUERY)) return Fail(ERROR_ACCESS_DENIED);
  // Before Vista no token knows these classes.
  if (!winhost::Machine::Current().facts().AtLeast(6, 0)) return Fail(ERROR_INVALID_PARAMETER);
  if (kind == TokenElevation) return PutInformation(TOKEN_ELEVATION{Elevated() ? 1U : 0U}, data, bytes, needed);
  if (kind == TokenElevationType) {
    const auto type = Elevated() ? TokenElevationTypeFull : TokenElevationTypeLimited;
    return PutInformation(type, data, bytes, needed);
  }
  return Fail(ERROR_INVALID_PARAMETER);
}

BOOL CheckTokenMembership(HANDLE handle, PSID group, PBOOL member) {
  if (Planned("CheckTokenMembership")) return FALSE;
  if (handle && !winhost::ObjectAs<Token>(handle)) return Fail(ERROR_INVALID_HANDLE);
  if (!group || !member) return Fail(ERROR_INVALID_PARAMETER);
  Sid sid{};
  std::memcpy(&sid, group, 8);
  if (sid.revision != 1 || sid.count > 8) return Fail(ERROR_INVALID_SID);
  std::memcpy(sid.sub, static_cast<const BYTE*>(group) + 8, sid.count * sizeof(DWORD));
  *member = IsGroup(sid, 1, {0}) || IsGroup(sid, 5, {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_USERS}) ||
            (Elevated() && IsGroup(sid, 5, {SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS}));
  return TRUE;
}

BOOL AllocateAndInitializeSid(PSID_IDENTIFIER_AUTHORITY authority, BYTE count, DWORD sub0, DWORD sub1, DWORD sub2,
                              DWORD sub3, DWORD sub4, DWORD sub5, DWORD sub6, DWORD sub7, PSID* sid) {
  if (Planned("AllocateAndInitializeSid")) return FALSE;
  if (!authority || !sid || count > 8) return Fail(ERROR_INVALID_PARAMETER);
  auto* made = new (std::nothrow) Sid{1, count, {}, {sub0, sub1, sub2, sub3, sub4, sub5, sub6, sub7}};
  if (!made) return Fail(ERROR_NOT_ENOUGH_MEMORY);
  std::memcpy(made->authority, authority->Value, sizeof made->authority);
  *sid = made;
  return TRUE;
}

PVOID FreeSid(PSID sid) {
  delete static_cast<Sid*>(sid);
  return nullptr;
}
