// The product's files, as the executable carries them: a ZIP archive in resource RT_RCDATA 205, read in place.
#pragma once

#include <windows.h>

namespace vanta {

inline constexpr WORD kPayloadResource = 205;

// Opens the payload archive into the install state, in place of one already open. False when the resource is missing or
// empty, which posts ErrorNoEmbeddedFile and leaves an open archive open, or when it is no archive, which posts nothing
// and leaves none open.
bool openEmbeddedFilesArchive();

void ClosePayload();

// The resource holds something, but no archive: what openEmbeddedFilesArchive keeps to itself.
bool IsPayloadUnreadable();

}  // namespace vanta
