// Devices that answer badly: what they do not tell is missing, and nothing worse happens.
#include <gtest/gtest.h>

#include "report/identity/disk_serial.h"
#include "report/identity/disk_string.h"
#include "report/identity/network_address.h"
#include "report/identity/physical_address.h"
#include "tests/support/machine_fixture.h"
#include "winhost/machine/clock.h"

namespace vanta {
namespace {

struct Row {
  const char* name;
  std::string facts;
  const char* serial;    // of m
  const char* disk;      // of m2
  const char* address;   // of m
  const char* physical;  // of m2
  unsigned waited_ms;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

std::string Disk(const std::string& answers) {
  return R"("disks": [{"serial": "SERIAL", "model": "MODEL", "descriptor_serial": "OTHER ", "answers": )" + answers +
         "}]";
}
std::string Adapter(const std::string& answers, const std::string& more = "") {
  return R"("disks": [], "adapters": [{"address": "0A0B0C0D0E0F", "answers": )" + answers + more + "}]";
}
constexpr const char* kNoNetbios = R"(, "netbios": [])";
constexpr const char* kPlain = "025650000001";
constexpr const char* kMac = "0A0B0C0D0E0F";

const Row kRows[] = {
    {"ShortIdentify", Disk(R"({"identify": {"hex": "00020000"}})"), "OTHER", "OTHERMODEL", kPlain, kPlain, 0},
    // Half of the answer holds serial and model still.
    {"HalfIdentify", Disk(R"({"identify": "short"})"), "SERIAL", "SERIALMODEL", kPlain, kPlain, 0},
    {"DriverError", Disk(R"({"identify": {"hex": "000200000100)" + std::string(2 * 522, '4') + "\"}}"), "OTHER",
     "OTHERMODEL", kPlain, kPlain, 0},
    {"LongAnswers", Disk("\"long\""), "SERIAL", "SERIALMODEL", kPlain, kPlain, 0},
    {"FailingVersion", Disk(R"({"version": "fails"})"), "OTHER", "OTHERMODEL", kPlain, kPlain, 0},
    {"EmptyVersion", Disk(R"({"version": {"hex": ""}})"), "SERIAL", "SERIALMODEL", kPlain, kPlain, 0},
    {"ShortDescriptor", Disk(R"({"version": "fails", "descriptor": {"hex": "280000004c000000"}})"), "", "", kPlain,
     kPlain, 0},
    // The string offsets point behind the answer, to its last byte and into the header.
    {"WildOffsets",
     Disk(R"({"version": "fails", "descriptor": {"hex": "280000002500000000000000ffffffff0400000000000000)"
          R"(24000000030000000000000041"}})"),
     "A", "A", kPlain, kPlain, 0},
    {"OffsetBehindTheEnd",
     Disk(R"({"version": "fails", "descriptor": {"hex": "280000002500000000000000000000000000000000000000)"
          R"(25000000030000000000000041"}})"),
     "", "", kPlain, kPlain, 0},
    // The driver's time-out is waited for once, not at each of the questions that follow.
    {"DriveThatNeverAnswers", Disk("\"never\""), "", "", kPlain, kPlain, 10'000},
    {"FirstDriveHangs", R"("disks": [{"answers": "never"}, {"serial": "SECOND", "model": "M"}])", "SECOND", "SECONDM",
     kPlain, kPlain, 10'000},
    {"NothingAnswers", Disk("\"fails\"") + R"(, "adapters": [{"answers": "fails", "ip_helper": false}])", "", "", "",
     "", 0},
    {"ShortAddress", Adapter(R"({"address": "short"})"), "", "", kMac, kMac, 0},  // NetBIOS and the IP helper know it
    {"ShortAddressAndNoNetbios", Adapter(R"({"address": "short"}, "ip_helper": false)") + kNoNetbios, "", "", "", "",
     0},
    {"LongAddress", Adapter(R"({"address": "long"})"), "", "", kMac, kMac, 0},
    {"AdapterThatNeverAnswers", Adapter(R"("never", "ip_helper": false)") + kNoNetbios, "", "", "", "", 10'000},
    {"UnknownMedium", Adapter(R"({"physical_medium": "fails", "media_in_use": "short"})") + kNoNetbios, "", "", kMac,
     kMac, 0},
    {"OtherMedium", Adapter("{}", R"(, "medium": 10)"), "", "", kMac, kMac, 0},  // by the IP helper
    {"OtherMediumAndNoIpHelper", Adapter("{}", R"(, "medium": 10, "ip_helper": false)"), "", "", kMac, "", 0},
    {"NetbiosRefusesReset",
     Adapter(R"("fails", "ip_helper": false)") +
         R"(, "netbios": [{"lana": 0, "address": "010203040506", "reset": 35}])",
     "", "", "", "", 0},
    {"NetbiosRefusesStatus",
     Adapter(R"("fails", "ip_helper": false)") +
         R"(, "netbios": [{"lana": 0, "address": "010203040506", "status": 64}])",
     "", "", "", "", 0},
    {"NoNetbiosLibrary", Adapter(R"("fails", "ip_helper": false)") + R"(, "missing_exports": ["netapi32.dll!Netbios"])",
     "", "", "", "", 0},
    {"IpHelperFails", Adapter(R"("fails")") + R"(, "faults": [{"operation": "GetAdaptersInfo", "error": 232}])", "", "",
     kMac, "", 0},
    {"IpHelperAsksForMoreAgainAndAgain",
     Adapter(R"("fails")") + R"(, "faults": [{"operation": "GetAdaptersInfo", "nth": 0, "error": 111}])", "", "", kMac,
     "", 0},
};

class HostileDevices : public testing_support::OnMachine, public testing::WithParamInterface<Row> {};

TEST_P(HostileDevices, LeaveWhatOthersTell) {
  const Row& row = GetParam();
  Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}, )" + row.facts + "}");
  const auto before = winhost::MachineTicksMs();
  EXPECT_EQ(FirstDiskSerial(), row.serial);
  EXPECT_EQ(FirstDiskString(), row.disk);
  EXPECT_EQ(LowestNetworkAddress(), row.address);
  EXPECT_EQ(PhysicalNetworkAddress(), row.physical);
  EXPECT_EQ(winhost::MachineTicksMs() - before, row.waited_ms);
}
INSTANTIATE_TEST_SUITE_P(Rows, HostileDevices, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vanta
