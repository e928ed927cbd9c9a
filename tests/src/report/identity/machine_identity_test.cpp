#include "report/identity/machine_identity.h"

#include <gtest/gtest.h>
#include <shlwapi.h>

#include <nlohmann/json.hpp>
#include <thread>
#include <vector>

#include "report/identity/disk_serial.h"
#include "report/identity/disk_string.h"
#include "report/identity/elevation.h"
#include "report/identity/machine_hash.h"
#include "report/identity/mid.h"
#include "report/identity/mid2_form.h"
#include "report/identity/network_address.h"
#include "report/identity/physical_address.h"
#include "tests/support/machine_fixture.h"
#include "winhost/machine/clock.h"
#include "winhost/registry/dump.h"

namespace vanta {
namespace {

class MachineIdentityTest : public testing_support::OnMachine {
 protected:
  // The machine's clock stands, so that a wait is exactly as long as it says.
  void StartStanding(const std::string& facts) {
    Start(R"({"clock": {"at": "2024-03-05T14:07:09", "stands": true}, )" + facts + "}");
  }
  std::string Stored(const char* key, const char* name) {
    const auto registry = winhost::RegistryAsJson(winhost::Machine::Current());
    return registry.contains(key) && registry[key].contains(name) ? registry[key][name]["value"].get<std::string>()
                                                                  : std::string();
  }
  static constexpr const char* kNarrow = "HKLM32\\SOFTWARE\\Bastion\\Freshen";
  static constexpr const char* kWide = "HKLM\\SOFTWARE\\Bastion\\Freshen";
};

TEST_F(MachineIdentityTest, RoomsAreMinded) {
  Start();
  WCHAR buffer[50] = {TEXT('x')};
  EXPECT_FALSE(GetMachineId(nullptr, 260));
  EXPECT_FALSE(GetMachineId(buffer, 0));
  EXPECT_EQ(buffer[0], TEXT('x'));
  EXPECT_FALSE(GetMachineId(buffer, 32));
  EXPECT_EQ(String(buffer), String());
  EXPECT_TRUE(GetMachineId(buffer, 33));
  EXPECT_EQ(String(buffer).size(), 32u);
  EXPECT_EQ(GetMachineId2(nullptr, 50), E_INVALIDARG);
  EXPECT_EQ(GetMachineId2(buffer, 49), E_INVALIDARG);
  EXPECT_EQ(GetMachineId2(buffer, 50), S_OK);
  EXPECT_EQ(String(buffer).size(), 44u);
}

TEST_F(MachineIdentityTest, AnswersStayForTheProcessWhateverBecomesOfTheRegistry) {
  Start(R"({"disks": [], "adapters": []})");
  const String first = MachineIdText(), second = MachineId2Text();
  EXPECT_TRUE(second.starts_with(TEXT("ffffffff")));
  SHDeleteKeyW(HKEY_LOCAL_MACHINE, TEXT("Software\\Bastion"));
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, TEXT("Software\\Bastion\\Freshen"), KEY_WOW64_64KEY, 0);
  EXPECT_EQ(MachineIdText(), first);
  EXPECT_EQ(MachineId2Text(), second);
}

TEST_F(MachineIdentityTest, ManyThreadsGetOneAnswer) {
  Start(R"({"disks": [], "adapters": []})");
  String answers[8];
  std::vector<std::thread> threads;
  for (String& answer : answers) threads.emplace_back([&answer] { answer = MachineId2Text() + MachineIdText(); });
  for (std::thread& thread : threads) thread.join();
  for (const String& answer : answers) EXPECT_EQ(answer, answers[0]);
}

TEST_F(MachineIdentityTest, ObjectOffersIdentifier2Alone) {
  Start();
  INewMID* const mid = CMID::Instance();
  WCHAR buffer[50];
  EXPECT_EQ(mid->GetMid(buffer, 50), E_NOTIMPL);
  EXPECT_EQ(mid->RefreshMid2(), E_NOTIMPL);
  EXPECT_EQ(mid->GetMid2(buffer, 50), S_OK);
  EXPECT_EQ(String(buffer), MachineId2Text());
  EXPECT_GE(mid->Release(), 1u);
}

TEST_F(MachineIdentityTest, CachesAreReadFromTheirOwnViewsOnly) {
  const std::string mid = std::string(32, 'a') + MachineHash(std::string(32, 'a'));
  Start(R"({"registry": {"HKLM32\\Software\\Bastion\\Freshen": {"mid": ")" + mid + R"(", "m2": "wrong view"},
            "HKLM\\Software\\Bastion\\Freshen": {"mid": "wrong view", "m2": "old text"}}})");
  EXPECT_EQ(MachineIdText(), String(32, TEXT('a')));
  MachineId2Text();
  EXPECT_EQ(Stored(kNarrow, "mid_old"), "");
  EXPECT_EQ(Stored(kNarrow, "m2"), "wrong view");
  EXPECT_EQ(Stored(kWide, "m2_old"), "old text");
}

struct Garbage {
  const char* name;
  const char* value;  // as the fact "registry" writes it
  const char* mid_old;
  const char* m2_old;
};
std::ostream& operator<<(std::ostream& out, const Garbage& row) { return out << row.name; }

const Garbage kGarbage[] = {
    {"Number", R"({"type": "REG_DWORD", "value": 5})", "", ""},
    {"Binary", R"({"type": "REG_BINARY", "hex": "00010203"})", "", ""},
    {"HalfACharacter", R"({"type": "REG_SZ", "hex": "41"})", "", "A"},
    {"Unterminated", R"({"type": "REG_SZ", "value": "bare", "terminated": false})", "bare", "bare"},
    {"ZeroInside", R"({"type": "REG_SZ", "hex": "410042000000430044000000"})", "AB", "AB"},
    {"Foreign", R"("\u00e4\u4e2d")", "\u00e4\u4e2d", "\u00e4\u4e2d"},
    {"Empty", R"("")", "", ""},
};

class GarbageTest : public MachineIdentityTest, public testing::WithParamInterface<Garbage> {};

TEST_P(GarbageTest, IsReplacedAndKeptWhereItIsText) {
  const Garbage& row = GetParam();
  Start(R"({"registry": {"HKLM32\\Software\\Bastion\\Freshen": {"mid": )" + std::string(row.value) +
        R"(}, "HKLM\\Software\\Bastion\\Freshen": {"m2": )" + row.value + "}}}");
  const std::string mid = ToUtf8(MachineIdText()), m2 = ToUtf8(MachineId2Text());
  EXPECT_EQ(Stored(kNarrow, "mid"), mid + MachineHash(mid));
  EXPECT_EQ(Stored(kNarrow, "mid_old"), row.mid_old);
  EXPECT_EQ(Stored(kWide, "m2"), m2);
  EXPECT_EQ(Stored(kWide, "m2_old"), row.m2_old);
}
INSTANTIATE_TEST_SUITE_P(Rows, GarbageTest, testing::ValuesIn(kGarbage),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MachineIdentityTest, LongGarbageIsKeptAsFarAsItIsRead) {
  const std::string long_mid(256, 'x'), longest_m2(511, 'y');
  Start(R"({"registry": {"HKLM32\\Software\\Bastion\\Freshen": {"mid": ")" + long_mid +
        R"("}, "HKLM\\Software\\Bastion\\Freshen": {"m2": ")" + longest_m2 + "\"}}}");
  MachineIdText();
  MachineId2Text();
  EXPECT_EQ(Stored(kNarrow, "mid_old"), "");
  EXPECT_EQ(Stored(kWide, "m2_old"), longest_m2);
}

TEST_F(MachineIdentityTest, WithoutTheRegistryIdentifiersAreFoundAllTheSame) {
  Start(R"({"faults": [{"operation": "RegCreateKeyExW", "nth": 0, "error": 5},
                       {"operation": "RegOpenKeyExW", "subject": "Freshen", "nth": 0, "error": 5}]})");
  EXPECT_EQ(MachineIdText().size(), 32u);
  EXPECT_EQ(MachineId2Text().size(), 44u);
  EXPECT_EQ(Stored(kWide, "m2"), "");
}

TEST_F(MachineIdentityTest, ProtectionDeviceThatRefusesKeepsNoSpoiltCache) {
  Start(R"({"protection_device": "refuses", "registry": {"HKLM\\Software\\Bastion\\Freshen": {"m2": "x"}}})");
  const std::string fresh = ToUtf8(MachineId2Text());  // nothing valid was cached
  EXPECT_EQ(Stored(kWide, "m2"), fresh);
  EXPECT_EQ(Stored(kWide, "m2_old"), "x");
}

TEST_F(MachineIdentityTest, MissingDiskIsWaitedForHalfASecond) {
  StartStanding(R"("disks": [])");
  const auto before = winhost::MachineTicksMs();
  EXPECT_EQ(ToUtf8(MachineId2Text()).substr(40, 2), "29");
  EXPECT_EQ(winhost::MachineTicksMs() - before, 500u);
}

TEST_F(MachineIdentityTest, ElevationIsKnownByTheTokenOrNotAtAll) {
  struct Row {
    const char* facts;
    bool elevated;
  };
  for (const Row& row : {Row{"{}", true}, Row{R"({"elevated": false})", false},
                         Row{R"({"elevated": false, "version": "xp", "windows_bits": 32})", true},
                         Row{R"({"faults": [{"operation": "OpenProcessToken"}]})", false},
                         Row{R"({"faults": [{"operation": "GetTokenInformation"}]})", false}}) {
    Start(row.facts);
    EXPECT_EQ(IsProcessElevated(), row.elevated) << row.facts;
  }
}

}  // namespace
}  // namespace vanta
