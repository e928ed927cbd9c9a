// The place of a program file where its signature lies, judged by shape alone. WinTrust answers "no signature" both for
// a file that has none and for one whose table is broken, and it tolerates bytes that no signature covers; here they
// differ.
#pragma once

#include <windows.h>

namespace vanta {

enum class CertificateTable {
  NoProgram,  // not a PE file that can be read
  None,       // a program without a table
  Damaged,    // a table that is not exactly one signed message at the very end of the file
  Present,
};

// Reads from the file's beginning; moves its file pointer.
CertificateTable ReadCertificateTable(HANDLE file);

}  // namespace vanta
