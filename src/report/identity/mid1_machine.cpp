#include "report/identity/mid1_machine.h"

#include "report/identity/disk_serial.h"
#include "report/identity/identity_key.h"
#include "report/identity/network_address.h"
#include "report/identity/processor.h"

namespace vanta {
namespace {

constexpr size_t kMostHardware = 4095;

}  // namespace

bool Mid1Machine::ReadStored(size_t room, std::string* text) { return ReadSharedNarrow("mid", room, text); }

std::string Mid1Machine::HardwareString() {
  std::string hardware = ProcessorOfMid1();
  hardware += FirstDiskSerial();
  hardware += LowestNetworkAddress();
  if (hardware.size() > kMostHardware) hardware.resize(kMostHardware);
  return hardware;
}

void Mid1Machine::Write(const char* name, const std::string& text) { WriteSharedNarrow(name, text); }

}  // namespace vanta
