// Where FindResource and its family look.
#pragma once

#include <minwindef.h>

#include <vector>

#include "winhost/image/resource_tree.h"

namespace winhost {

// Makes these the resources of the running program, in place of what its file holds; an empty tree takes them away. For
// tests, whose executables carry none. Blobs that are views must outlive the process. Resources found before stay
// valid.
void SetProgramResources(ResourceTree resources);

}  // namespace winhost
