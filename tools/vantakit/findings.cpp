#include "tools/vantakit/findings.h"

#include <algorithm>

namespace vantakit {

std::string LineOf(const Finding& finding) {
  const std::string line = finding.line ? ":" + std::to_string(finding.line) : std::string();
  return finding.place + line + (finding.severity == Finding::Warning ? ": warning: " : ": ") + finding.message;
}

bool HasErrors(const Findings& findings) {
  return std::ranges::any_of(findings, [](const Finding& each) { return each.severity == Finding::Error; });
}

void Append(const Findings& more, Findings* findings) { findings->insert(findings->end(), more.begin(), more.end()); }

}  // namespace vantakit
