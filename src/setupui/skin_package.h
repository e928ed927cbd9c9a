// The skin package inside the executable: layouts, pictures and texts of the setup's windows.
//
// Opened and closed by the main thread at start-up and end; looked into by the main thread only.
#pragma once

#include "base/text.h"
#include "base/unique.h"
#include "install/zip/zip_index.h"

namespace vanta {

inline constexpr WORD kSkinResource = 202;
inline constexpr const WCHAR* kSkinResourceType = TEXT("SKIN");

enum SkinResult : int { SkinOk = 0, SkinMissingArgument = 1, SkinResourceFailure = 4 };

using UniqueGlobal = Unique<HGLOBAL, &GlobalFree>;

// Opens the archive in the executable's resource (`id`, `type`) in place of one already open. SkinOk or
// SkinResourceFailure: without a package lookups find nothing and callers turn to the disk.
int LoadSkinResource(WORD id, const WCHAR* type, const char* password);

// The same for an archive in memory, which must stay there until the package is closed.
int LoadSkinArchive(std::string_view bytes, const char* password);

// Starts the UI library: sets the theme and language folders below `root`, declares the process DPI-aware where asked,
// and loads the string table. SkinOk, or SkinMissingArgument when a folder is null.
int InitSkin(const WCHAR* root, const WCHAR* theme, const WCHAR* language, bool dpi_aware);

// A package is open.
bool IsSkinPackaged();

// Root and theme / root and language, each ending in a separator; "" before InitSkin.
const String& SkinThemeFolder();
const String& SkinLanguageFolder();

// The whole uncompressed entry in a movable memory block that the caller owns, and its size in bytes (the block may be
// larger). None when no package is open, the entry is missing or its data are damaged.
UniqueGlobal ReadSkinFile(StringView path, DWORD* size);
bool SkinFileExists(StringView path);

// Where a package with these entries has the file of a path as layouts write it; null when it has none.
const ZipPlace* FindSkinEntry(const ZipIndex& entries, StringView path);

// Closes the package and ends the UI library, after the last window is gone. SkinOk.
int ShutdownSkin();

}  // namespace vanta
