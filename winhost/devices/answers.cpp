#include "winhost/devices/answers.h"

#include <windows.h>

#include <winioctl.h>

#include <algorithm>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "winhost/machine/clock.h"
#include "winhost/machine/machine.h"

namespace winhost {
namespace {

using Json = nlohmann::json;
constexpr std::uint64_t kDriverTimeOutMs = 10'000;
constexpr BYTE kFiller = 0xA5;

DWORD Put(std::span<const BYTE> bytes, std::span<BYTE> out, DWORD* returned) {
  if (bytes.size() > out.size()) return ERROR_INSUFFICIENT_BUFFER;
  std::ranges::copy(bytes, out.begin());
  *returned = static_cast<DWORD>(bytes.size());
  return ERROR_SUCCESS;
}

}  // namespace

Bytes BytesOfHex(const std::string& where, const std::string& hex) {
  if (hex.size() % 2 != 0 || hex.find_first_not_of("0123456789abcdefABCDEF") != hex.npos) {
    throw std::runtime_error(where + ": bad hexadecimal digits");
  }
  Bytes bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes.push_back(static_cast<BYTE>(std::stoi(hex.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

Answers::Way Answers::ParseWay(const Json& fact) {
  using Kind = Way::Kind;
  if (fact.is_number_unsigned()) return {Kind::Error, fact.get<DWORD>(), {}};
  if (fact.is_object() && fact.size() == 1 && fact.contains("hex")) {
    return {Kind::Given, 0, BytesOfHex("answers", fact["hex"].get<std::string>())};
  }
  if (fact == "fails") return {Kind::Error, ERROR_GEN_FAILURE, {}};
  if (fact == "short") return {Kind::Short, 0, {}};
  if (fact == "long") return {Kind::Long, 0, {}};
  if (fact == "never") return {Kind::Never, 0, {}};
  throw std::runtime_error("answers: fails, short, long, never, an error number or {\"hex\"}");
}

Answers Answers::Parse(const Json& fact, std::span<const char* const> requests) {
  Answers answers;
  if (!fact.is_object() || fact.contains("hex")) {
    answers.all_ = ParseWay(fact);
    return answers;
  }
  for (const auto& [request, way] : fact.items()) {
    if (std::ranges::find(requests, request) == requests.end()) {
      throw std::runtime_error("answers: unknown request \"" + request + "\"");
    }
    answers.named_[request] = ParseWay(way);
  }
  return answers;
}

const Answers::Way* Answers::Find(const std::string& request) const {
  if (const auto named = named_.find(request); named != named_.end()) return &named->second;
  return all_ ? &*all_ : nullptr;
}

DWORD Answers::Send(const std::string& request, const Bytes& bytes, std::span<BYTE> out, DWORD* returned) const {
  const Way* way = Find(request);
  if (!way) return Put(bytes, out, returned);
  switch (way->kind) {
    case Way::Kind::Error:
      return way->error;
    case Way::Kind::Short:
      return Put(std::span(bytes).first(bytes.size() / 2), out, returned);
    case Way::Kind::Given:
      return Put(way->given, out, returned);
    case Way::Kind::Never:
      MachineSleepMs(kDriverTimeOutMs);
      return ERROR_SEM_TIMEOUT;
    case Way::Kind::Long:
      break;
  }
  const DWORD error = Put(bytes, out, returned);
  if (error == ERROR_SUCCESS) std::ranges::fill(out.subspan(bytes.size()), kFiller);
  *returned = static_cast<DWORD>(out.size());
  return error;
}

DWORD CheckRights(DWORD code, DWORD access) {
  const DWORD asked = code >> 14 & 3;
  const bool reads = (access & (GENERIC_READ | GENERIC_ALL | FILE_READ_DATA)) != 0;
  const bool writes = (access & (GENERIC_WRITE | GENERIC_ALL | FILE_WRITE_DATA)) != 0;
  const bool granted = (!(asked & FILE_READ_ACCESS) || reads) && (!(asked & FILE_WRITE_ACCESS) || writes);
  return granted ? DWORD{ERROR_SUCCESS} : DWORD{ERROR_ACCESS_DENIED};
}

bool HasAdministratorRights() {
  const char* started = std::getenv("VANTA_ELEVATED");
  return started ? *started == '1' : Machine::Current().facts().elevated;
}

}  // namespace winhost
