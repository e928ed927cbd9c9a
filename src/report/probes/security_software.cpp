#include "report/probes/security_software.h"

#include "base/format.h"
#include "base/registry.h"

namespace vanta {
namespace {

struct ProductRow {
  const WCHAR* entry;
  const WCHAR* code;
};

constexpr ProductRow kProducts[] = {
    {TEXT("QQPCMgr"), TEXT("a|")},
    {TEXT("Kingsoft Internet Security"), TEXT("b|")},
    {TEXT("2345PCSafe"), TEXT("c|")},
    {TEXT("HuorongSysdiag"), TEXT("d|")},
};

}  // namespace

bool IsSoftwareInstalled(const String& entry_name) {
  const String key = Format(TEXT("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\%s"), entry_name);
  for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    if (RegKeyExists(root, key, KEY_WOW64_32KEY) || RegKeyExists(root, key, 0)) return true;
  }
  return false;
}

String BuildSecuritySoftwareList() {
  String list;
  for (const ProductRow& product : kProducts) {
    if (IsSoftwareInstalled(product.entry)) list += product.code;
  }
  while (!list.empty() && list.back() == TEXT('|')) list.pop_back();
  return list;
}

}  // namespace vanta
