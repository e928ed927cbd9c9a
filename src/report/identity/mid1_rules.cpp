#include "report/identity/mid1_rules.h"

#include "report/identity/ascii.h"
#include "report/identity/machine_hash.h"

namespace vanta {
namespace {

constexpr size_t kIdentifier = 32;
constexpr size_t kStored = 2 * kIdentifier;
constexpr size_t kFirstRead = 1024;
constexpr size_t kSecondRead = 256;
constexpr size_t kHashedBytes = 259;
constexpr char kNoHardware[] = "Mid2Failed";

}  // namespace

bool HoldsIdentifier1(std::string_view stored, std::string* identifier) {
  if (stored.size() != kStored) return false;
  const std::string_view first = stored.substr(0, kIdentifier);
  if (!EqualAsciiBytesNoCase(MachineHash(first), stored.substr(kIdentifier))) return false;
  *identifier = first;
  return true;
}

std::string Identifier1Of(std::string_view hardware) {
  if (hardware.empty()) hardware = kNoHardware;
  return MachineHash(hardware.substr(0, kHashedBytes));
}

std::string Identifier1(Mid1Surroundings& surroundings) {
  std::string stored, identifier;
  if (surroundings.ReadStored(kFirstRead, &stored) && HoldsIdentifier1(stored, &identifier)) return identifier;
  identifier = Identifier1Of(surroundings.HardwareString());
  // Read again: another of the maker's programs may have stored something while the hardware was asked.
  const bool replaces = surroundings.ReadStored(kSecondRead, &stored) && !stored.empty() && stored != identifier;
  if (replaces) surroundings.Write("mid_old", stored);
  surroundings.Write("mid", identifier + MachineHash(identifier));
  return identifier;
}

}  // namespace vanta
