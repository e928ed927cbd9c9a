// The table of views: small windows onto single functions of the product, one JSON request in, one JSON answer out.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <span>
#include <string>

namespace vantakit {

struct View {
  const char* op;
  // Throws nlohmann::json::exception for a missing or mistyped field, std::runtime_error for what cannot be answered.
  nlohmann::json (*answer)(const nlohmann::json& input);
};

std::span<const View> Views();

// Answers one line of input: {"id", "op", "input"} → {"id", "output"} or {"id", "error"}. Never throws.
std::string AnswerLine(const std::string& line);

}  // namespace vantakit
