#include "install/zip/zip_crypt.h"

#include <zlib.h>

namespace vanta {
namespace {

DWORD UpdateCrc(DWORD crc, BYTE byte) { return static_cast<DWORD>(get_crc_table()[(crc ^ byte) & 0xFF]) ^ crc >> 8; }

}  // namespace

ZipCrypt::ZipCrypt(std::string_view password) : keys_{0x12345678, 0x23456789, 0x34567890} {
  for (const char c : password) Update(static_cast<BYTE>(c));
}

void ZipCrypt::Decrypt(std::span<BYTE> bytes) {
  for (BYTE& byte : bytes) {
    const DWORD odd = (keys_[2] & 0xFFFF) | 2;
    byte = static_cast<BYTE>(byte ^ (odd * (odd ^ 1) >> 8));
    Update(byte);
  }
}

void ZipCrypt::Update(BYTE plain) {
  keys_[0] = UpdateCrc(keys_[0], plain);
  keys_[1] = (keys_[1] + (keys_[0] & 0xFF)) * 134775813 + 1;
  keys_[2] = UpdateCrc(keys_[2], static_cast<BYTE>(keys_[1] >> 24));
}

}  // namespace vanta
