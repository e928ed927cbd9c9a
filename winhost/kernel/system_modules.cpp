#include "winhost/kernel/system_modules.h"

#include <algorithm>
#include <string>

#include "winhost/kernel/exports.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr SystemModule kModules[] = {
    {u"advapi32.dll", true, true},       {u"comctl32.dll", true, false},
    {u"crypt32.dll", true, false},       {u"dwmapi.dll", false, false, 6, 0},
    {u"gdi32.dll", true, true},          {u"gdiplus.dll", false, false, 5, 1},
    {u"imm32.dll", true, true},          {u"iphlpapi.dll", false, false},
    {u"kernel32.dll", true, true},       {u"kernelbase.dll", true, true, 6, 1},
    {u"mstask.dll", false, false},       {u"msvcrt.dll", true, true},
    {u"netapi32.dll", false, false},     {u"ntdll.dll", true, true},
    {u"ole32.dll", true, true},          {u"oleaut32.dll", true, true},
    {u"psapi.dll", true, true},          {u"setupapi.dll", false, true},
    {u"shcore.dll", false, false, 6, 3}, {u"shell32.dll", true, true},
    {u"shlwapi.dll", true, true},        {u"taskschd.dll", false, false, 6, 0},
    {u"user32.dll", true, true},         {u"uxtheme.dll", false, false, 5, 1},
    {u"version.dll", true, false},       {u"wininet.dll", false, false},
    {u"winmm.dll", false, false},        {u"wintrust.dll", true, false},
    {u"ws2_32.dll", false, true},
};

bool IsMissing(const SystemModule& module, std::string_view name, const Facts& facts) {
  return std::ranges::any_of(facts.missing_exports, [&](const std::string& missing) {
    const std::size_t mark = missing.find('!');
    return mark != std::string::npos && EqualNoCase(Wide(missing.substr(0, mark)), module.name) &&
           missing.substr(mark + 1) == name;
  });
}

}  // namespace

const SystemModule* FindSystemModule(std::u16string_view name, const Facts& facts) {
  for (const SystemModule& module : kModules) {
    if (EqualNoCase(module.name, name))
      return facts.AtLeast(module.since_major, module.since_minor) ? &module : nullptr;
  }
  return nullptr;
}

std::vector<const SystemModule*> StartModules(const Facts& facts) {
  std::vector<const SystemModule*> modules;
  for (const SystemModule& module : kModules) {
    if (module.at_start && FindSystemModule(module.name, facts)) modules.push_back(&module);
  }
  return modules;
}

FARPROC FindSystemExport(const SystemModule& module, std::string_view name, const Facts& facts) {
  if (IsMissing(module, name, facts)) return nullptr;
  for (const auto& rows : BuiltInExports()) {
    for (const BuiltInExport& row : rows) {
      if (name != row.name || !EqualNoCase(Wide(row.module), module.name)) continue;
      return !row.present || row.present(facts) ? row.function : nullptr;
    }
  }
  return nullptr;
}

}  // namespace winhost
