// What the folder picker shows: the machine's drives and the folders on them. Paths are Windows paths; the empty one is
// the computer itself, whose folders are its drives. No question asked here counts as a call of the program's.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "winhost/dialogs/glyphs.h"

namespace winhost {

struct FolderPlace {
  std::u16string name;  // as it is shown
  std::u16string path;
  Glyph glyph;
};

// In the order in which they are shown; hidden and system folders are not. Empty for a folder that cannot be read.
std::vector<FolderPlace> PlacesIn(const std::u16string& folder);
// The folder itself, for showing where one is.
FolderPlace PlaceOf(const std::u16string& folder);
// The folder above; the computer is above drives and shares, and above itself.
std::u16string PlaceAbove(const std::u16string& folder);

enum class FolderSearch { Found, Missing, NoFolder };
// The folder that somebody means who types this while `current` is shown: blanks and quotes around it do not count, and
// "D:" is the drive. `found` is its full path as it is spelled on disk, set when it is there.
FolderSearch FindFolder(std::u16string_view typed, const std::u16string& current, std::u16string* found);

}  // namespace winhost
