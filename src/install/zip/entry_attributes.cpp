#include "install/zip/entry_attributes.h"

namespace vanta {
namespace {

constexpr DWORD kDosAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                 FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_ARCHIVE;
constexpr DWORD kUnixDirectory = 0x4000u << 16;
constexpr DWORD kUnixOwnerWrite = 0x0080u << 16;

// MS-DOS, and the hosts that store its attributes too.
constexpr bool StoresDosAttributes(BYTE host) { return host == 0 || host == 7 || host == 11 || host == 14; }

}  // namespace

DWORD AttributesFromHost(BYTE host, DWORD external) {
  if (StoresDosAttributes(host)) return external & kDosAttributes;
  DWORD attributes = FILE_ATTRIBUTE_ARCHIVE;
  if (external & kUnixDirectory) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if (!(external & kUnixOwnerWrite)) attributes |= FILE_ATTRIBUTE_READONLY;
  return attributes;
}

}  // namespace vanta
