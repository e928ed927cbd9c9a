// What lies on a machine's drives, as its programs would see it; for tools that show or compare machines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace winhost {

struct FileFact {
  std::u16string path;  // "C:\dir\file.txt"
  bool directory;
  std::uint64_t size;        // bytes; 0 for a directory
  std::uint32_t attributes;  // FILE_ATTRIBUTE_*
  std::uint64_t creation;    // the three times in 100 ns units since 1601, UTC
  std::uint64_t access;
  std::uint64_t modification;
};

// Everything below `folder` ("C:\" or deeper), a folder before its contents, in the order in which Windows lists names.
// Empty when there is no such folder.
std::vector<FileFact> ListFiles(const std::u16string& folder);
// The drives of the machine that have a folder of their own, as roots: "C:\", "D:\".
std::vector<std::u16string> ListDrives();

}  // namespace winhost
