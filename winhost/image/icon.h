// .ico files as resources: every picture becomes an RT_ICON, the list of them an RT_GROUP_ICON.
#pragma once

#include <string>

#include "winhost/image/resource_tree.h"

namespace winhost {

// Puts the icon under the group number `group`; pictures are numbered from `first_picture`. Pictures of the group that
// `tree` held before are not removed. False, with `why`, for a file that is no icon or whose pictures lie outside it.
bool AddIcon(ResourceTree& tree, Bytes ico, std::uint16_t group, std::uint16_t first_picture, std::string* why);

}  // namespace winhost
