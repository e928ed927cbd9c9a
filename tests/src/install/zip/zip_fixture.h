// Tests of the reader: an archive in memory, a folder of the machine to extract into.
#pragma once

#include <memory>
#include <string>

#include "base/text.h"
#include "install/zip/zip_reader.h"
#include "tests/src/install/zip/zip_builder.h"
#include "tests/support/machine_fixture.h"

namespace zip_testing {

class ZipTest : public testing_support::OnMachine {
 protected:
  ~ZipTest() override { CloseReader(); }

  // Opens a copy of the archive whose memory is exactly as long as it, so that a read beyond shows.
  bool Open(const std::string& archive, const char* password = nullptr) {
    CloseReader();
    memory_ = std::make_unique<char[]>(archive.size());
    archive.copy(memory_.get(), archive.size());
    reader_ = vanta::OpenFromMemory(memory_.get(), archive.size(), password);
    return reader_ != nullptr;
  }
  bool Open() { return Open(zip_.Build()); }
  void CloseReader() {
    if (reader_) vanta::Close(reader_);
    reader_ = nullptr;
  }

  vanta::ZipEntryInfo Info(LONG index) {
    vanta::ZipEntryInfo info;
    EXPECT_EQ(vanta::GetEntry(reader_, index, &info), vanta::ZipOk) << index;
    return info;
  }
  vanta::String Name(LONG index) { return Info(index).name; }
  LONG Find(const WCHAR* name, bool ignore_case) {
    LONG index = -7;
    vanta::ZipEntryInfo info;
    const vanta::ZipError error = vanta::FindEntry(reader_, name, ignore_case, &index, &info);
    EXPECT_EQ(error, index == -1 ? vanta::ZipNotFound : vanta::ZipOk);
    EXPECT_EQ(info.index, index);
    return index;
  }

  // Extracts to C:\out\<target>.
  vanta::ZipError Extract(LONG index, const std::string& target = "f") {
    return vanta::ExtractToFile(reader_, index, vanta::FromUtf8("C:\\out\\" + target).c_str());
  }
  std::string Extracted(const std::string& target = "f") { return Contents("C:\\out\\" + target); }
  bool NothingWritten() { return !Exists("C:\\out"); }

  // The whole entry through ExtractToMemory, or nothing and *error.
  std::string Memory(LONG index, vanta::ZipError* error, DWORD at_most = 1 << 20) {
    std::string bytes(at_most, 0);
    DWORD delivered = 0;
    *error = vanta::ExtractToMemory(reader_, index, bytes.data(), at_most, &delivered);
    bytes.resize(delivered);
    return bytes;
  }

  ZipBuilder zip_;
  vanta::ZipReader* reader_ = nullptr;
  std::unique_ptr<char[]> memory_;
};

// Text that neither repeats at once nor resists compression; the same for the same seed.
inline std::string SampleText(size_t size, unsigned seed = 1) {
  std::string text;
  text.reserve(size + 8);
  while (text.size() < size) {
    seed = seed * 1664525 + 1013904223;
    text += "abcdefgh"[seed >> 29];
    if (seed % 5 == 0) text += " word ";
  }
  text.resize(size);
  return text;
}

}  // namespace zip_testing
