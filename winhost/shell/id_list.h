// Item identifier lists of paths: what a .lnk file holds of its target, and what the folder picker hands out.
//
//   u16 size, data    an item each for This PC and the drive ("C:\"), or the network and the share ("\\server\share");
//   …                 for each folder and the file
//   u16 0             the end
#pragma once

#include <string>
#include <string_view>

#include "winhost/shell/link_file.h"

namespace winhost {

// "C:\…".
bool IsOnDrive(std::u16string_view path);
// The whole list, for a path on a drive or a share; empty for any other. The link's target is a folder where its
// attributes say so, else its last component is a file. Names of servers and shares get "?" for what is not ASCII.
std::string IdListOf(const LinkFile& from);
// What any shell wrote, as far as it is on a drive or a share; empty where nothing is. Ends where the bytes do.
std::u16string PathOfIdList(std::string_view list);

}  // namespace winhost
