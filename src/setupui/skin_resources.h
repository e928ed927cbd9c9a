// The skin package and string table as the UI library sees them.
#pragma once

#include "lumo/core/resource_source.h"

namespace vanta {

// One for the process; stateless, since package and table are the process's own.
const lumo::ResourceSource& SkinResources();

}  // namespace vanta
