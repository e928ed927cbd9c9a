// Surroundings of both identifiers that a test tells what to say, and that note what is asked and stored.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "report/identity/mid1_rules.h"
#include "report/identity/mid2_rules.h"

namespace vanta {

using Writes = std::vector<std::pair<std::string, std::string>>;

class FakeMid1 final : public Mid1Surroundings {
 public:
  bool ReadStored(size_t room, std::string* text) override {
    const bool fits = !stored.empty() && stored.size() + 1 <= room;
    *text = fits ? stored : std::string();
    return fits;
  }
  std::string HardwareString() override {
    ++asked;
    return hardware;
  }
  void Write(const char* name, const std::string& text) override { writes.emplace_back(name, text); }

  std::string stored;
  std::string hardware = "hardware";
  int asked = 0;
  Writes writes;
};

class FakeMid2 final : public Mid2Surroundings {
 public:
  String ReadCached() override { return cached; }
  bool IsElevated() override { return elevated; }
  SelfProtection AskProtection() override { return protection; }
  std::string Processor() override { return "processor"; }
  void Collect(Mid2Hardware* hardware) override {
    const Mid2Hardware& told = collected++ == 0 ? first : second;
    if (hardware->address.empty()) hardware->address = told.address;
    if (hardware->disk.empty()) hardware->disk = told.disk;
  }
  void Wait() override { ++waits; }
  std::optional<GUID> RandomValue() override { return random; }
  void Write(const WCHAR* name, const String& text) override { writes.emplace_back(ToUtf8(name), ToUtf8(text)); }

  String cached;
  bool elevated = true;
  SelfProtection protection = SelfProtection::Absent;
  Mid2Hardware first, second;
  std::optional<GUID> random = GUID{0x03020100, 0x0504, 0x0706, {8, 9, 10, 11, 12, 13, 14, 15}};
  int collected = 0;
  int waits = 0;
  Writes writes;
};

}  // namespace vanta
