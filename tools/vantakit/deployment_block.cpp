#include "tools/vantakit/deployment_block.h"

#include <algorithm>
#include <cstdio>

#include "base/deployment.h"

namespace vantakit {
namespace {

struct HostField {
  const char* name;
  std::string DeploymentFields::*value;
  bool server;  // is connected to
};
constexpr HostField kHosts[] = {{"publisher", &DeploymentFields::publisher, false},
                                {"statistics", &DeploymentFields::statistics, true},
                                {"upgrade", &DeploymentFields::upgrade, true},
                                {"agreement", &DeploymentFields::agreement, true}};

bool IsHostName(std::string_view name) {
  const auto plain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.';
  };
  return !name.empty() && name.size() <= 253 && std::all_of(name.begin(), name.end(), plain) && name.front() != '.' &&
         name.front() != '-' && name.find("..") == name.npos;
}

// A host to connect to may name its port, as a test's server needs it.
bool IsServerName(std::string_view name) {
  const size_t colon = name.find(':');
  if (colon == name.npos) return IsHostName(name);
  const std::string_view port = name.substr(colon + 1);
  const bool digits = !port.empty() && port.size() <= 5 && port.find_first_not_of("0123456789") == port.npos;
  return digits && std::stoul(std::string(port)) <= 65535 && IsHostName(name.substr(0, colon));
}

bool IsKeyHash(std::string_view hash) {
  return hash.size() == 64 && hash.find_first_not_of("0123456789abcdefABCDEF") == hash.npos;
}

std::string Lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

}  // namespace

DeploymentFields ReadDeployment(std::string_view block) {
  const vanta::Deployment read = vanta::ParseDeployment(block);
  DeploymentFields fields{vanta::ToUtf8(read.publisher),
                          vanta::ToUtf8(read.statistics_host),
                          vanta::ToUtf8(read.upgrade_host),
                          vanta::ToUtf8(read.agreement_host),
                          {}};
  for (const auto& key : read.maker_keys) {
    std::string hex;
    for (const unsigned char byte : key) {
      char pair[3];
      std::snprintf(pair, sizeof pair, "%02x", byte);
      hex += pair;
    }
    fields.maker_keys.push_back(hex);
  }
  return fields;
}

Findings CheckDeployment(const DeploymentFields& fields) {
  Findings findings;
  for (const HostField& host : kHosts) {
    const std::string& name = fields.*host.value;
    if (host.server ? !IsServerName(name) : !IsHostName(name))
      findings.push_back({host.name, "\"" + fields.*host.value + "\" is no host name"});
  }
  for (const std::string& key : fields.maker_keys) {
    if (!IsKeyHash(key)) findings.push_back({"maker key", "\"" + key + "\" is not 64 hexadecimal digits"});
  }
  return findings;
}

Findings FindPlaceholders(const DeploymentFields& fields) {
  Findings findings;
  for (const HostField& host : kHosts) {
    const std::string whole = Lower(fields.*host.value);
    const std::string name = whole.substr(0, whole.find(':'));
    if (name.empty() || name == "invalid" || name.ends_with(".invalid")) {
      findings.push_back({host.name, "\"" + fields.*host.value + "\" stands for a host that is not set"});
    }
  }
  if (fields.maker_keys.empty())
    findings.push_back({"maker key", "none is set, no program of the product would be trusted"});
  for (const std::string& key : fields.maker_keys) {
    if (Lower(key) == VANTA_DEV_KEY_HASH) findings.push_back({"maker key", "the development key of this build"});
  }
  return findings;
}

std::string WriteDeployment(const DeploymentFields& fields) {
  std::string block = "VANTADEPLOY 1\n";
  for (const HostField& host : kHosts) block += std::string(host.name) + "=" + fields.*host.value + "\n";
  for (const std::string& key : fields.maker_keys) block += "maker_key=" + Lower(key) + "\n";
  return block;
}

}  // namespace vantakit
