#include "tools/vantakit/check.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "tools/vantakit/arguments.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/name_rules.h"
#include "tools/vantakit/signing.h"
#include "tools/vantakit/skin_source.h"
#include "winhost/image/mapped_file.h"
#include "winhost/image/pe_image.h"

namespace vantakit {
namespace {

constexpr char kHelp[] =
    "Tells what in a payload or skin folder will not work, one finding a line: FILE:LINE: what is wrong. Warnings are\n"
    "marked as such; the exit code is 1 when there is any other finding.\n\n"
    "usage: vantakit check [--payload DIR] [--skin DIR] [--unused] [--json]\n\n";
constexpr Option kOptions[] = {
    {"payload", Option::Value, "DIR", "the product's files"},
    {"skin", Option::Value, "DIR", "folder that holds resources/…"},
    {"unused", Option::Flag, nullptr, "warn of what no layout of the skin uses"},
    {"json", Option::Flag, nullptr,
     "{\"errors\", \"warnings\", \"findings\": [{\"file\", \"line\", \"severity\", \"message\"}…]}"},
};

// The files of the product that the setup itself starts, registers or points at.
struct NeededImage {
  const char* name;
  bool dll;
};
constexpr NeededImage kNeeded[] = {{"VantaPictor.exe", false},       {"VantaGlimpse.exe", false},
                                   {"VantaPictorUpdate.exe", false}, {"uninst.exe", false},
                                   {"ShellExt.dll", true},           {"ShellExt64.dll", true}};

const FolderEntry* FindEntry(const std::vector<FolderEntry>& entries, const std::string& name) {
  for (const FolderEntry& entry : entries) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

std::string CheckImage(const NeededImage& needed, const std::vector<FolderEntry>& entries) {
  const FolderEntry* entry = FindEntry(entries, needed.name);
  if (!entry) return "missing; the setup refers to it";
  const auto file = winhost::MappedFile::Open(entry->file);
  if (!file) return "cannot be read";
  const auto image = winhost::PeImage::Open(file->bytes());
  if (!image) return "no Windows image";
  if (image->IsDll() != needed.dll) return needed.dll ? "a program, not a library" : "a library, not a program";
  return {};
}

void PrintJson(const Findings& findings) {
  nlohmann::json list = nlohmann::json::array();
  int warnings = 0;
  for (const Finding& finding : findings) {
    const bool warning = finding.severity == Finding::Warning;
    warnings += warning;
    list.push_back({{"file", finding.place},
                    {"line", finding.line ? nlohmann::json(finding.line) : nlohmann::json()},
                    {"severity", warning ? "warning" : "error"},
                    {"message", finding.message}});
  }
  const nlohmann::json whole = {
      {"errors", static_cast<int>(findings.size()) - warnings}, {"warnings", warnings}, {"findings", std::move(list)}};
  std::printf("%s\n", whole.dump(1).c_str());
}

}  // namespace

Findings CheckPayload(const std::filesystem::path& folder) {
  const std::vector<FolderEntry> entries = ListFolder(folder);
  Findings findings = CheckEntryNames(entries);
  for (const NeededImage& needed : kNeeded) {
    if (const std::string wrong = CheckImage(needed, entries); !wrong.empty()) {
      findings.push_back({needed.name, wrong});
    }
  }
  return findings;
}

int RunCheck(int argc, char** argv) {
  if (AskedForHelp(argc, argv, kHelp, kOptions)) return 0;
  const Arguments arguments(kOptions, argc, argv);
  arguments.ExpectNoRest();
  if (!arguments.Has("payload") && !arguments.Has("skin")) throw WrongArguments("--payload or --skin is missing");
  Findings findings;
  if (const auto folder = arguments.Get("payload")) findings = CheckPayload(*folder);
  if (const auto folder = arguments.Get("skin")) {
    const SkinSource skin(*folder);
    Append(CheckSkin(skin.Folder(), arguments.Has("unused")), &findings);
  }
  if (arguments.Has("json")) {
    PrintJson(findings);
  } else {
    for (const Finding& finding : findings) std::printf("%s\n", LineOf(finding).c_str());
  }
  return HasErrors(findings) ? 1 : 0;
}

}  // namespace vantakit
