// Reads a ZIP archive that lies in memory: lists and finds its entries, and extracts them to files or into buffers.
//
// The archive is never copied: its memory must outlive the reader. A reader is used by one thread at a time; different
// readers may be used at once. Beside the archive a reader holds less than 100 KB, whatever the entries' sizes.
// Entry names are relative paths that cannot leave the folder they are joined to. No ZIP64, no multi-disk archives.
#pragma once

#include <windows.h>

#include <string_view>

#include "install/zip/zip_error.h"

namespace vanta {

class ZipReader;

struct ZipEntryInfo {
  LONG index;            // in central-directory order from 0; for the count query the number of entries; -1: no entry
  WCHAR name[MAX_PATH];  // sanitised relative path, separators as stored, terminated
  DWORD attributes;      // FILE_ATTRIBUTE_ READONLY, HIDDEN, SYSTEM, DIRECTORY, ARCHIVE
  FILETIME access_time;  // UTC; all three zero where the entry's date is impossible
  FILETIME creation_time;
  FILETIME modification_time;
  DWORD compressed_size;    // bytes
  DWORD uncompressed_size;  // bytes
};

// Opens the archive of `size` bytes at `data`. `password` may be null and is copied. Null where there is no readable
// end-of-central-directory record; LastZipError() is ZipNoFile then. The caller owes a Close.
ZipReader* OpenFromMemory(const void* data, size_t size, const char* password);

// All of the following answer ZipArgs for no handle and ZipMode for a handle that OpenFromMemory did not give or that
// is closed, and store their answer as the last error.

// Index -1 asks for the number of entries (in info->index, all else zero). ZipArgs: no such index or no info.
// ZipNoFile: the entry's headers are unreadable, its name is longer than 259 bytes, or its method is neither stored nor
// deflated. On failure *info is zeroed. Entries are cheapest to visit in rising order.
ZipError GetEntry(ZipReader* reader, LONG index, ZipEntryInfo* info);

// The first entry whose stored name is `name`, exactly or but for the case of ASCII letters. `index` and `info` may be
// null. Not there: ZipNotFound, *index and info->index -1. Looks at every name; ZipIndex is for many lookups.
ZipError FindEntry(ZipReader* reader, const WCHAR* name, bool ignore_case, LONG* index, ZipEntryInfo* info);

// Writes the entry to `path` (relative ones lie below the directory that was current at opening), replacing what is
// there (a protected file too), with the entry's attributes and times; missing folders are made, and a directory entry
// is one. ZipNoFile also where Windows would take the entry's name for something else than a file below that folder;
// then nothing was touched. A failure while reading or writing leaves the file as far as it was written, never longer
// than declared.
ZipError ExtractToFile(ZipReader* reader, LONG index, const WCHAR* path);

// Inflates the entry into `buffer` of `length` bytes. ZipMore: the buffer is full and the next call for the same index
// goes on behind it. ZipOk: the entry's end was reached (also when the buffer is then exactly full); a next call starts
// over. *delivered (may be null) is the number of bytes put; 0 on every other answer, after which the entry starts
// over.
ZipError ExtractToMemory(ZipReader* reader, LONG index, void* buffer, DWORD length, DWORD* delivered = nullptr);

ZipError Close(ZipReader* reader);

// The answer of the latest of these calls on any thread.
ZipError LastZipError();

// Where an entry's header stands; lets a reader go there without passing the entries before it.
struct ZipPlace {
  LONG index = 0;
  ULONGLONG header = 0;  // bytes from the archive's first byte
};

// The stored name of an entry, as a view into the archive, with its place; without looking at the entry itself.
// ZipNoFile also for names longer than 259 bytes.
ZipError GetStoredName(ZipReader* reader, LONG index, std::string_view* name, ZipPlace* place);

// Puts the reader's cursor there, so that the next call for place.index costs the same wherever it lies.
ZipError MoveTo(ZipReader* reader, const ZipPlace& place);

}  // namespace vanta
