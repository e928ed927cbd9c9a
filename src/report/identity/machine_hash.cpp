#include "report/identity/machine_hash.h"

#include <windows.h>

#include <cstring>

#include "report/identity/ascii.h"
#include "report/identity/md5_block.h"

namespace vanta {
namespace {

constexpr size_t kLengthAt = kMd5Block - 8;

// Fills and digests a message block by block.
class Context {
 public:
  // Takes bytes in, and counts them.
  void Add(const BYTE* bytes, size_t size) {
    bits_ += static_cast<ULONGLONG>(size) * 8;
    Feed(bytes, size);
  }

  // Pads to the length's place and feeds the length as it was before. The length itself is not counted and the block
  // stays in place, so that a second finish goes on at the length's place of the block that the first one digested.
  void Finish() {
    static constexpr BYTE kPadding[kMd5Block] = {0x80};
    BYTE length[8];
    for (size_t i = 0; i < sizeof length; ++i) length[i] = static_cast<BYTE>(bits_ >> (8 * i));
    used_ = static_cast<size_t>(bits_ / 8) % kMd5Block;
    Add(kPadding, used_ < kLengthAt ? kLengthAt - used_ : kMd5Block + kLengthAt - used_);
    Feed(length, sizeof length);
  }

  const Md5State& state() const { return state_; }

 private:
  void Feed(const BYTE* bytes, size_t size) {
    for (size_t i = 0; i < size; ++i) {
      block_[used_++] = bytes[i];
      if (used_ < kMd5Block) continue;
      DigestMd5Block(state_, block_);
      used_ = 0;
    }
  }

  Md5State state_ = kMd5Start;
  ULONGLONG bits_ = 0;
  BYTE block_[kMd5Block] = {};
  size_t used_ = 0;
};

}  // namespace

std::string MachineHash(std::string_view bytes) {
  Context context;
  context.Add(reinterpret_cast<const BYTE*>(bytes.data()), bytes.size());
  context.Finish();
  context.Finish();
  BYTE digest[16];
  for (size_t i = 0; i < sizeof digest; ++i) digest[i] = static_cast<BYTE>(context.state()[i / 4] >> (8 * (i % 4)));
  return LowerHex(digest, sizeof digest);
}

}  // namespace vanta
