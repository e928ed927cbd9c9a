// Which names a payload's or skin's files may have, so that every installer run can use them.
#pragma once

#include "tools/vantakit/findings.h"
#include "tools/vantakit/folder.h"

namespace vantakit {

// Names that the reader would change or refuse, that Windows cannot create, that are too long where the product is
// installed by default, and names that are one and the same on a file system without case.
Findings CheckEntryNames(const std::vector<FolderEntry>& entries);

}  // namespace vantakit
