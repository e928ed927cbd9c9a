#include "winhost/registry/store.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "winhost/machine/clock.h"
#include "winhost/machine/text.h"
#include "winhost/registry/seed.h"

namespace winhost {
namespace {

constexpr KeyId kTop = 0;  // the parent of the roots

constexpr const char* kTables =
    "CREATE TABLE keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, folded TEXT NOT NULL,"
    " name TEXT NOT NULL, written INTEGER NOT NULL, system INTEGER NOT NULL DEFAULT 0, UNIQUE(parent, folded));"
    "CREATE TABLE \"values\"(id INTEGER PRIMARY KEY, key INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE(key, folded));"
    "PRAGMA user_version=1;";

constexpr const char16_t* kSystemKeys[] = {
    u"HKLM\\HARDWARE",
    u"HKLM\\SAM",
    u"HKLM\\SECURITY",
    u"HKLM\\SOFTWARE\\Classes",
    u"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths",
    u"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
    u"HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards",
    u"HKLM\\SYSTEM\\CurrentControlSet\\Control\\Class",
    u"HKLM\\SYSTEM\\CurrentControlSet\\Services",
    u"HKCU\\Software\\Classes",
    u"HKCU\\Software\\Microsoft\\Windows\\CurrentVersion",
    u"HKU\\.DEFAULT",
};

std::filesystem::path DatabaseFile(const Machine& machine) { return machine.folder() / "registry.db"; }

}  // namespace

RegistryStore::RegistryStore(Machine& machine)
    : machine_(machine),
      database_(DatabaseFile(machine)),
      tables_((MakeTables(), true)),
      find_child_(database_, "SELECT id FROM keys WHERE parent=?1 AND folded=?2"),
      add_child_(database_, "INSERT INTO keys(parent, folded, name, written) VALUES(?1, ?2, ?3, ?4)"),
      exists_(database_, "SELECT 1 FROM keys WHERE id=?1"),
      delete_key_(database_, "DELETE FROM keys WHERE id=?1"),
      delete_values_(database_, "DELETE FROM \"values\" WHERE key=?1"),
      sub_keys_(database_, "SELECT name FROM keys WHERE parent=?1"),
      values_(database_, "SELECT name, type, data FROM \"values\" WHERE key=?1 ORDER BY id"),
      value_(database_, "SELECT name, type, data FROM \"values\" WHERE key=?1 AND folded=?2"),
      // An existing value keeps its place in the order and the spelling of its name.
      set_value_(database_,
                 "INSERT INTO \"values\"(key, folded, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
                 "ON CONFLICT(key, folded) DO UPDATE SET type=excluded.type, data=excluded.data"),
      delete_value_(database_, "DELETE FROM \"values\" WHERE key=?1 AND folded=?2 RETURNING 1"),
      touch_(database_, "UPDATE keys SET written=?2 WHERE id=?1"),
      last_write_(database_, "SELECT written FROM keys WHERE id=?1"),
      is_system_(database_, "SELECT system FROM keys WHERE id=?1") {
  Transaction transaction(database_, Transaction::Kind::Write);
  if (Child(kTop, u"HKLM")) return;
  for (const char16_t* path : kSystemKeys) {
    KeyPath logical = SplitKeyPath(path), above;
    for (const View view : {View::Bits64, View::Bits32}) {
      above.clear();
      for (const std::u16string& part : StoredPath(logical, view, machine_.facts())) {
        above.push_back(part);
        MarkSystemKey(Make(above).key);
      }
    }
  }
  Seed();
  transaction.Commit();
}

// A wrong seed is the maker's mistake and must not pass for a registry that cannot be read.
void RegistryStore::Seed() {
  try {
    SeedRegistry(*this, machine_.facts());
  } catch (const DatabaseError&) {
    throw;
  } catch (const std::exception& wrong) {
    std::fprintf(stderr, "machine: %s\n", wrong.what());
    std::exit(3);
  }
}

void RegistryStore::MakeTables() {
  Transaction transaction(database_, Transaction::Kind::Write);
  if (database_.Number("PRAGMA user_version") == 0) database_.Run(kTables);
  transaction.Commit();
}

RegistryStore* RegistryStore::Existing(Machine& machine) {
  return std::filesystem::exists(DatabaseFile(machine)) ? &machine.Get<RegistryStore>() : nullptr;
}

void RegistryStore::MarkSystemKey(KeyId key) {
  Statement(database_, "UPDATE keys SET system=1 WHERE id=?1").Bind(1, key).Once();
}

std::optional<KeyId> RegistryStore::Child(KeyId parent, std::u16string_view name) {
  find_child_.Bind(1, parent).Bind(2, Upcase(name));
  if (!find_child_.Step()) return std::nullopt;
  const KeyId key = find_child_.Number(0);
  find_child_.Reset();
  return key;
}

KeyId RegistryStore::AddChild(KeyId parent, std::u16string_view name) {
  const auto now = static_cast<std::int64_t>(MachineTime100ns());
  add_child_.Bind(1, parent).Bind(2, Upcase(name)).Bind(3, name).Bind(4, now).Once();
  return database_.LastRowId();
}

std::optional<KeyId> RegistryStore::Find(const KeyPath& path) {
  std::optional<KeyId> key = kTop;
  for (auto part = path.begin(); key && part != path.end(); ++part) key = Child(*key, *part);
  return key;
}

RegistryStore::Made RegistryStore::Make(const KeyPath& path) {
  Made made{kTop, false};
  for (const std::u16string& part : path) {
    const std::optional<KeyId> child = Child(made.key, part);
    if (!child && made.key != kTop) Touch(made.key);
    made = child ? Made{*child, false} : Made{AddChild(made.key, part), true};
  }
  return made;
}

bool RegistryStore::Exists(KeyId key) {
  const bool exists = exists_.Bind(1, key).Step();
  exists_.Reset();
  return exists;
}

void RegistryStore::Delete(KeyId key) {
  delete_values_.Bind(1, key).Once();
  delete_key_.Bind(1, key).Once();
}

std::vector<std::u16string> RegistryStore::SubKeys(KeyId key) {
  std::vector<std::pair<std::u16string, std::u16string>> rows;
  sub_keys_.Bind(1, key);
  while (sub_keys_.Step()) rows.emplace_back(Upcase(sub_keys_.Text(0)), sub_keys_.Text(0));
  std::sort(rows.begin(), rows.end());
  std::vector<std::u16string> names;
  for (auto& row : rows) names.push_back(std::move(row.second));
  return names;
}

namespace {

StoredValue FromRow(Statement& row) {
  const std::span<const std::byte> data = row.Bytes(2);
  return {std::u16string(row.Text(0)), static_cast<std::uint32_t>(row.Number(1)), {data.begin(), data.end()}};
}

}  // namespace

std::vector<StoredValue> RegistryStore::Values(KeyId key) {
  std::vector<StoredValue> values;
  values_.Bind(1, key);
  while (values_.Step()) values.push_back(FromRow(values_));
  return values;
}

std::optional<StoredValue> RegistryStore::Value(KeyId key, std::u16string_view name) {
  value_.Bind(1, key).Bind(2, Upcase(name));
  if (!value_.Step()) return std::nullopt;
  StoredValue value = FromRow(value_);
  value_.Reset();
  return value;
}

void RegistryStore::SetValue(KeyId key, std::u16string_view name, std::uint32_t type, std::span<const std::byte> data) {
  set_value_.Bind(1, key).Bind(2, Upcase(name)).Bind(3, name).Bind(4, type).Bind(5, data).Once();
  Touch(key);
}

bool RegistryStore::DeleteValue(KeyId key, std::u16string_view name) {
  delete_value_.Bind(1, key).Bind(2, Upcase(name));
  bool deleted = false;
  while (delete_value_.Step()) deleted = true;
  if (deleted) Touch(key);
  return deleted;
}

void RegistryStore::Touch(KeyId key) {
  touch_.Bind(1, key).Bind(2, static_cast<std::int64_t>(MachineTime100ns())).Once();
}

std::uint64_t RegistryStore::LastWrite(KeyId key) {
  const bool found = last_write_.Bind(1, key).Step();
  const std::int64_t time = found ? last_write_.Number(0) : 0;
  last_write_.Reset();
  return static_cast<std::uint64_t>(time);
}

bool RegistryStore::IsSystemKey(KeyId key) {
  const bool system = is_system_.Bind(1, key).Step() && is_system_.Number(0) != 0;
  is_system_.Reset();
  return system;
}

}  // namespace winhost
