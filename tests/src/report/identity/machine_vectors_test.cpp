// Whole machines: what the product makes of the hardware, and what it leaves in the registry.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "report/identity/machine_identity.h"
#include "report/identity/mid1_machine.h"
#include "report/identity/mid2_machine.h"
#include "report/identity/processor.h"
#include "tests/support/machine_fixture.h"
#include "winhost/registry/dump.h"

namespace vanta {
namespace {

struct Vector {
  const char* name;
  const char* facts;
  const char* hardware;
  const char* hardware2;
  const char* mid;
  const char* stored;
  const char* m2;
};
std::ostream& operator<<(std::ostream& out, const Vector& row) { return out << row.name; }

const Vector kVectors[] = {
#include "tests/src/report/identity/machine_vectors.inc"
};

nlohmann::json Text(const std::string& text) {
  return {{"type", "REG_SZ"}, {"bytes", 2 * text.size() + 2}, {"value", text}};
}

class MachineVectors : public testing_support::OnMachine, public testing::WithParamInterface<Vector> {
 protected:
  bool Is64() { return winhost::Machine::Current().facts().windows_bits == 64; }
  bool Elevated() { return winhost::Machine::Current().facts().elevated; }
  nlohmann::json Registry() { return winhost::RegistryAsJson(winhost::Machine::Current()); }
};

TEST_P(MachineVectors, HardwareIsReadAsItIs) {
  Start(GetParam().facts);
  EXPECT_EQ(Mid1Machine().HardwareString(),
            GetParam().hardware == std::string("Mid2Failed") ? "" : GetParam().hardware);
  Mid2Hardware hardware;
  Mid2Machine machine;
  machine.Collect(&hardware);
  EXPECT_EQ(hardware.address + hardware.disk + machine.Processor(), GetParam().hardware2);
}

TEST_P(MachineVectors, IdentifiersAreFoundAndStoredInTheirViews) {
  const Vector& vector = GetParam();
  Start(vector.facts);
  EXPECT_EQ(MachineIdText(), FromUtf8(vector.mid));
  const std::string m2 = ToUtf8(MachineId2Text());
  if (*vector.m2) {
    EXPECT_EQ(m2, vector.m2);
  } else {
    EXPECT_TRUE(m2.starts_with("ffffffff") && m2.substr(40, 2) == "10" && IsValidMid2(FromUtf8(m2))) << m2;
  }
  nlohmann::json expected = nlohmann::json::object();
  if (Elevated()) {
    expected[Is64() ? "HKLM32\\SOFTWARE\\Bastion\\Freshen" : "HKLM\\SOFTWARE\\Bastion\\Freshen"]["mid"] =
        Text(vector.stored);
    expected["HKLM\\SOFTWARE\\Bastion\\Freshen"]["m2"] = Text(m2);
  }
  nlohmann::json stored = Registry();
  for (const char* parent : {"HKLM\\SOFTWARE\\Bastion", "HKLM32\\SOFTWARE\\Bastion"}) stored.erase(parent);
  EXPECT_EQ(stored, expected);
}

INSTANTIATE_TEST_SUITE_P(Machines, MachineVectors, testing::ValuesIn(kVectors),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace vanta
