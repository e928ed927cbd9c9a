#include <windows.h>
#include <ole2.h>

#include <cstring>

#include "tests/support/machine_fixture.h"

namespace {

class StreamOnMemoryTest : public testing_support::OnMachine {
 protected:
  // "abcdef" in a movable block.
  HGLOBAL Letters() {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 6);
    std::memcpy(GlobalLock(memory), "abcdef", 6);
    GlobalUnlock(memory);
    return memory;
  }
  std::string Read(IStream* stream, ULONG count) {
    std::string bytes(count, '?');
    ULONG done = 99;
    EXPECT_EQ(stream->Read(bytes.data(), count, &done), S_OK);
    bytes.resize(done);
    return bytes;
  }
  static LARGE_INTEGER Large(LONGLONG value) {
    LARGE_INTEGER large;
    large.QuadPart = value;
    return large;
  }
};

TEST_F(StreamOnMemoryTest, ReadsToTheEndAndNoFurther) {
  HGLOBAL memory = Letters();
  IStream* stream = nullptr;
  ASSERT_EQ(CreateStreamOnHGlobal(memory, FALSE, &stream), S_OK);
  EXPECT_EQ(Read(stream, 4), "abcd");
  EXPECT_EQ(Read(stream, 4), "ef");
  EXPECT_EQ(Read(stream, 4), "");
  STATSTG stat{};
  EXPECT_EQ(stream->Stat(&stat, STATFLAG_NONAME), S_OK);
  EXPECT_EQ(stat.cbSize.QuadPart, 6u);
  EXPECT_EQ(stream->Release(), 0u);
  EXPECT_EQ(GlobalSize(memory), 6u) << "the block stays the caller's";
  GlobalFree(memory);
}

TEST_F(StreamOnMemoryTest, SeeksWithinReason) {
  IStream* stream = nullptr;
  CreateStreamOnHGlobal(Letters(), TRUE, &stream);
  ULARGE_INTEGER place{};
  EXPECT_EQ(stream->Seek(Large(-2), STREAM_SEEK_END, &place), S_OK);
  EXPECT_EQ(place.QuadPart, 4u);
  EXPECT_EQ(Read(stream, 9), "ef");
  EXPECT_EQ(stream->Seek(Large(-7), STREAM_SEEK_CUR, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Seek(Large(100), STREAM_SEEK_SET, nullptr), S_OK);
  EXPECT_EQ(Read(stream, 1), "");
  EXPECT_EQ(stream->Seek(Large(0), 7, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Seek(Large(static_cast<LONGLONG>(0x8000000000000000u)), STREAM_SEEK_CUR, nullptr),
            STG_E_INVALIDFUNCTION);
  EXPECT_EQ(stream->Read(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
  stream->Release();
}

TEST_F(StreamOnMemoryTest, ClonesShareTheBytesAndTheLastOneFreesThem) {
  HGLOBAL memory = Letters();
  IStream *stream = nullptr, *clone = nullptr;
  CreateStreamOnHGlobal(memory, TRUE, &stream);
  Read(stream, 2);
  EXPECT_EQ(stream->Clone(&clone), S_OK);
  EXPECT_EQ(Read(stream, 1), "c");
  stream->Release();
  EXPECT_EQ(Read(clone, 2), "cd") << "a place of its own, where the first one was";
  EXPECT_EQ(GlobalSize(memory), 6u);
  clone->Release();
  EXPECT_EQ(GlobalSize(memory), 0u);
}

TEST_F(StreamOnMemoryTest, WrongArgumentsAndPlannedFailures) {
  IStream* stream = reinterpret_cast<IStream*>(8);
  EXPECT_EQ(CreateStreamOnHGlobal(reinterpret_cast<HGLOBAL>(0x123), TRUE, &stream), E_INVALIDARG);
  EXPECT_EQ(stream, nullptr);
  EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, nullptr), E_INVALIDARG);
  EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  EXPECT_EQ(Read(stream, 1), "");
  stream->Release();
}

TEST_F(StreamOnMemoryTest, CanBePlannedToFail) {
  Start(R"({"faults": [{"operation": "CreateStreamOnHGlobal", "error": 8}]})");
  IStream* stream = nullptr;
  HGLOBAL memory = Letters();
  EXPECT_EQ(CreateStreamOnHGlobal(memory, TRUE, &stream), HRESULT_FROM_WIN32(8));
  EXPECT_EQ(GlobalSize(memory), 6u) << "and the block is not taken";
  GlobalFree(memory);
}

}  // namespace
