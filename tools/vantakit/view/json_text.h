// The product's texts in JSON.
#pragma once

#include "base/text.h"

#include <nlohmann/json.hpp>

namespace vantakit {

// A text field; throws nlohmann::json::exception when it is missing or no text.
inline vanta::String TextOf(const nlohmann::json& object, const char* field) {
  return vanta::FromUtf8(object.at(field).get_ref<const std::string&>());
}
inline vanta::String TextOf(const nlohmann::json& value) {
  return vanta::FromUtf8(value.get_ref<const std::string&>());
}

template <class Map>
nlohmann::json ObjectOf(const Map& map) {
  nlohmann::json object = nlohmann::json::object();
  for (const auto& [name, value] : map) object[vanta::ToUtf8(name)] = vanta::ToUtf8(value);
  return object;
}

// Two lower-case digits a byte.
inline std::string HexOf(const void* bytes, size_t size) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (size_t i = 0; i < size; ++i) {
    const unsigned char byte = static_cast<const unsigned char*>(bytes)[i];
    hex += kDigits[byte >> 4];
    hex += kDigits[byte & 15];
  }
  return hex;
}

}  // namespace vantakit
