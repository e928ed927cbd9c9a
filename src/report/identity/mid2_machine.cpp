#include "report/identity/mid2_machine.h"

#include <objbase.h>

#include "report/identity/disk_string.h"
#include "report/identity/elevation.h"
#include "report/identity/identity_key.h"
#include "report/identity/physical_address.h"
#include "report/identity/processor.h"

namespace vanta {
namespace {

constexpr DWORD kWaitMs = 500;

}  // namespace

String Mid2Machine::ReadCached() { return ReadShared64(TEXT("m2")); }

bool Mid2Machine::IsElevated() { return IsProcessElevated(); }

SelfProtection Mid2Machine::AskProtection() { return AskSelfProtection(); }

std::string Mid2Machine::Processor() { return ProcessorOfMid2(); }

void Mid2Machine::Collect(Mid2Hardware* hardware) {
  if (hardware->address.empty()) hardware->address = PhysicalNetworkAddress();
  if (hardware->disk.empty()) hardware->disk = FirstDiskString();
}

void Mid2Machine::Wait() { Sleep(kWaitMs); }

std::optional<GUID> Mid2Machine::RandomValue() {
  GUID random = {};
  if (FAILED(CoCreateGuid(&random))) return std::nullopt;
  return random;
}

void Mid2Machine::Write(const WCHAR* name, const String& text) { WriteShared64(name, text); }

}  // namespace vanta
