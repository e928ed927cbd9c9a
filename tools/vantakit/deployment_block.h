// The deployment block that a packed setup carries; the product reads it with ParseDeployment.
#pragma once

#include <string>
#include <vector>

#include "tools/vantakit/findings.h"

namespace vantakit {

struct DeploymentFields {
  std::string publisher;
  std::string statistics;
  std::string upgrade;
  std::string agreement;
  std::vector<std::string> maker_keys;  // 64 hexadecimal digits each
};

// The fields of an existing block, or the product's defaults where there is none.
DeploymentFields ReadDeployment(std::string_view block);

// Names that are no host names, keys that are no hashes.
Findings CheckDeployment(const DeploymentFields& fields);
// What keeps this from being released: placeholder hosts, no key, the development key.
Findings FindPlaceholders(const DeploymentFields& fields);

std::string WriteDeployment(const DeploymentFields& fields);

}  // namespace vantakit
