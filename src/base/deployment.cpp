#include "base/deployment.h"

#include "base/lock.h"
#include "base/resource.h"

namespace vanta {
namespace {

constexpr std::string_view kFirstLine = "VANTADEPLOY 1";

struct TextField {
  std::string_view name;
  String Deployment::*field;
};
constexpr TextField kTextFields[] = {
    {"publisher", &Deployment::publisher},
    {"statistics", &Deployment::statistics_host},
    {"upgrade", &Deployment::upgrade_host},
    {"agreement", &Deployment::agreement_host},
};

std::string_view EatLine(std::string_view& rest) {
  const size_t end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

void AddKey(std::string_view hex, Deployment& deployment) {
  std::array<BYTE, 32> key = {};
  if (hex.size() != key.size() * 2) return;
  for (size_t i = 0; i < key.size(); ++i) {
    const int high = HexDigit(hex[2 * i]);
    const int low = HexDigit(hex[2 * i + 1]);
    if (high < 0 || low < 0) return;
    key[i] = static_cast<BYTE>(high << 4 | low);
  }
  deployment.maker_keys.push_back(key);
}

void ReadLine(std::string_view line, Deployment& deployment) {
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  const std::string_view name = line.substr(0, equals);
  const std::string_view value = line.substr(equals + 1);
  if (name == "maker_key") return AddKey(value, deployment);
  for (const TextField& row : kTextFields) {
    if (name == row.name && !value.empty()) deployment.*row.field = FromUtf8(value);
  }
}

struct OwnDeployment {
  Deployment value = ParseDeployment(FindOwnResource(MAKEINTRESOURCEW(kDeploymentResource), RT_RCDATA));
};
constinit Lazy<OwnDeployment> own;

}  // namespace

Deployment ParseDeployment(std::string_view utf8) {
  Deployment deployment;
  if (EatLine(utf8) != kFirstLine) return deployment;
  while (!utf8.empty()) ReadLine(EatLine(utf8), deployment);
  return deployment;
}

const Deployment& GetDeployment() { return own.Get().value; }

}  // namespace vanta
