// The traditional encryption of ZIP archives: three 32-bit keys that run along with the plain text.
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

namespace vanta {

class ZipCrypt {
 public:
  static constexpr DWORD kHeaderSize = 12;  // bytes ahead of an encrypted entry's data

  explicit ZipCrypt(std::string_view password);
  // In place; the stream is continued by the next call.
  void Decrypt(std::span<BYTE> bytes);

 private:
  void Update(BYTE plain);

  DWORD keys_[3];
};

}  // namespace vanta
