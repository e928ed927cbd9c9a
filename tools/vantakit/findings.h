// What a check has found.
#pragma once

#include <string>
#include <vector>

namespace vantakit {

struct Finding {
  enum Severity { Error, Warning };

  std::string place;  // a file of the package, a field
  std::string message;
  int line = 0;  // from 1; 0: the place as a whole
  Severity severity = Error;

  auto operator<=>(const Finding&) const = default;
};
using Findings = std::vector<Finding>;

// One line: "place:line: message"; warnings say so before the message.
std::string LineOf(const Finding& finding);

bool HasErrors(const Findings& findings);

void Append(const Findings& more, Findings* findings);

}  // namespace vantakit
