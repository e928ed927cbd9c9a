// Reading an object of facts key by key; what is left over is refused, so that a misspelt key is no silent success.
#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace winhost {

class FactFields {
 public:
  FactFields(const nlohmann::json& object, std::string where) : object_(object), where_(std::move(where)) {
    if (!object.is_object()) throw std::runtime_error(where_ + " must be an object");
  }

  FactFields& With(const char* key, const std::function<void(const nlohmann::json&)>& read) {
    known_.emplace_back(key);
    const auto found = object_.find(key);
    if (found == object_.end()) return *this;
    try {
      read(*found);
    } catch (const std::exception& wrong) {
      throw std::runtime_error(where_ + "." + key + ": " + wrong.what());
    }
    return *this;
  }
  template <class T>
  FactFields& Read(const char* key, T& into) {
    return With(key, [&](const nlohmann::json& value) { value.get_to(into); });
  }
  // null: none.
  template <class T>
  FactFields& Read(const char* key, std::optional<T>& into) {
    return With(key, [&](const nlohmann::json& value) {
      into = value.is_null() ? std::nullopt : std::optional<T>(value.get<T>());
    });
  }
  // A number, or a text of hexadecimal digits.
  template <class T>
  FactFields& ReadHex(const char* key, T& into) {
    return With(key, [&](const nlohmann::json& value) {
      into = value.is_string() ? static_cast<T>(std::stoul(value.get<std::string>(), nullptr, 16)) : value.get<T>();
    });
  }
  void NothingElse() const {
    for (const auto& [key, value] : object_.items()) {
      bool known = false;
      for (const std::string& name : known_) known = known || name == key;
      if (!known) throw std::runtime_error(where_ + ": unknown key \"" + key + "\"");
    }
  }

 private:
  const nlohmann::json& object_;
  std::string where_;
  std::vector<std::string> known_;
};

}  // namespace winhost
