#include "winhost/devices/disk_facts.h"

#include <windows.h>

#include <winioctl.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "winhost/devices/fact_fields.h"

namespace winhost {
namespace {

using Json = nlohmann::json;
constexpr std::size_t kIdentify = 512;
constexpr std::size_t kSerialBytes = 20;
constexpr const char* kRequests[] = {"version", "identify", "descriptor", "miniport"};

struct BusName {
  const char* name;
  DWORD bus;
};
constexpr BusName kBuses[] = {
    {"unknown", BusTypeUnknown}, {"scsi", BusTypeScsi},
    {"atapi", BusTypeAtapi},     {"ata", BusTypeAta},
    {"1394", BusType1394},       {"usb", BusTypeUsb},
    {"raid", BusTypeRAID},       {"sas", BusTypeSas},
    {"sata", BusTypeSata},       {"sd", BusTypeSd},
    {"mmc", BusTypeMmc},         {"virtual", BusTypeVirtual},
    {"nvme", BusTypeNvme},       {"file_backed_virtual", BusTypeFileBackedVirtual},
};

DWORD ParseBus(const Json& fact) {
  if (fact.is_number_unsigned()) return fact.get<DWORD>();
  for (const BusName& row : kBuses) {
    if (fact == row.name) return row.bus;
  }
  throw std::runtime_error("no bus of that name");
}

bool IsAtaBus(DWORD bus) { return bus == BusTypeAta || bus == BusTypeAtapi || bus == BusTypeSata; }

std::string Padded(std::string text, std::size_t bytes) {
  text.resize(bytes, ' ');
  return text;
}

std::string Swapped(std::string text) {
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) std::swap(text[i], text[i + 1]);
  return text;
}

void PutField(Bytes* identify, std::size_t word, std::size_t words, const std::string& text) {
  std::ranges::copy(Swapped(Padded(text, 2 * words)), identify->begin() + static_cast<std::ptrdiff_t>(2 * word));
}

Bytes MakeIdentify(const DiskFacts& disk) {
  Bytes identify(kIdentify, 0);
  identify[0] = 0x40;                      // word 0: a fixed device …
  identify[1] = disk.atapi ? 0x85 : 0x00;  // … or a packet one
  PutField(&identify, 10, 10, disk.serial);
  PutField(&identify, 23, 4, disk.revision);
  PutField(&identify, 27, 20, disk.model);
  return identify;
}

std::string HexDigits(const std::string& text) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const char c : text) {
    hex += kDigits[static_cast<BYTE>(c) >> 4];
    hex += kDigits[static_cast<BYTE>(c) & 15];
  }
  return hex;
}

// How Windows' own drivers hand an ATA serial number out: as hexadecimal digits before Vista, with every pair of
// characters exchanged until 7, readable since 8.
std::string DescriptorSerial(const DiskFacts& disk, const Facts& facts) {
  if (!IsAtaBus(disk.bus) || facts.AtLeast(6, 2)) return disk.serial;
  const std::string raw = Swapped(Padded(disk.serial, kSerialBytes));
  return facts.AtLeast(6, 0) ? raw : HexDigits(raw);
}

ScsiPlace ReadPlace(const Json& fact) {
  ScsiPlace place;
  FactFields(fact, "scsi").Read("port", place.port).Read("target", place.target).NothingElse();
  return place;
}

}  // namespace

DiskFacts ReadDiskFacts(const Json& fact, const Facts& facts) {
  DiskFacts disk;
  disk.serial = "S0VP000000000001";
  disk.model = "PLAIN SSD 256GB";
  disk.revision = "1.00";
  disk.bus = BusTypeSata;
  const bool names_serial = fact.is_object() && fact.contains("descriptor_serial");
  const bool names_smart = fact.is_object() && fact.contains("smart");
  const bool names_product = fact.is_object() && fact.contains("product");
  FactFields(fact, "disks")
      .Read("serial", disk.serial)
      .Read("model", disk.model)
      .Read("vendor", disk.vendor)
      .Read("product", disk.product)
      .Read("revision", disk.revision)
      .Read("descriptor_serial", disk.descriptor_serial)
      .With("bus", [&](const Json& bus) { disk.bus = ParseBus(bus); })
      .Read("removable", disk.removable)
      .Read("atapi", disk.atapi)
      .Read("smart", disk.smart)
      .With("scsi", [&](const Json& place) { disk.scsi = ReadPlace(place); })
      .With("identify", [&](const Json& hex) { disk.identify = BytesOfHex("identify", hex.get<std::string>()); })
      .With("answers", [&](const Json& ways) { disk.answers = Answers::Parse(ways, kRequests); })
      .NothingElse();
  if (!names_serial) disk.descriptor_serial = DescriptorSerial(disk, facts);
  if (!names_smart) disk.smart = IsAtaBus(disk.bus);
  if (!names_product) disk.product = disk.model;
  if (disk.identify.empty()) disk.identify = MakeIdentify(disk);
  if (disk.identify.size() != kIdentify) throw std::runtime_error("disks.identify: 512 bytes");
  return disk;
}

}  // namespace winhost
