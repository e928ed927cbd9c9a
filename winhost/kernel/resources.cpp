#include "winhost/kernel/resources.h"

#include <windows.h>

#include <mutex>
#include <set>

#include "winhost/image/host_image.h"
#include "winhost/image/mapped_file.h"
#include "winhost/kernel/paths.h"
#include "winhost/machine/faults.h"

namespace winhost {
namespace {

// What a program's or library's file holds. Kept until the process ends, as HRSRCs and pointers into it may be.
struct ModuleResources {
  std::shared_ptr<const MappedFile> file;
  ResourceTree tree;
};

struct Table {
  std::mutex lock;
  std::map<std::u16string, std::shared_ptr<const ModuleResources>> modules;  // by path, "" for the program
  std::vector<std::shared_ptr<const ModuleResources>> retired;
  std::set<const ResourceBlob*> given;  // what stands behind the HRSRCs handed out
};

Table& TheTable() {
  static Table* table = new Table;
  return *table;
}

std::u16string ModulePath(HMODULE module) {
  std::u16string path(32768, u'\0');
  path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::shared_ptr<const ModuleResources> ReadModule(const std::u16string& path) {
  auto resources = std::make_shared<ModuleResources>();
  const auto file = LinuxPath(path);
  if (file) resources->file = MappedFile::Open(*file);
  if (!resources->file) return resources;
  if (const auto image = OpenImage(resources->file->bytes())) resources->tree = image->Resources();
  return resources;
}

// Null, with the last error set, for a handle that is no module.
std::shared_ptr<const ModuleResources> ResourcesOf(HMODULE module) {
  const bool program = module == nullptr || module == GetModuleHandleW(nullptr);
  const std::u16string key = program ? std::u16string() : ModulePath(module);
  if (!program && key.empty()) return nullptr;
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  auto& slot = table.modules[key];
  if (!slot) slot = ReadModule(program ? ModulePath(nullptr) : key);
  return slot;
}

ResourceName NameFrom(LPCWSTR name) {
  if (reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF) return static_cast<std::uint16_t>(reinterpret_cast<ULONG_PTR>(name));
  const std::u16string_view text(name);
  if (text.size() < 2 || text[0] != u'#') return ResourceName(text);
  std::uint32_t id = 0;
  for (const char16_t digit : text.substr(1)) {
    if (digit < u'0' || digit > u'9' || id > 0xFFFF) return ResourceName(text);
    id = id * 10 + (digit - u'0');
  }
  return id <= 0xFFFF ? ResourceName(static_cast<std::uint16_t>(id)) : ResourceName(text);
}

DWORD WhatIsMissing(const ResourceTree& tree, const ResourceName& type, const ResourceName& name) {
  if (tree.empty()) return ERROR_RESOURCE_DATA_NOT_FOUND;
  bool has_type = false;
  for (const auto& [key, blob] : tree) {
    if (key.type == type && key.name == name) return ERROR_RESOURCE_LANG_NOT_FOUND;
    has_type = has_type || key.type == type;
  }
  return has_type ? ERROR_RESOURCE_NAME_NOT_FOUND : ERROR_RESOURCE_TYPE_NOT_FOUND;
}

HRSRC FindFor(HMODULE module, const ResourceName& type, const ResourceName& name, WORD language) {
  if (const auto error = PlannedFault("FindResourceW", type.Display() + u"/" + name.Display())) {
    SetLastError(*error);
    return nullptr;
  }
  const auto resources = ResourcesOf(module);
  if (!resources) return nullptr;
  const auto exact = resources->tree.find({type, name, language});
  const ResourceBlob* blob = exact != resources->tree.end() ? &exact->second
                             : language == 0                ? FindInTree(resources->tree, type, name)
                                                            : nullptr;
  if (!blob) {
    SetLastError(WhatIsMissing(resources->tree, type, name));
    return nullptr;
  }
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  table.given.insert(blob);
  return reinterpret_cast<HRSRC>(const_cast<ResourceBlob*>(blob));
}

const ResourceBlob* Given(const char* operation, HRSRC resource) {
  if (const auto error = PlannedFault(operation)) {
    SetLastError(*error);
    return nullptr;
  }
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  const auto found = table.given.find(reinterpret_cast<const ResourceBlob*>(resource));
  if (found != table.given.end()) return *found;
  SetLastError(ERROR_INVALID_HANDLE);
  return nullptr;
}

}  // namespace

void SetProgramResources(ResourceTree resources) {
  auto made = std::make_shared<ModuleResources>();
  made->tree = std::move(resources);
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  auto& slot = table.modules[std::u16string()];
  if (slot) table.retired.push_back(slot);
  slot = std::move(made);
}

}  // namespace winhost

HRSRC FindResourceW(HMODULE module, LPCWSTR name, LPCWSTR type) {
  return winhost::FindFor(module, winhost::NameFrom(type), winhost::NameFrom(name), 0);
}

HRSRC FindResourceExW(HMODULE module, LPCWSTR type, LPCWSTR name, WORD language) {
  return winhost::FindFor(module, winhost::NameFrom(type), winhost::NameFrom(name), language);
}

HGLOBAL LoadResource(HMODULE, HRSRC resource) {
  const winhost::ResourceBlob* blob = winhost::Given("LoadResource", resource);
  return blob ? const_cast<std::byte*>(blob->bytes().data()) : nullptr;
}

LPVOID LockResource(HGLOBAL data) { return data; }

DWORD SizeofResource(HMODULE, HRSRC resource) {
  const winhost::ResourceBlob* blob = winhost::Given("SizeofResource", resource);
  return blob ? static_cast<DWORD>(blob->bytes().size()) : 0;
}
