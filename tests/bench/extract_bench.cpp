// One measurement a run, printed as one JSON object.
//   extract_bench product ARCHIVE WINDOWS_FOLDER   the setup's own extraction, on the machine of VANTA_MACHINE
//   extract_bench memory ARCHIVE WINDOWS_FOLDER    the same, with the memory that it takes beyond the archive
//   extract_bench loop ARCHIVE LINUX_FOLDER        the yardstick
//   extract_bench list ARCHIVE                     every entry's information, in order
//   extract_bench lookup ARCHIVE                   ten names by index, read as the skin reads them

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "app/install_state.h"
#include "base/text.h"
#include "install/extraction.h"
#include "install/zip/zip_index.h"
#include "install/zip/zip_reader.h"
#include "tests/bench/measure.h"
#include "tests/bench/minimal_loop.h"

namespace {

using bench::Now;

int Fail(const char* what) {
  std::fprintf(stderr, "extract_bench: %s\n", what);
  return 1;
}

// Seconds of a whole extraction; negative when it failed.
double ExtractPayload(const bench::MappedFile& archive, const vanta::String& target) {
  const double start = Now();
  vanta::ZipReader* const reader = vanta::OpenFromMemory(archive.bytes().data(), archive.bytes().size(), nullptr);
  vanta::GetInstallState().payload = reader;
  const bool extracted = reader && vanta::extractInstallerFiles(target);
  vanta::Close(reader);
  return extracted ? Now() - start : -1;
}

int Product(const std::string& path, const char* folder, bool with_memory) {
  const bench::MappedFile archive(path);
  const vanta::String target = vanta::FromUtf8(folder);
  CreateDirectoryW(target.c_str(), nullptr);  // also what first touches the machine, which is not the setup's cost
  std::optional<bench::PeakMemory> peak;
  if (with_memory) peak.emplace();
  const double seconds = ExtractPayload(archive, target);
  if (seconds < 0) return Fail("the extraction failed");
  if (peak) {
    std::printf("{\"memory\": %zu}\n", peak->growth());
  } else {
    std::printf("{\"seconds\": %.6f}\n", seconds);
  }
  return 0;
}

int Loop(const std::string& path, const char* folder) {
  const bench::MappedFile archive(path);
  const double start = Now();
  if (!bench::ExtractMinimally(archive.bytes(), folder)) return Fail("the loop failed");
  std::printf("{\"seconds\": %.6f}\n", Now() - start);
  return 0;
}

int List(const std::string& path) {
  const bench::MappedFile archive(path);
  vanta::ZipReader* const reader = vanta::OpenFromMemory(archive.bytes().data(), archive.bytes().size(), nullptr);
  vanta::ZipEntryInfo info;
  if (vanta::GetEntry(reader, -1, &info) != vanta::ZipOk) return Fail("no archive");
  const LONG count = info.index;
  const double start = Now();
  for (LONG index = 0; index < count; ++index) {
    if (vanta::GetEntry(reader, index, &info) != vanta::ZipOk) return Fail("unreadable entry");
  }
  const double seconds = Now() - start;
  vanta::Close(reader);
  std::printf("{\"entries\": %d, \"nanoseconds_an_entry\": %.1f}\n", static_cast<int>(count), seconds / count * 1e9);
  return 0;
}

int Lookup(const std::string& path) {
  constexpr int kNames = 10, kRounds = 20000;
  const bench::MappedFile archive(path);
  vanta::ZipReader* const reader = vanta::OpenFromMemory(archive.bytes().data(), archive.bytes().size(), nullptr);
  vanta::ZipEntryInfo info;
  if (vanta::GetEntry(reader, -1, &info) != vanta::ZipOk || info.index < kNames)
    return Fail("no archive of ten entries");
  const LONG count = info.index;
  std::vector<vanta::String> names;
  for (LONG i = 0; i < kNames; ++i) {
    vanta::GetEntry(reader, (count - 1) / (kNames - 1) * i, &info);
    names.push_back(info.name);
  }
  const double built_from = Now();
  vanta::ZipIndex index;
  index.Build(reader);
  const double start = Now();
  for (int i = 0; i < kRounds; ++i) {
    const vanta::ZipPlace* const place = index.Find(names[static_cast<std::size_t>(i % kNames)]);
    if (!place || vanta::MoveTo(reader, *place) || vanta::GetEntry(reader, place->index, &info))
      return Fail("not found");
  }
  const double seconds = Now() - start;
  vanta::Close(reader);
  std::printf("{\"entries\": %d, \"nanoseconds_a_lookup\": %.1f, \"index_milliseconds\": %.3f}\n",
              static_cast<int>(count), seconds / kRounds * 1e9, (start - built_from) * 1e3);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string verb = argc > 1 ? argv[1] : "";
  if (verb == "product" && argc == 4) return Product(argv[2], argv[3], false);
  if (verb == "memory" && argc == 4) return Product(argv[2], argv[3], true);
  if (verb == "loop" && argc == 4) return Loop(argv[2], argv[3]);
  if (verb == "list" && argc == 3) return List(argv[2]);
  if (verb == "lookup" && argc == 3) return Lookup(argv[2]);
  return Fail("product | memory | loop ARCHIVE FOLDER | list ARCHIVE | lookup ARCHIVE");
}
