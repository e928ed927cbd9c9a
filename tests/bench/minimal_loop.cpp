#include "tests/bench/minimal_loop.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace bench {
namespace {

constexpr std::size_t kPiece = 16384;

unsigned Two(const unsigned char* at) { return at[0] | static_cast<unsigned>(at[1]) << 8; }
unsigned Four(const unsigned char* at) { return Two(at) | Two(at + 2) << 16; }

timespec UnixTime(unsigned date, unsigned time) {
  tm parts = {};
  parts.tm_year = static_cast<int>(80 + (date >> 9));
  parts.tm_mon = static_cast<int>((date >> 5 & 15) - 1);
  parts.tm_mday = static_cast<int>(date & 31);
  parts.tm_hour = static_cast<int>(time >> 11);
  parts.tm_min = static_cast<int>(time >> 5 & 63);
  parts.tm_sec = static_cast<int>((time & 31) * 2);
  return {timegm(&parts), 0};
}

class Loop {
 public:
  explicit Loop(const std::string& folder) : folder_(folder) { inflateInit2(&stream_, -MAX_WBITS); }
  ~Loop() { inflateEnd(&stream_); }

  bool Run(std::span<const unsigned char> archive) {
    const unsigned char* end = archive.data() + archive.size() - 22;
    while (Four(end) != 0x06054b50) --end;
    const unsigned char* header = archive.data() + Four(end + 16);
    for (unsigned left = Two(end + 10); left > 0; --left) {
      if (!Entry(archive.data(), header)) return false;
      header += 46 + Two(header + 28) + Two(header + 30) + Two(header + 32);
    }
    return true;
  }

 private:
  bool Entry(const unsigned char* archive, const unsigned char* header) {
    const std::string path = folder_ + "/" + std::string(reinterpret_cast<const char*>(header) + 46, Two(header + 28));
    const std::string parent = path.substr(0, path.rfind('/'));
    if (parent != made_) MakeFolders(made_ = parent);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) return false;
    const unsigned char* local = archive + Four(header + 42);
    const bool good =
        Inflate(file, local + 30 + Two(local + 26) + Two(local + 28), Four(header + 20), Four(header + 16));
    const timespec when = UnixTime(Two(header + 14), Two(header + 12));
    const timespec times[] = {when, when};
    futimens(file, times);
    return close(file) == 0 && good;
  }

  bool Inflate(int file, const unsigned char* data, std::size_t size, unsigned crc_wanted) {
    inflateReset(&stream_);
    stream_.avail_in = 0;
    uLong crc = crc32(0, nullptr, 0);
    for (int code = Z_OK; code != Z_STREAM_END;) {
      stream_.next_out = out_.get();
      stream_.avail_out = kPiece;
      while (stream_.avail_out > 0 && code != Z_STREAM_END) {
        if (stream_.avail_in == 0) {
          stream_.next_in = const_cast<unsigned char*>(data);
          stream_.avail_in = static_cast<uInt>(std::min(size, kPiece));
          data += stream_.avail_in;
          size -= stream_.avail_in;
        }
        code = inflate(&stream_, Z_NO_FLUSH);
        if (code != Z_OK && code != Z_STREAM_END) return false;
      }
      const std::size_t produced = kPiece - stream_.avail_out;
      crc = crc32(crc, out_.get(), static_cast<uInt>(produced));
      if (write(file, out_.get(), produced) != static_cast<ssize_t>(produced)) return false;
    }
    return crc == crc_wanted;
  }

  void MakeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != path.npos; slash = path.find('/', slash + 1)) {
      mkdir(path.substr(0, slash).c_str(), 0755);
    }
    mkdir(path.c_str(), 0755);
  }

  const std::string& folder_;
  std::string made_;
  z_stream stream_ = {};
  std::unique_ptr<unsigned char[]> out_ = std::make_unique<unsigned char[]>(kPiece);
};

}  // namespace

bool ExtractMinimally(std::span<const unsigned char> archive, const std::string& folder) {
  return Loop(folder).Run(archive);
}

}  // namespace bench
