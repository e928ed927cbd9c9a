// SQLite behind owners: a connection, its prepared statements and transactions. Text goes in and out as UTF-16,
// unchanged even where it is ill-formed (the databases are made with that encoding).
#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace winhost {

struct DatabaseError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Database {
 public:
  // Opens or makes the database, in write-ahead mode so that readers never wait. Throws DatabaseError.
  explicit Database(const std::filesystem::path& file);
  void Run(const char* sql);
  std::int64_t Number(const char* sql);
  std::int64_t LastRowId() { return sqlite3_last_insert_rowid(handle_.get()); }
  sqlite3* handle() { return handle_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

// A prepared statement that is kept. One use: Bind…, Step until false, and it is fresh again; the views that Text and
// Bytes give live until the next Step. Not for two threads at once.
class Statement {
 public:
  Statement(Database& database, const char* sql);
  Statement& Bind(int index, std::int64_t number);
  Statement& Bind(int index, std::u16string_view text);
  Statement& Bind(int index, std::span<const std::byte> bytes);
  bool Step();   // true: there is a row; false: done, and reset
  void Reset();  // to leave off before the last row
  void Once() {  // for statements whose rows nobody wants
    while (Step()) {
    }
  }
  std::int64_t Number(int column) { return sqlite3_column_int64(handle_.get(), column); }
  std::u16string_view Text(int column);
  std::span<const std::byte> Bytes(int column);

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* handle) const { sqlite3_finalize(handle); }
  };
  void Check(int code);
  std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

// Rolled back unless committed.
class Transaction {
 public:
  enum class Kind { Read, Write };
  Transaction(Database& database, Kind kind);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace winhost
