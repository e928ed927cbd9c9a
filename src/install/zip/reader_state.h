// The inside of a reader handle; shared by the files that implement the calls of zip_reader.h.
#pragma once

#include <memory>
#include <string>

#include "base/text.h"
#include "install/zip/central_directory.h"
#include "install/zip/entry_stream.h"
#include "install/zip/folder_maker.h"
#include "install/zip/zip_reader.h"

namespace vanta {

class ZipReader {
 public:
  ZipError Open(const void* data, size_t size, const char* password);

  ZipError GetEntry(LONG index, ZipEntryInfo* info);
  ZipError FindEntry(const WCHAR* name, bool ignore_case, LONG* index, ZipEntryInfo* info);
  ZipError GetStoredName(LONG index, std::string_view* name, ZipPlace* place);
  ZipError MoveTo(const ZipPlace& place);

  ZipError ExtractToFile(LONG index, const WCHAR* path);
  ZipError ExtractToMemory(LONG index, void* buffer, DWORD length, DWORD* delivered);

 private:
  static constexpr LONG kNone = -1;

  // The last entry that was looked at, so that asking again reads nothing.
  struct Entry {
    ZipEntryInfo info = {kNone, {}, 0, {}, {}, {}, 0, 0};
    bool extractable = false;
    EntryData data;
  };

  bool HasIndex(LONG index) const { return index >= 0 && index < directory_.entries; }
  ZipError ReadCentral(LONG index, CentralHeader* header, std::string_view* name);
  ZipError Load(LONG index);
  void LoadName(std::string_view stored_name);
  ZipError LoadLocal(const CentralHeader& header, ByteSpan* extra, EntryData* data) const;
  ZipError FillBuffer(BYTE* buffer, DWORD length, DWORD* delivered);
  ZipError WriteEntry(HANDLE file);
  HANDLE CreateOutput(StringView folder, const String& path);

  ByteSpan archive_;
  bool opened_ = false;
  CentralDirectory directory_;
  std::string password_;
  String base_;  // ends in a separator
  LONG bias_minutes_ = 0;
  ZipPlace cursor_;
  Entry entry_;
  LONG open_index_ = kNone;  // the entry that ExtractToMemory is in the middle of
  EntryStream stream_;
  FolderMaker folders_;
  std::unique_ptr<BYTE[]> read_buffer_;  // from the first extraction to a file on
};

}  // namespace vanta
