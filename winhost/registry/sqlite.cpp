#include "winhost/registry/sqlite.h"

#include <unistd.h>

namespace winhost {
namespace {

constexpr int kBusyMs = 30'000;

// Turning write-ahead mode on needs the file alone for a moment and does not honour the busy time-out.
void TurnWriteAheadOn(Database& database) {
  for (int attempt = 0;; ++attempt) {
    const int code = sqlite3_exec(database.handle(), "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    if ((code & 0xFF) != SQLITE_BUSY || attempt == 3000) throw DatabaseError(sqlite3_errmsg(database.handle()));
    usleep(10'000);
  }
}

}  // namespace

Database::Database(const std::filesystem::path& file) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &handle,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) throw DatabaseError(file.string() + ": " + (handle ? sqlite3_errmsg(handle) : "no memory"));
  sqlite3_busy_timeout(handle, kBusyMs);
  // A machine need not survive a power failure of the computer it is simulated on.
  Run("PRAGMA synchronous=OFF");
  Run("PRAGMA encoding='UTF-16le'");
  TurnWriteAheadOn(*this);
}

void Database::Run(const char* sql) {
  if (sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
    throw DatabaseError(sqlite3_errmsg(handle()));
}

std::int64_t Database::Number(const char* sql) {
  Statement query(*this, sql);
  const std::int64_t number = query.Step() ? query.Number(0) : 0;
  query.Reset();
  return number;
}

Statement::Statement(Database& database, const char* sql) {
  sqlite3_stmt* handle = nullptr;
  const int code = sqlite3_prepare_v3(database.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
  handle_.reset(handle);
  if (code != SQLITE_OK) throw DatabaseError(sqlite3_errmsg(database.handle()));
}

Statement& Statement::Bind(int index, std::int64_t number) {
  Check(sqlite3_bind_int64(handle_.get(), index, number));
  return *this;
}

Statement& Statement::Bind(int index, std::u16string_view text) {
  const char16_t* data = text.empty() ? u"" : text.data();  // a null pointer would bind NULL
  Check(sqlite3_bind_text64(handle_.get(), index, reinterpret_cast<const char*>(data), text.size() * 2,
                            SQLITE_TRANSIENT, SQLITE_UTF16LE));
  return *this;
}

Statement& Statement::Bind(int index, std::span<const std::byte> bytes) {
  const void* data = bytes.empty() ? static_cast<const void*>("") : bytes.data();
  Check(sqlite3_bind_blob64(handle_.get(), index, data, bytes.size(), SQLITE_TRANSIENT));
  return *this;
}

bool Statement::Step() {
  const int code = sqlite3_step(handle_.get());
  if (code == SQLITE_ROW) return true;
  Reset();
  if (code != SQLITE_DONE) throw DatabaseError(sqlite3_errmsg(sqlite3_db_handle(handle_.get())));
  return false;
}

void Statement::Reset() { sqlite3_reset(handle_.get()); }

std::u16string_view Statement::Text(int column) {
  const void* text = sqlite3_column_text16(handle_.get(), column);
  const int bytes = sqlite3_column_bytes16(handle_.get(), column);
  if (!text) return {};
  return {static_cast<const char16_t*>(text), static_cast<std::size_t>(bytes) / 2};
}

std::span<const std::byte> Statement::Bytes(int column) {
  const void* data = sqlite3_column_blob(handle_.get(), column);
  const int bytes = sqlite3_column_bytes(handle_.get(), column);
  if (!data) return {};
  return {static_cast<const std::byte*>(data), static_cast<std::size_t>(bytes)};
}

void Statement::Check(int code) {
  if (code != SQLITE_OK) throw DatabaseError(sqlite3_errmsg(sqlite3_db_handle(handle_.get())));
}

Transaction::Transaction(Database& database, Kind kind) : database_(database) {
  database_.Run(kind == Kind::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

Transaction::~Transaction() {
  if (open_) sqlite3_exec(database_.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  database_.Run("COMMIT");
  open_ = false;
}

}  // namespace winhost
