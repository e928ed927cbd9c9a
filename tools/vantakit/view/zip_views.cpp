#include "tools/vantakit/view/zip_views.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/sha256.h"
#include "base/text.h"
#include "base/unique.h"
#include "install/zip/entry_attributes.h"
#include "install/zip/entry_name.h"
#include "install/zip/entry_times.h"
#include "install/zip/zip_reader.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;
using vanta::ZipError;

struct CloseZip {
  void operator()(vanta::ZipReader* reader) const { vanta::Close(reader); }
};
using Reader = std::unique_ptr<vanta::ZipReader, CloseZip>;

std::string NameOf(ZipError error) {
  switch (error) {
    case vanta::ZipOk:
      return "ZipOk";
    case vanta::ZipNoFile:
      return "ZipNoFile";
    case vanta::ZipWrite:
      return "ZipWrite";
    case vanta::ZipNotFound:
      return "ZipNotFound";
    case vanta::ZipMore:
      return "ZipMore";
    case vanta::ZipPassword:
      return "ZipPassword";
    case vanta::ZipArgs:
      return "ZipArgs";
    case vanta::ZipMode:
      return "ZipMode";
    case vanta::ZipNotInited:
      return "ZipNotInited";
    case vanta::ZipSeek:
      return "ZipSeek";
    case vanta::ZipFlate:
      return "ZipFlate";
  }
  return std::to_string(static_cast<DWORD>(error));
}

std::string OkOrName(ZipError error) { return error == vanta::ZipOk ? "ok" : NameOf(error); }

std::uint64_t Number(const FILETIME& time) {
  return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

Json Times(const FILETIME& modification, const FILETIME& access, const FILETIME& creation) {
  return {{"modification", Number(modification)}, {"access", Number(access)}, {"creation", Number(creation)}};
}

std::string Hex(std::span<const BYTE> bytes) {
  std::string text;
  for (const BYTE byte : bytes) {
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
  }
  return text;
}

std::string Sha256Hex(const std::string& bytes) {
  return Hex(vanta::Sha256(reinterpret_cast<const BYTE*>(bytes.data()), bytes.size()));
}

std::vector<BYTE> FromHex(const std::string& text) {
  if (text.size() % 2 != 0 || text.find_first_not_of("0123456789abcdefABCDEF") != text.npos) {
    throw std::runtime_error("\"" + text + "\" is no hex text");
  }
  std::vector<BYTE> bytes;
  for (size_t i = 0; i < text.size(); i += 2)
    bytes.push_back(static_cast<BYTE>(std::stoul(text.substr(i, 2), nullptr, 16)));
  return bytes;
}

// A number of a field that holds no others.
template <class T>
T Field(const Json& input, const char* name) {
  const auto value = input.at(name).get<std::int64_t>();
  if (value != static_cast<std::int64_t>(static_cast<T>(value))) {
    throw std::runtime_error(std::string("\"") + name + "\" is out of range");
  }
  return static_cast<T>(value);
}

std::string ReadLinuxFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string ReadMachineFile(HANDLE file) {
  std::string bytes;
  std::vector<char> piece(1 << 16);
  DWORD read = 0;
  while (ReadFile(file, piece.data(), static_cast<DWORD>(piece.size()), &read, nullptr) && read > 0) {
    bytes.append(piece.data(), read);
  }
  return bytes;
}

vanta::String FreshFolder() {
  static std::atomic<unsigned> made{0};
  const vanta::String folder = vanta::FromUtf8("C:\\view" + std::to_string(++made));
  if (!CreateDirectoryW(folder.c_str(), nullptr)) throw std::runtime_error("cannot make " + vanta::ToUtf8(folder));
  return folder;
}

// What stands at `target` after an extraction; a file is removed again. A device answers under any folder, and is
// neither.
void AddOutcome(const vanta::String& target, Json& entry) {
  vanta::UniqueFile file(CreateFileW(target.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  const bool is_file = file && GetFileType(file.Get()) == FILE_TYPE_DISK;
  const DWORD attributes = GetFileAttributesW(target.c_str());
  entry["nofile"] = !is_file;
  entry["directory"] = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  entry["size"] = nullptr;
  entry["sha256"] = nullptr;
  if (!is_file) return;
  const std::string bytes = ReadMachineFile(file.Get());
  entry["size"] = bytes.size();
  entry["sha256"] = Sha256Hex(bytes);
  file.Reset();
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(target.c_str());
}

Json Entry(vanta::ZipReader* reader, LONG index) {
  vanta::ZipEntryInfo info;
  Json entry = {{"index", index}, {"info", OkOrName(vanta::GetEntry(reader, index, &info))}};
  entry["name"] = vanta::ToUtf8(info.name);
  entry["attributes"] = info.attributes;
  entry["compressed"] = info.compressed_size;
  entry["uncompressed"] = info.uncompressed_size;
  entry["times"] = Times(info.modification_time, info.access_time, info.creation_time);
  const vanta::String target = FreshFolder() + TEXT("\\") + info.name;
  entry["extract"] = OkOrName(vanta::ExtractToFile(reader, index, target.c_str()));
  // A nameless entry's target is the folder itself, which did not come of it.
  AddOutcome(info.name[0] ? target : vanta::String(), entry);
  return entry;
}

LONG Find(vanta::ZipReader* reader, const Json& question) {
  LONG index = -1;
  vanta::ZipEntryInfo info;
  const vanta::String name = vanta::FromUtf8(question.at(0).get<std::string>());
  vanta::FindEntry(reader, name.c_str(), question.at(1).get<bool>(), &index, &info);
  return index;
}

Json MemoryRun(vanta::ZipReader* reader, const Json& calls) {
  Json codes = Json::array(), counts = Json::array();
  std::string all;
  for (const Json& call : calls) {
    const auto length = call.at(1).get<DWORD>();
    const auto buffer = std::make_unique_for_overwrite<char[]>(length);
    DWORD delivered = 0;
    codes.push_back(NameOf(vanta::ExtractToMemory(reader, call.at(0).get<LONG>(), buffer.get(), length, &delivered)));
    counts.push_back(delivered);
    all.append(buffer.get(), delivered);
  }
  return {{"codes", codes}, {"bytes", counts}, {"sha256", Sha256Hex(all)}};
}

}  // namespace

Json ZipArchiveView(const Json& input) {
  const std::string archive = ReadLinuxFile(input.at("archive").get<std::string>());
  const Json& secret = input.at("password");
  const std::string password = secret.is_null() ? "" : secret.get<std::string>();
  const auto open = [&] {
    return Reader(vanta::OpenFromMemory(archive.data(), archive.size(), secret.is_null() ? nullptr : password.c_str()));
  };
  const Json &indices = input.at("indices"), &names = input.at("find"), &runs = input.at("memory");
  const Reader reader = open();
  Json output = {{"open", OkOrName(vanta::LastZipError())}, {"count", 0}};
  Json &entries = output["entries"] = Json::array(), &found = output["find"] = Json::array();
  Json& memory = output["memory"] = Json::array();
  if (!reader) return output;
  vanta::ZipEntryInfo count;
  vanta::GetEntry(reader.get(), -1, &count);
  output["count"] = count.index;
  for (const Json& index : indices) entries.push_back(Entry(reader.get(), index.get<LONG>()));
  for (const Json& name : names) found.push_back(Find(reader.get(), name));
  for (const Json& run : runs) memory.push_back(MemoryRun(open().get(), run));
  return output;
}

Json ZipTimesView(const Json& input) {
  const std::vector<BYTE> extra = FromHex(input.at("local_extra").get<std::string>());
  const auto times = vanta::TimesFrom(Field<WORD>(input, "dos_date"), Field<WORD>(input, "dos_time"),
                                      Field<LONG>(input, "bias_minutes"), extra);
  return Times(times.modification, times.access, times.creation);
}

Json ZipAttributesView(const Json& input) {
  return {{"attributes", vanta::AttributesFromHost(Field<BYTE>(input, "host"), Field<DWORD>(input, "external"))}};
}

Json ZipSanitiseView(const Json& input) {
  const vanta::String name = vanta::FromUtf8(input.at("name").get<std::string>());
  return {{"name", vanta::ToUtf8(vanta::SanitiseName(name))}};
}

}  // namespace vantakit
