// The hardware that a machine's facts name: "disks", "adapters", "netbios", "cpuid" (docs/machine.md). A machine that
// names none of a kind has what a plain one has: one built-in disk, one wired adapter, one processor.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "winhost/devices/answers.h"
#include "winhost/machine/machine.h"

namespace winhost {

using MacAddress = std::array<BYTE, 6>;

struct ScsiPlace {
  unsigned port = 0;
  unsigned target = 0;
};

struct DiskFacts {
  std::string serial;
  std::string model;
  std::string vendor;
  std::string product;  // of the descriptor
  std::string revision;
  std::optional<std::string> descriptor_serial;  // none: the descriptor holds no serial number
  DWORD bus = 0;                                 // STORAGE_BUS_TYPE
  bool removable = false;
  bool atapi = false;
  bool smart = true;
  std::optional<ScsiPlace> scsi;  // also reached through a miniport driver
  Bytes identify;                 // 512 bytes
  Answers answers;
};

struct AdapterFacts {
  std::string id;  // "{…}"
  std::string description;
  std::optional<MacAddress> address;
  std::optional<std::string> bus_type;
  std::optional<std::string> lower_range;
  DWORD type = 6;                     // IANA's interface type
  std::optional<DWORD> medium;        // NDIS_PHYSICAL_MEDIUM; none: the driver does not tell
  std::optional<DWORD> media_in_use;  // NDIS_MEDIUM; none: the driver does not tell
  bool in_class = true;               // has an entry in the device class
  bool is_card = true;                // is one of the network cards
  bool has_device = true;             // "\\.\{…}" can be opened
  bool in_ip_helper = true;
  Answers answers;
};

struct NetbiosFacts {
  BYTE lana = 0;
  MacAddress address = {};
  BYTE reset = 0;  // the return codes of NCBRESET and NCBASTAT
  BYTE status = 0;
};

struct ProcessorFacts {
  std::string vendor;
  DWORD highest = 0;  // leaf
  DWORD signature = 0;
  DWORD features = 0;
  DWORD highest_extended = 0;
  std::string brand;
};

struct Hardware {
  // Throws std::runtime_error naming what is wrong.
  explicit Hardware(const Facts& facts);
  // A machine's own. Facts that are wrong end the program with a message, as a wrong machine.json does.
  static const Hardware& Current();

  std::vector<std::optional<DiskFacts>> disks;  // by drive number; none: no such drive
  std::vector<AdapterFacts> adapters;
  std::vector<NetbiosFacts> netbios;
  std::optional<ProcessorFacts> processor;  // none: CPUID tells nothing
};

}  // namespace winhost
