#include "install/zip/entry_stream.h"

#include <string.h>

#include <algorithm>

namespace vanta {
namespace {

constexpr WORD kDeflated = 8;

}  // namespace

EntryStream::~EntryStream() {
  if (inflater_ready_) inflateEnd(&inflater_);
}

ZipError EntryStream::Start(const EntryData& data, std::string_view password) {
  data_ = data;
  input_ = data.stored;
  taken_ = {};
  remaining_ = data.uncompressed_size;
  crc_ = static_cast<DWORD>(crc32(0, nullptr, 0));
  inflate_ended_ = data.method != kDeflated;
  crypt_.reset();
  if (data.encrypted) {
    if (input_.size() < ZipCrypt::kHeaderSize) return ZipFlate;
    BYTE header[ZipCrypt::kHeaderSize];
    memcpy(header, input_.data(), sizeof(header));
    input_ = input_.subspan(sizeof(header));
    crypt_.emplace(password);
    crypt_->Decrypt(header);
    if (header[sizeof(header) - 1] != data.check_byte) return ZipPassword;
    if (!decrypted_) decrypted_ = std::make_unique<BYTE[]>(kPieceSize);
  }
  return data.method == kDeflated ? StartInflater() : ZipOk;
}

ZipError EntryStream::StartInflater() {
  inflater_.next_in = nullptr;
  inflater_.avail_in = 0;
  // Resetting keeps the inflater's memory, which for small entries costs more to get than the entry to inflate.
  const int code = inflater_ready_ ? inflateReset(&inflater_) : inflateInit2(&inflater_, -MAX_WBITS);
  inflater_ready_ = inflater_ready_ || code == Z_OK;
  return code == Z_OK ? ZipOk : ZipFlate;
}

void EntryStream::TakeInput() {
  const size_t size = std::min<size_t>(input_.size(), kPieceSize);
  taken_ = input_.first(size);
  input_ = input_.subspan(size);
  if (crypt_) {
    std::copy(taken_.begin(), taken_.end(), decrypted_.get());
    crypt_->Decrypt({decrypted_.get(), size});
    taken_ = {decrypted_.get(), size};
  }
}

ByteSpan EntryStream::Copy(DWORD room) {
  if (taken_.empty()) TakeInput();
  const ByteSpan piece = taken_.first(std::min<size_t>(taken_.size(), room));
  taken_ = taken_.subspan(piece.size());
  return piece;
}

ZipError EntryStream::Inflate(BYTE* buffer, DWORD room, DWORD* produced) {
  inflater_.next_out = buffer;
  inflater_.avail_out = room;
  while (inflater_.avail_out > 0 && !inflate_ended_) {
    if (taken_.empty()) TakeInput();
    inflater_.next_in = const_cast<BYTE*>(taken_.data());
    inflater_.avail_in = static_cast<uInt>(taken_.size());
    // An entry that fits into the buffer as a whole need not be kept for later references to it.
    const bool whole = input_.empty() && remaining_ == data_.uncompressed_size && room >= remaining_;
    // Without input the inflater still gives out what it holds; it answers an error once there is nothing left to do.
    const int code = inflate(&inflater_, whole ? Z_FINISH : Z_NO_FLUSH);
    taken_ = taken_.last(inflater_.avail_in);
    if (code != Z_OK && code != Z_STREAM_END) return ZipFlate;
    inflate_ended_ = code == Z_STREAM_END;
  }
  *produced = room - static_cast<DWORD>(inflater_.avail_out);
  return ZipOk;
}

ZipError EntryStream::Read(BYTE* buffer, DWORD room, ByteSpan* piece) {
  if (data_.method == kDeflated) {
    // All of the room, although less may remain: the inflater slows down within 258 bytes of its end.
    DWORD produced = 0;
    if (const ZipError error = Inflate(buffer, room, &produced)) return error;
    *piece = {buffer, produced};
  } else {
    *piece = Copy(std::min(room, remaining_));
  }
  if (piece->empty() || piece->size() > remaining_) return ZipFlate;
  remaining_ -= static_cast<DWORD>(piece->size());
  crc_ = static_cast<DWORD>(crc32(crc_, piece->data(), static_cast<uInt>(piece->size())));
  return ZipOk;
}

ZipError EntryStream::Finish() {
  if (!inflate_ended_) {
    BYTE beyond;
    DWORD produced = 0;
    if (const ZipError error = Inflate(&beyond, 1, &produced)) return error;
    if (produced > 0) return ZipFlate;
  }
  const bool all_taken = input_.empty() && taken_.empty() && data_.stored.size() == data_.compressed_size;
  return all_taken && remaining_ == 0 && crc_ == data_.crc ? ZipOk : ZipFlate;
}

}  // namespace vanta
