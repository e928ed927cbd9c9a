#include "winhost/registry/types.h"

namespace winhost {
namespace {

constexpr const char* kNames[] = {"REG_NONE",
                                  "REG_SZ",
                                  "REG_EXPAND_SZ",
                                  "REG_BINARY",
                                  "REG_DWORD",
                                  "REG_DWORD_BIG_ENDIAN",
                                  "REG_LINK",
                                  "REG_MULTI_SZ",
                                  "REG_RESOURCE_LIST",
                                  "REG_FULL_RESOURCE_DESCRIPTOR",
                                  "REG_RESOURCE_REQUIREMENTS_LIST",
                                  "REG_QWORD"};

}  // namespace

std::optional<std::uint32_t> RegistryType(std::string_view name) {
  for (std::uint32_t type = 0; type < std::size(kNames); ++type) {
    if (name == kNames[type]) return type;
  }
  return std::nullopt;
}

std::string RegistryTypeName(std::uint32_t type) {
  return type < std::size(kNames) ? kNames[type] : std::to_string(type);
}

}  // namespace winhost
