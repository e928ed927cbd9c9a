// The calls on reader handles: which handles are readers, and the last error.

#include <algorithm>
#include <atomic>
#include <memory>
#include <vector>

#include "base/lock.h"
#include "install/zip/reader_state.h"

namespace vanta {
namespace {

// The readers that are open. A handle is compared with them before it is followed.
class OpenReaders {
 public:
  void Add(ZipReader* reader) {
    Guard guard(lock_);
    readers_.push_back(reader);
  }
  bool Has(ZipReader* reader) {
    Guard guard(lock_);
    return std::find(readers_.begin(), readers_.end(), reader) != readers_.end();
  }
  bool Remove(ZipReader* reader) {
    Guard guard(lock_);
    const auto at = std::find(readers_.begin(), readers_.end(), reader);
    if (at == readers_.end()) return false;
    readers_.erase(at);
    return true;
  }

 private:
  CriticalSection lock_;
  std::vector<ZipReader*> readers_;
};

constinit Lazy<OpenReaders> open_readers;
constinit std::atomic<DWORD> last_error{ZipOk};

ZipError Remember(ZipError error) {
  last_error.store(error, std::memory_order_relaxed);
  return error;
}

ZipError Check(ZipReader* reader) {
  if (!reader) return ZipArgs;
  return open_readers.Get().Has(reader) ? ZipOk : ZipMode;
}

template <class Call>
ZipError OnReader(ZipReader* reader, Call call) {
  const ZipError misuse = Check(reader);
  return Remember(misuse ? misuse : call());
}

}  // namespace

ZipReader* OpenFromMemory(const void* data, size_t size, const char* password) {
  auto reader = std::make_unique<ZipReader>();
  if (Remember(reader->Open(data, size, password))) return nullptr;
  open_readers.Get().Add(reader.get());
  return reader.release();
}

ZipError GetEntry(ZipReader* reader, LONG index, ZipEntryInfo* info) {
  return OnReader(reader, [=] { return reader->GetEntry(index, info); });
}

ZipError FindEntry(ZipReader* reader, const WCHAR* name, bool ignore_case, LONG* index, ZipEntryInfo* info) {
  return OnReader(reader, [=] { return reader->FindEntry(name, ignore_case, index, info); });
}

ZipError ExtractToFile(ZipReader* reader, LONG index, const WCHAR* path) {
  return OnReader(reader, [=] { return reader->ExtractToFile(index, path); });
}

ZipError ExtractToMemory(ZipReader* reader, LONG index, void* buffer, DWORD length, DWORD* delivered) {
  return OnReader(reader, [=] { return reader->ExtractToMemory(index, buffer, length, delivered); });
}

ZipError Close(ZipReader* reader) {
  if (!reader) return Remember(ZipArgs);
  if (!open_readers.Get().Remove(reader)) return Remember(ZipMode);
  delete reader;
  return Remember(ZipOk);
}

ZipError GetStoredName(ZipReader* reader, LONG index, std::string_view* name, ZipPlace* place) {
  return OnReader(reader, [=] { return reader->GetStoredName(index, name, place); });
}

ZipError MoveTo(ZipReader* reader, const ZipPlace& place) {
  return OnReader(reader, [=] { return reader->MoveTo(place); });
}

ZipError LastZipError() { return static_cast<ZipError>(last_error.load(std::memory_order_relaxed)); }

}  // namespace vanta
