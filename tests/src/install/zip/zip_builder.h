// Builds archives byte by byte, so that a test can put any value into any field.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace zip_testing {

inline std::string Le(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i);
  return text;
}

inline std::string Deflate(std::string_view data) {
  z_stream stream = {};
  deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&stream, data.size()), 0);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  deflate(&stream, Z_FINISH);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

inline std::uint32_t Crc(std::string_view data) {
  return static_cast<std::uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size())));
}

// "UT" with these flags and times; `size` overrides the block's declared size.
inline std::string UnixTimes(int flags, std::initializer_list<std::int64_t> times, std::optional<int> size = {}) {
  std::string body(1, static_cast<char>(flags));
  for (const std::int64_t time : times) body += Le(static_cast<std::uint64_t>(time), 4);
  return "UT" + Le(static_cast<std::uint64_t>(size.value_or(static_cast<int>(body.size()))), 2) + body;
}

struct Entry {
  std::string name;
  std::string data;  // as stored in the archive
  int method = 0;
  int host = 0;
  std::uint32_t external = 0x20;
  int flags = 0;
  int date = 0x5821;  // 1 January 2024
  int time = 0x6000;  // 12:00:00
  std::uint32_t crc = 0;
  std::uint32_t compressed = 0;
  std::uint32_t uncompressed = 0;
  std::string local_extra;
  std::string comment;
  // What the local header says where it differs.
  std::uint32_t local_signature = 0x04034b50;
  std::optional<int> local_method;
  std::uint32_t central_signature = 0x02014b50;
  std::optional<std::uint32_t> local_offset;
};

struct End {
  int disk = 0;
  int directory_disk = 0;
  std::optional<int> entries_on_disk;
  std::optional<int> entries;
  std::optional<std::uint32_t> directory_size;
  std::optional<std::uint32_t> directory_offset;
  std::string comment;
};

class ZipBuilder {
 public:
  Entry& AddStored(std::string name, std::string_view content) { return Add(std::move(name), content, 0); }
  Entry& AddDeflated(std::string name, std::string_view content) { return Add(std::move(name), content, 8); }

  End end;

  std::string Build() const {
    std::string archive, directory;
    for (const Entry& entry : entries_) {
      const auto offset = static_cast<std::uint32_t>(archive.size());
      archive += Local(entry) + entry.data;
      directory += Central(entry, entry.local_offset.value_or(offset));
    }
    const auto offset = static_cast<std::uint32_t>(archive.size());
    const auto count = static_cast<int>(entries_.size());
    archive += directory;
    archive += Le(0x06054b50, 4) + Two(end.disk) + Two(end.directory_disk) + Two(end.entries_on_disk.value_or(count)) +
               Two(end.entries.value_or(count)) +
               Le(end.directory_size.value_or(static_cast<std::uint32_t>(directory.size())), 4) +
               Le(end.directory_offset.value_or(offset), 4) + Two(static_cast<int>(end.comment.size())) + end.comment;
    return archive;
  }

 private:
  static std::string Two(int value) { return Le(static_cast<std::uint64_t>(value), 2); }

  Entry& Add(std::string name, std::string_view content, int method) {
    Entry& entry = entries_.emplace_back();
    entry.name = std::move(name);
    entry.method = method;
    entry.data = method == 8 ? Deflate(content) : std::string(content);
    entry.crc = Crc(content);
    entry.compressed = static_cast<std::uint32_t>(entry.data.size());
    entry.uncompressed = static_cast<std::uint32_t>(content.size());
    return entry;
  }

  static std::string Common(const Entry& entry, int method) {
    return Two(entry.flags) + Two(method) + Two(entry.time) + Two(entry.date) + Le(entry.crc, 4) +
           Le(entry.compressed, 4) + Le(entry.uncompressed, 4) + Two(static_cast<int>(entry.name.size()));
  }
  static std::string Local(const Entry& entry) {
    return Le(entry.local_signature, 4) + Two(20) + Common(entry, entry.local_method.value_or(entry.method)) +
           Two(static_cast<int>(entry.local_extra.size())) + entry.name + entry.local_extra;
  }
  static std::string Central(const Entry& entry, std::uint32_t offset) {
    return Le(entry.central_signature, 4) + Two(20 | entry.host << 8) + Two(20) + Common(entry, entry.method) + Two(0) +
           Two(static_cast<int>(entry.comment.size())) + Two(0) + Two(0) + Le(entry.external, 4) + Le(offset, 4) +
           entry.name + entry.comment;
  }

  std::deque<Entry> entries_;
};

}  // namespace zip_testing
