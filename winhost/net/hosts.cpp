#include "winhost/net/hosts.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace winhost {
namespace {

std::string Lower(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

// Reserved to resolve nowhere; asking a name server would only cost its time-out.
bool IsInvalidDomain(const std::string& host) { return host == "invalid" || host.ends_with(".invalid"); }

}  // namespace

Hosts::Hosts(Machine& machine) {
  const auto& raw = machine.facts().raw;
  const auto hosts = raw ? raw->find("hosts") : nlohmann::json::const_iterator();
  if (!raw || hosts == raw->end() || !hosts->is_object()) return;
  for (const auto& [name, place] : hosts->items()) {
    places_[Lower(name)] = place.is_string() ? place.get<std::string>() : std::string();
  }
}

HostPlace Hosts::Find(const std::string& host) const {
  const std::string name = Lower(host);
  const auto found = places_.find(name);
  if (found == places_.end()) return {.known = !IsInvalidDomain(name)};
  if (found->second.empty()) return {.known = false};
  const bool with_port = found->second.rfind(':') != std::string::npos;
  return {.instead = found->second + (with_port ? "" : ":")};
}

}  // namespace winhost
