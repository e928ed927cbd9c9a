#include "tools/vantakit/zip_writer.h"

#include <archive.h>
#include <archive_entry.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include "tools/vantakit/commands.h"
#include "winhost/image/mapped_file.h"

namespace vantakit {
namespace {

struct FreeArchive {
  void operator()(struct archive* writer) const { archive_write_free(writer); }
};
struct FreeEntry {
  void operator()(struct archive_entry* entry) const { archive_entry_free(entry); }
};

constexpr std::uint64_t kMostBytes = 0x7FFF0000;
constexpr std::size_t kMostEntries = 65535;

class Writer {
 public:
  Writer(const std::filesystem::path& out, int level) : writer_(archive_write_new()) {
    const std::string options =
        "hdrcharset=UTF-8,!zip64,compression=deflate,compression-level=" + std::to_string(level);
    Must(archive_write_set_format_zip(writer_.get()));
    Must(archive_write_set_options(writer_.get(), options.c_str()));
    Must(archive_write_open_filename(writer_.get(), out.c_str()));
  }

  void Add(const FolderEntry& source, std::time_t time, winhost::Bytes bytes) {
    const std::unique_ptr<struct archive_entry, FreeEntry> entry(archive_entry_new());
    archive_entry_update_pathname_utf8(entry.get(), source.name.c_str());
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    // Never read-only: a file installed so could not be replaced by the next version.
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_size(entry.get(), static_cast<la_int64_t>(bytes.size()));
    // All three, so that no time depends on the zone of the machine that unpacks or packs.
    archive_entry_set_mtime(entry.get(), time, 0);
    archive_entry_set_atime(entry.get(), time, 0);
    archive_entry_set_ctime(entry.get(), time, 0);
    Must(archive_write_header(writer_.get(), entry.get()));
    while (!bytes.empty()) {
      const la_ssize_t wrote = archive_write_data(writer_.get(), bytes.data(), bytes.size());
      if (wrote <= 0) throw Failure(archive_error_string(writer_.get()));
      bytes = bytes.subspan(static_cast<std::size_t>(wrote));
    }
    Must(archive_write_finish_entry(writer_.get()));
  }

  void Finish() { Must(archive_write_close(writer_.get())); }

 private:
  void Must(int result) {
    if (result != ARCHIVE_OK) throw Failure(std::string("archive: ") + archive_error_string(writer_.get()));
  }
  std::unique_ptr<struct archive, FreeArchive> writer_;
};

std::time_t TimeOf(const std::filesystem::path& file) {
  const auto time = std::filesystem::last_write_time(file);
  return std::chrono::system_clock::to_time_t(
      std::chrono::file_clock::to_sys(std::chrono::time_point_cast<std::chrono::seconds>(time)));
}

}  // namespace

void WriteArchive(const std::vector<FolderEntry>& entries, int level, const std::filesystem::path& out) {
  if (entries.size() > kMostEntries) throw Failure("an archive holds at most 65,535 files");
  // The archive also carries each time as local date and time; let that be the same wherever it is made.
  setenv("TZ", "UTC", 1);
  tzset();
  const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
  Writer writer(out, level);
  std::uint64_t total = 0;
  for (const FolderEntry& entry : entries) {
    const auto file = winhost::MappedFile::Open(entry.file);
    if (!file) throw Failure(entry.file.string() + ": cannot be read");
    total += file->bytes().size();
    if (total > kMostBytes) throw Failure("the files together exceed 2 GiB, the most that an executable carries");
    writer.Add(entry, epoch ? std::strtol(epoch, nullptr, 10) : TimeOf(entry.file), file->bytes());
  }
  writer.Finish();
}

}  // namespace vantakit
