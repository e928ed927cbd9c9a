// The pure readers of what hardware tells.
#include <gtest/gtest.h>

#include "report/identity/adapter_class.h"
#include "report/identity/ascii.h"
#include "report/identity/identify_data.h"
#include "report/identity/lowest_address.h"
#include "report/identity/physical_address.h"
#include "report/identity/processor.h"
#include "report/identity/storage_descriptor.h"
#include "tests/support/machine_fixture.h"

namespace vanta {
namespace {

// An IDENTIFY answer with these bytes, as they come, in its two fields.
std::string Identify(std::string serial, std::string model) {
  serial.resize(20, ' ');
  model.resize(40, ' ');
  return std::string(20, '\0') + serial + std::string(14, '\0') + model + std::string(418, '\0');
}

TEST(IdentifyDataTest, SerialIsSwappedAndKeepsBlanksInFront) {
  EXPECT_EQ(SerialOfIdentify(Identify("BADCFE", "")), "ABCDEF");
  EXPECT_EQ(SerialOfIdentify(Identify("  BA C", "")), "  ABC");
  EXPECT_EQ(SerialOfIdentify(Identify("", "")), "");
  EXPECT_EQ(SerialOfIdentify(Identify(std::string("BA\0C", 4), "")), "ABC");
  EXPECT_EQ(SerialOfIdentify(Identify(std::string("BAC\0DD", 6), "")), "AB");
  EXPECT_EQ(SerialOfIdentify(Identify("BADCFE", "").substr(0, 24)), "ABCD");
  EXPECT_EQ(SerialOfIdentify(""), "");
}

TEST(IdentifyDataTest, Identifier2MovesBlanksBeforeItSwaps) {
  EXPECT_EQ(SerialAndModelOfIdentify(Identify("  BADC", "NMPO")), "ABCDMNOP");
  EXPECT_EQ(SerialAndModelOfIdentify(Identify(" BADC", "NMPO")), "ABCDMNOP");
  EXPECT_EQ(SerialAndModelOfIdentify(Identify("BADC\t\n", "")), "ABCD");
  EXPECT_EQ(SerialAndModelOfIdentify(Identify("", "NMPO")), "");
  EXPECT_EQ(SerialAndModelOfIdentify(std::string(512, '\0')), "");
}

StorageDescriptor Serial(const std::string& serial, const std::string& vendor = "", const std::string& product = "") {
  StorageDescriptor descriptor;
  descriptor.serial = serial;
  descriptor.vendor = vendor;
  descriptor.product = product;
  return descriptor;
}

TEST(StorageDescriptorTest, SerialIsReadAsHexOrText) {
  const std::string hex = "4142434445464748494a4b4c4d4e4f5051525354";
  struct Row {
    StorageDescriptor descriptor;
    bool swaps;
    const char* text;
  };
  const Row rows[] = {
      {Serial(hex), false, "ABCDEFGHIJKLMNOPQRST"},
      {Serial(hex), true, "BADCFEHGJILKNMPORQTS"},
      {Serial("4142434445464748494A4B4C4D4E4F5020202020"), true, "BADCFEHGJILKNMPO"},
      {Serial("4142000000000000000000000000000000000000"), false, "AB"},
      {Serial("0000000000000000000000000000000000000000"), false, ""},
      {Serial(hex.substr(1)), false, "142434445464748494a4b4c4d4e4f5051525354"},
      {Serial(hex + "55"), false, "4142434445464748494a4b4c4d4e4f505152535455"},
      {Serial(hex.substr(1) + "g"), false, "142434445464748494a4b4c4d4e4f5051525354g"},
      {Serial(std::string(60, 'x')), false, "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
      {Serial(" \tAB \n", " V ", " P "), false, "ABV  P"},
      {Serial("   ", "V", "P"), false, ""},
      {Serial("ABC"), true, "BAC"},
      {Serial("", "V", "P"), false, ""},
  };
  for (const Row& row : rows) EXPECT_EQ(DiskStringOf(row.descriptor, row.swaps), row.text) << row.descriptor.serial;
}

TEST(StorageDescriptorTest, DrivesThatComeAndGoDoNotCount) {
  for (DWORD bus = 0; bus < 32; ++bus) {
    StorageDescriptor descriptor;
    descriptor.bus = bus;
    const bool passes = bus != 1 && bus != 4 && bus != 7 && bus != 10 && bus != 14 && bus != 15;
    EXPECT_EQ(CountsForMid2(descriptor), passes) << bus;
    descriptor.removable = true;
    EXPECT_FALSE(CountsForMid2(descriptor)) << bus;
  }
}

TEST(ProcessorTest, IsWrittenInBothWays) {
  EXPECT_EQ(ProcessorTextOfMid1({"GenuineIotel", 0, 0xAB, ""}), "GenuineIntel:000000ab");
  EXPECT_EQ(ProcessorTextOfMid2({"GenuineIotel", 0, 0xAB, ""}), "GenuineIntel,0,");
  EXPECT_EQ(ProcessorTextOfMid2({"AuthenticAMD", 0x00A20F12, 1, " Brand "}), "AuthenticAMD,a20f12, Brand ");
  EXPECT_EQ(ProcessorTextOfMid1({}), "");
  EXPECT_EQ(ProcessorTextOfMid2({}), "");
}

class ProcessorOnMachine : public testing_support::OnMachine {};

TEST_F(ProcessorOnMachine, LeavesThatAreMissingAreNotAsked) {
  Start(
      R"({"cpuid": {"highest": 0, "highest_extended": "80000004", "brand": "123456789012345678901234567890123456789012345678"}})");
  ProcessorFacts facts = ReadProcessor();
  EXPECT_EQ(facts.signature, 0u);
  EXPECT_EQ(facts.features, 0u);
  EXPECT_EQ(facts.brand.size(), 48u);
  Start(R"({"cpuid": {"highest_extended": "80000003"}})");
  EXPECT_EQ(ReadProcessor().brand, "");
  Start(R"({"cpuid": null})");
  EXPECT_EQ(ReadProcessor().vendor, "");
}

TEST(LowestAddressTest, WiredComesBeforeWireless) {
  LowestAddress lowest;
  EXPECT_EQ(lowest.Get(), "");
  lowest.Add("3", true);
  lowest.Add("4", true);
  EXPECT_EQ(lowest.Get(), "3");
  lowest.Add("9", false);
  lowest.Add("8", false);
  EXPECT_EQ(lowest.Get(), "8");
}

class AdapterClassTest : public testing_support::OnMachine {};

TEST_F(AdapterClassTest, BusAndDescriptionTellWhatIsReal) {
  Start(R"({"adapters": [
    {"id": "{A}"}, {"id": "{B}", "bus_type": " 5x"}, {"id": "{C}", "bus_type": "05"}, {"id": "{D}", "bus_type": "15"},
    {"id": "{E}", "bus_type": null}, {"id": "{F}", "bus_type": "0"}, {"id": "{G}", "kind": "hyper-v"},
    {"id": "{H}", "kind": "hyper-v", "description": "mIcRoSoFt x"}, {"id": "{I}", "kind": "hyper-v", "type": 71},
    {"id": "{J}", "kind": "hyper-v", "description": "The Microsoft"}, {"id": "{K}", "kind": "wireless"},
    {"id": "{L}", "description": "a WIRELESS b"}, {"id": "{M}", "lower_range": "x,vwifi"},
    {"id": "{N}", "kind": "hyper-v", "description": "Microsoft Wireless"}, {"id": "{O}", "class": false}]})");
  std::string seen;
  for (const ClassAdapter& adapter : ReadAdapterClass()) {
    seen += ToUtf8(adapter.id) + (adapter.physical ? "p" : "") + (adapter.wireless ? "w" : "") + " ";
  }
  EXPECT_EQ(seen, "{A}p {B}p {C}p {D} {E} {F} {G}p {H}p {I} {J} {K}pw {L}pw {M}pw {N}p ");
}

TEST_F(AdapterClassTest, CardThatTheClassDoesNotKnowCounts) {
  Start(R"({"adapters": [{"address": "000000000001", "kind": "virtual"}, {"address": "000000000009"},
                         {"address": "000000000002", "class": false}]})");
  EXPECT_EQ(PhysicalNetworkAddress(), "000000000002");
}

TEST_F(AdapterClassTest, OnlyTheFirstHundredCardsAreAsked) {
  // The keys are made in the order of their names, "10", "100" … "99"; the card numbered last is the hundred and first.
  std::string adapters = R"({"address": "000000000001", "card": false})";
  for (int i = 0; i < 100; ++i) adapters += R"(, {"address": "0000000000FF", "medium": 14})";
  Start("{\"adapters\": [" + adapters + R"(], "registry": {
    "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards\\Z":
        {"ServiceName": "{6B6E1D3A-5B1C-4E0F-9A00-000000000001}"}}})");
  EXPECT_EQ(PhysicalNetworkAddress(), "0000000000FF");
}

TEST(AsciiTest, Trimming) {
  EXPECT_EQ(WithoutTrailingBlanks(" a \t "), " a \t");
  EXPECT_EQ(WithoutTrailingBlanks("   "), "");
  EXPECT_EQ(WithoutBlanks("  a  "), "a");
  EXPECT_EQ(WithoutBlanks("  "), "");
  EXPECT_EQ(WithoutWhiteSpace("\v\f\r\n\t a \r"), "a");
  EXPECT_TRUE(ContainsNoCase("A WiFi b", "wifi"));
  EXPECT_FALSE(ContainsNoCase("wif", "wifi"));
}

}  // namespace
}  // namespace vanta
