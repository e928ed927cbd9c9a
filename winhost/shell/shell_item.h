// Shell items: places of the file system as objects.
#pragma once

#include <shobjidl.h>

#include <string>

namespace winhost {

// An item for a full path, which is not looked at.
HRESULT MakeShellItem(const std::u16string& path, REFIID iid, void** item);
// The file-system path of anybody's item; empty for none.
std::u16string PathOfShellItem(IShellItem* item);
// A place's own name, as it is shown: the last component, or the whole of a root.
std::u16string PlaceName(const std::u16string& path);

}  // namespace winhost
