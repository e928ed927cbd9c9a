#include "report/identity/adapter_class.h"

#include <wchar.h>

#include "report/identity/registry_walk.h"

namespace vanta {
namespace {

constexpr WCHAR kClass[] = TEXT("SYSTEM\\CurrentControlSet\\Control\\Class\\{4D36E972-E325-11CE-BFC1-08002BE10318}");
constexpr DWORD kMostEntries = 256;
constexpr long kInternalBus = 0;
constexpr long kPciBus = 5;
constexpr DWORD kEthernet = 6;  // IANA's interface type

String Lowered(String text) {
  for (WCHAR& c : text) c = AsciiLower(c);
  return text;
}

bool Contains(const String& text, StringView wanted) { return text.find(wanted) != String::npos; }

bool SaysWireless(const String& entry, const String& description) {
  if (Contains(Lowered(description), TEXT("wireless"))) return true;
  String range;
  ReadMachineText(entry + TEXT("\\Ndi\\Interfaces"), TEXT("LowerRange"), &range);
  return Contains(range, TEXT("wlan")) || Contains(range, TEXT("vwifi"));
}

// The network adapter that Windows itself gives a virtual machine sits on no bus of the class.
bool IsSystemsEthernet(const String& entry, const String& description) {
  DWORD type = 0;
  return Lowered(description).starts_with(TEXT("microsoft")) && ReadMachineDword(entry, TEXT("*IfType"), &type) &&
         type == kEthernet;
}

void Judge(const String& entry, ClassAdapter* adapter) {
  String bus, description;
  if (!ReadMachineText(entry, TEXT("BusType"), &bus)) return;
  ReadMachineText(entry, TEXT("DriverDesc"), &description);
  const long number = wcstol(bus.c_str(), nullptr, 10);
  adapter->physical = number == kPciBus || (number == kInternalBus && IsSystemsEthernet(entry, description));
  adapter->wireless = number == kPciBus && SaysWireless(entry, description);
}

}  // namespace

std::vector<ClassAdapter> ReadAdapterClass() {
  std::vector<ClassAdapter> adapters;
  const String root = kClass;
  for (const String& name : SubKeysOf(root, kMostEntries)) {
    const String entry = root + TEXT('\\') + name;
    ClassAdapter adapter;
    if (!ReadMachineText(entry, TEXT("NetCfgInstanceId"), &adapter.id) || adapter.id.empty()) continue;
    Judge(entry, &adapter);
    adapters.push_back(std::move(adapter));
  }
  return adapters;
}

const ClassAdapter* FindAdapter(const std::vector<ClassAdapter>& adapters, const String& id) {
  for (const ClassAdapter& adapter : adapters) {
    if (EqualNoCase(adapter.id, id)) return &adapter;
  }
  return nullptr;
}

}  // namespace vanta
