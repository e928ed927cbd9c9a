#include <windows.h>
#include <ole2.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "winhost/com/object.h"

namespace winhost {

template <>
inline constexpr std::array kIids<IStream> = {&IID_IStream, &IID_ISequentialStream};

namespace {

// The block, shared by a stream and its clones; the last of them frees it where that was asked for.
struct SharedBlock {
  SharedBlock(HGLOBAL block, bool owns) : memory(block), release(owns) {}
  SharedBlock(const SharedBlock&) = delete;
  SharedBlock& operator=(const SharedBlock&) = delete;
  ~SharedBlock() {
    if (release) GlobalFree(memory);
  }

  HGLOBAL memory;
  bool release;
};

class MemoryStream final : public ComObject<IStream> {
 public:
  explicit MemoryStream(std::shared_ptr<SharedBlock> block, ULONGLONG place = 0)
      : block_(std::move(block)), place_(place) {}

  HGLOBAL Memory() const { return block_->memory; }

  HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG count, ULONG* done) override {
    if (const auto failure = PlannedFailure("IStream::Read")) return *failure;
    if (!bytes) return STG_E_INVALIDPOINTER;
    const ULONGLONG left = Size() - std::min(Size(), place_);
    const auto given = static_cast<ULONG>(std::min<ULONGLONG>(count, left));
    if (given) {
      std::memcpy(bytes, static_cast<const BYTE*>(GlobalLock(block_->memory)) + place_, given);
      GlobalUnlock(block_->memory);
    }
    place_ += given;
    if (done) *done = given;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override {
    if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
    const ULONGLONG bases[] = {0, place_, Size()};
    const ULONGLONG base = bases[origin];
    const auto back = static_cast<ULONGLONG>(move.QuadPart < 0 ? -(move.QuadPart + 1) : 0) + (move.QuadPart < 0);
    if (back > base) return STG_E_INVALIDFUNCTION;
    place_ = move.QuadPart < 0 ? base - back : base + static_cast<ULONGLONG>(move.QuadPart);
    if (position) position->QuadPart = place_;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD) override {
    if (!stat) return STG_E_INVALIDPOINTER;
    *stat = STATSTG{};
    stat->type = STGTY_STREAM;
    stat->cbSize.QuadPart = Size();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override { return MakeObject<MemoryStream>(clone, block_, place_); }

 private:
  ULONGLONG Size() const { return GlobalSize(block_->memory); }

  std::shared_ptr<SharedBlock> block_;
  ULONGLONG place_;
};

}  // namespace
}  // namespace winhost

HRESULT CreateStreamOnHGlobal(HGLOBAL memory, BOOL release, LPSTREAM* stream) {
  if (!stream) return E_INVALIDARG;
  *stream = nullptr;
  if (const auto failure = winhost::PlannedFailure("CreateStreamOnHGlobal")) return *failure;
  const bool made = !memory;
  if (made) memory = GlobalAlloc(GMEM_MOVEABLE, 0);
  if (!memory) return E_OUTOFMEMORY;
  if (!made && !GlobalLock(memory)) return E_INVALIDARG;
  if (!made) GlobalUnlock(memory);
  return winhost::MakeObject<winhost::MemoryStream>(stream,
                                                    std::make_shared<winhost::SharedBlock>(memory, release != 0));
}

HRESULT GetHGlobalFromStream(LPSTREAM stream, HGLOBAL* memory) {
  const auto* mine = dynamic_cast<winhost::MemoryStream*>(stream);
  if (!mine || !memory) return E_INVALIDARG;
  *memory = mine->Memory();
  return S_OK;
}
