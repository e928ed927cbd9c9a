// The data of one entry: decrypted, inflated and checked, in pieces.
#pragma once

#include <windows.h>

#include <zlib.h>

#include <memory>
#include <optional>
#include <string_view>

#include "install/zip/records.h"
#include "install/zip/zip_crypt.h"
#include "install/zip/zip_error.h"

namespace vanta {

struct EntryData {
  ByteSpan stored;  // what the archive holds; shorter than declared where the archive ends early
  bool encrypted = false;
  BYTE check_byte = 0;  // what the encryption header ends with
  WORD method = 0;
  DWORD compressed_size = 0;  // as declared, as are the next two
  DWORD uncompressed_size = 0;
  DWORD crc = 0;
};

// One stream serves many entries, one after the other, with the same inflater. Memory: 40 KB while the first deflated
// entry is read, 16 KB more from the first encrypted one.
class EntryStream {
 public:
  static constexpr DWORD kPieceSize = 16384;

  EntryStream() = default;
  EntryStream(const EntryStream&) = delete;
  EntryStream& operator=(const EntryStream&) = delete;
  ~EntryStream();

  // The archive's bytes must live as long as the entry is read. ZipPassword: the password is not the entry's. ZipFlate:
  // too short to be encrypted, or no memory for the inflater.
  ZipError Start(const EntryData& data, std::string_view password);
  // Bytes of the entry that have not been delivered yet.
  DWORD Remaining() const { return remaining_; }
  // Delivers 1 to `room` bytes (room > 0, Remaining() > 0): *piece lies in `buffer` or, where nothing had to be
  // changed, in the archive itself.
  ZipError Read(BYTE* buffer, DWORD room, ByteSpan* piece);
  // To be called once nothing remains: whether the data ended here as well, and was what its CRC-32 says.
  ZipError Finish();

 private:
  void TakeInput();
  ByteSpan Copy(DWORD room);
  ZipError StartInflater();
  ZipError Inflate(BYTE* buffer, DWORD room, DWORD* produced);

  EntryData data_;
  ByteSpan input_;  // of the archive, not yet taken
  ByteSpan taken_;  // decrypted where need be, not yet copied or inflated
  DWORD remaining_ = 0;
  DWORD crc_ = 0;
  bool inflate_ended_ = false;
  bool inflater_ready_ = false;
  z_stream inflater_ = {};
  std::optional<ZipCrypt> crypt_;
  std::unique_ptr<BYTE[]> decrypted_;
};

}  // namespace vanta
