#include "winhost/devices/hardware.h"

#include <gtest/gtest.h>
#include <intrin.h>
#include <windows.h>

#include "tests/support/machine_fixture.h"

namespace winhost {
namespace {

TEST(HardwareTest, WrongFactsAreRefusedByName) {
  struct Row {
    const char* facts;
    const char* what;
  };
  const Row rows[] = {
      {R"({"disks": {}})", "disks must be a list"},
      {R"({"disks": [5]})", "disks must be an object"},
      {R"({"disks": [{"seriel": "x"}]})", "disks: unknown key \"seriel\""},
      {R"({"disks": [{"bus": "isa"}]})", "disks.bus: no bus of that name"},
      {R"({"disks": [{"identify": "00"}]})", "disks.identify: 512 bytes"},
      {R"({"disks": [{"identify": "0g"}]})", "disks.identify: identify: bad hexadecimal digits"},
      {R"({"disks": [{"answers": "maybe"}]})",
       "disks.answers: answers: fails, short, long, never, an error number or {\"hex\"}"},
      {R"({"disks": [{"answers": {"address": "short"}}]})", "disks.answers: answers: unknown request \"address\""},
      {R"({"adapters": [{"address": "0011"}]})", "adapters.address: address: six bytes"},
      {R"({"adapters": [{"kind": "token ring"}]})", "adapters.kind: wired, wireless, virtual or hyper-v"},
      {R"({"netbios": [{"lan": 1}]})", "netbios: unknown key \"lan\""},
      {R"({"cpuid": {"brnd": "x"}})", "cpuid: unknown key \"brnd\""},
  };
  for (const Row& row : rows) {
    try {
      const Hardware hardware(ParseFacts(row.facts));
      ADD_FAILURE() << row.facts;
    } catch (const std::runtime_error& wrong) {
      EXPECT_EQ(std::string(wrong.what()), row.what);
    }
  }
}

TEST(HardwareTest, PlainMachineHasOneOfEach) {
  const Hardware hardware(ParseFacts("{}"));
  EXPECT_EQ(hardware.disks.size(), 1u);
  EXPECT_EQ(hardware.adapters.size(), 1u);
  EXPECT_EQ(hardware.netbios.size(), 1u);
  EXPECT_TRUE(hardware.processor.has_value());
}

class NarrowRegistryTest : public testing_support::OnMachine {};

TEST_F(NarrowRegistryTest, TextsAreConvertedAndOtherValuesAreNot) {
  Start();
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, u"K", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
  const auto bytes_of = [](const char* text) { return reinterpret_cast<const BYTE*>(text); };
  EXPECT_EQ(RegSetValueExA(key, "t", 0, REG_SZ, bytes_of("\xC3\xA4z"), 4), ERROR_SUCCESS);
  DWORD size = 0, type = 0;
  EXPECT_EQ(RegQueryValueExW(key, u"t", nullptr, nullptr, nullptr, &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 6u);
  BYTE data[8] = {};
  size = 3;
  EXPECT_EQ(RegQueryValueExA(key, "t", nullptr, &type, data, &size), ERROR_MORE_DATA);
  EXPECT_EQ(size, 4u);
  EXPECT_EQ(RegQueryValueExA(key, "t", nullptr, &type, data, &size), ERROR_SUCCESS);
  EXPECT_STREQ(reinterpret_cast<const char*>(data), "\xC3\xA4z");
  EXPECT_EQ(type, DWORD{REG_SZ});
  EXPECT_EQ(RegSetValueExA(key, "b", 0, REG_BINARY, bytes_of("\xC3"), 1), ERROR_SUCCESS);
  size = sizeof data;
  EXPECT_EQ(RegQueryValueExA(key, "b", nullptr, &type, data, &size), ERROR_SUCCESS);
  EXPECT_EQ(size, 1u);
  EXPECT_EQ(RegQueryValueExA(key, "none", nullptr, nullptr, nullptr, nullptr), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(RegSetValueExA(key, "t", 0, REG_SZ, nullptr, 4), ERROR_NOACCESS);
  RegCloseKey(key);
}

}  // namespace
}  // namespace winhost
