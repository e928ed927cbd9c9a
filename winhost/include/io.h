// The run-time's low-level file calls that the setup uses.
#pragma once

#include <minwindef.h>

// 0 when the file may be accessed so: 0 exists, 2 write, 4 read, 6 both; -1 with errno ENOENT, or EACCES for writing to
// a read-only file. A directory may always be written to, whatever its attributes, as with the Windows run-time.
int _waccess(const WCHAR* path, int mode);
