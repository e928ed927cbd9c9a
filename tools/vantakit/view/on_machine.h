// Views of what the product finds on a whole machine. They are answered by a process of their own that lives there,
// because the product keeps some answers for a process's life.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vantakit {

// The answer of `op` on the machine that `input`'s field "machine" names by its folder: `here`'s where this process
// lives on it, else that of a view process started there. Throws std::runtime_error when the folder is no machine.
nlohmann::json AnswerOn(const std::string& op, const nlohmann::json& input, nlohmann::json (*here)());

}  // namespace vantakit
