#include "tools/vantakit/view/identity_views.h"

#include <array>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>

#include "report/identity/crc8.h"
#include "report/identity/machine_hash.h"
#include "report/identity/mid1_machine.h"
#include "report/identity/mid1_rules.h"
#include "report/identity/mid2_machine.h"
#include "report/identity/mid2_rules.h"
#include "tools/vantakit/view/json_text.h"
#include "tools/vantakit/view/on_machine.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

std::string BytesOfHex(const std::string& hex) {
  if (hex.size() % 2 != 0 || hex.find_first_not_of("0123456789abcdefABCDEF") != hex.npos) {
    throw std::runtime_error("bad hexadecimal digits");
  }
  std::string bytes;
  for (size_t i = 0; i < hex.size(); i += 2) bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return bytes;
}

// Identifier 1 with what the request tells in place of registry and hardware.
class ToldMid1 final : public vanta::Mid1Surroundings {
 public:
  explicit ToldMid1(const Json& input) : hardware_(input.at("hardware").get<std::string>()) {
    if (const Json& stored = input.at("stored"); !stored.is_null()) stored_ = stored.get<std::string>();
  }

  bool ReadStored(size_t room, std::string* text) override {
    text->clear();
    if (!stored_ || stored_->size() + 1 > room) return false;
    *text = *stored_;
    return true;
  }
  std::string HardwareString() override { return hardware_; }
  void Write(const char* name, const std::string& text) override { writes.push_back({name, text}); }

  Json writes = Json::array();

 private:
  std::optional<std::string> stored_;
  std::string hardware_;
};

vanta::SelfProtection ProtectionOf(const Json& text) {
  if (text == "absent") return vanta::SelfProtection::Absent;
  if (text == "yes") return vanta::SelfProtection::Yes;
  if (text == "no") return vanta::SelfProtection::No;
  throw std::runtime_error("device: absent, yes or no");
}

using Told = std::array<std::string, 3>;  // address, disk, processor

// Identifier 2 likewise.
class ToldMid2 final : public vanta::Mid2Surroundings {
 public:
  explicit ToldMid2(const Json& input)
      : cached_(TextOf(input, "cached")),
        elevated_(input.at("elevated").get<bool>()),
        protection_(ProtectionOf(input.at("device"))),
        first_(input.at("first").get<Told>()),
        second_(input.at("second").get<Told>()),
        guid_(BytesOfHex(input.at("guid").get<std::string>())) {
    if (!guid_.empty() && guid_.size() != sizeof(GUID)) throw std::runtime_error("guid: 16 bytes");
  }

  vanta::String ReadCached() override { return cached_; }
  bool IsElevated() override { return elevated_; }
  vanta::SelfProtection AskProtection() override { return protection_; }
  std::string Processor() override { return first_[2]; }
  void Collect(vanta::Mid2Hardware* hardware) override {
    const Told& told = collected_++ == 0 ? first_ : second_;
    if (hardware->address.empty()) hardware->address = told[0];
    if (hardware->disk.empty()) hardware->disk = told[1];
  }
  void Wait() override { ++waits; }
  std::optional<GUID> RandomValue() override {
    GUID guid;
    if (guid_.empty()) return std::nullopt;
    std::memcpy(&guid, guid_.data(), sizeof guid);
    return guid;
  }
  void Write(const WCHAR* name, const vanta::String& text) override {
    writes.push_back({vanta::ToUtf8(name), vanta::ToUtf8(text)});
  }

  Json writes = Json::array();
  int waits = 0;

 private:
  vanta::String cached_;
  bool elevated_;
  vanta::SelfProtection protection_;
  Told first_, second_;
  std::string guid_;
  int collected_ = 0;
};

// The machine's own surroundings, with a note of what is written.
class NotedMid1 final : public vanta::Mid1Machine {
 public:
  explicit NotedMid1(Json* writes) : writes_(writes) {}
  void Write(const char* name, const std::string& text) override {
    writes_->push_back({name, text});
    Mid1Machine::Write(name, text);
  }

 private:
  Json* writes_;
};

class NotedMid2 final : public vanta::Mid2Machine {
 public:
  explicit NotedMid2(Json* writes) : writes_(writes) {}
  void Write(const WCHAR* name, const vanta::String& text) override {
    writes_->push_back({vanta::ToUtf8(name), vanta::ToUtf8(text)});
    Mid2Machine::Write(name, text);
  }

 private:
  Json* writes_;
};

Json IdentityHere() {
  Json writes = Json::array();
  NotedMid1 first(&writes);
  NotedMid2 second(&writes);
  Json answer;
  answer["hardware"] = first.HardwareString();
  vanta::Mid2Hardware hardware;
  second.Collect(&hardware);
  hardware.processor = second.Processor();
  answer["hardware2"] = hardware.address + hardware.disk + hardware.processor;
  answer["mid"] = vanta::Identifier1(first);
  answer["m2"] = vanta::Identifier2(second);
  answer["writes"] = std::move(writes);
  return answer;
}

}  // namespace

Json IdentityHashView(const Json& input) {
  return {{"hash", vanta::MachineHash(BytesOfHex(input.at("hex").get<std::string>()))}};
}

Json IdentityCrc8View(const Json& input) {
  const BYTE crc = vanta::Crc8(input.at("text").get<std::string>());
  return {{"crc", HexOf(&crc, 1)}};
}

Json IdentityMidView(const Json& input) {
  ToldMid1 told(input);
  const std::string mid = vanta::Identifier1(told);
  return {{"mid", mid}, {"writes", told.writes}};
}

Json IdentityM2View(const Json& input) {
  ToldMid2 told(input);
  const std::string m2 = vanta::Identifier2(told);
  return {{"m2", m2}, {"writes", told.writes}, {"waits", told.waits}};
}

Json MachineIdentityView(const Json& input) { return AnswerOn("machine.identity", input, IdentityHere); }

}  // namespace vantakit
