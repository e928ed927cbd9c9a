// The stored registry of a machine: keys and values in <machine>/registry.db. Paths are stored paths (views.h); access
// rights, views and handles are the callers' business.
//
// One instance a process. Take a Session first: it holds this process's lock and a transaction on the database, so the
// calls made in it see one state and take effect together. Every call may throw DatabaseError.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "winhost/machine/machine.h"
#include "winhost/registry/sqlite.h"
#include "winhost/registry/views.h"

namespace winhost {

using KeyId = std::int64_t;  // never used twice

struct StoredValue {
  std::u16string name;
  std::uint32_t type = 0;
  std::vector<std::byte> data;
};

class RegistryStore {
 public:
  // Opens the database; makes it, with the machine's seeds, when it is not there yet.
  explicit RegistryStore(Machine& machine);
  // The store of the machine, or null when nothing has used its registry yet.
  static RegistryStore* Existing(Machine& machine);

  class Session {
   public:
    Session(RegistryStore& store, Transaction::Kind kind) : lock_(store.lock_), transaction_(store.database_, kind) {}
    void Commit() { transaction_.Commit(); }

   private:
    std::scoped_lock<std::recursive_mutex> lock_;
    Transaction transaction_;
  };

  std::optional<KeyId> Find(const KeyPath& path);
  struct Made {
    KeyId key;
    bool created;
  };
  // Finds the key or makes it and what is missing above it.
  Made Make(const KeyPath& path);
  bool Exists(KeyId key);
  void Delete(KeyId key);  // and its values; it has no sub-keys

  // Sub-keys in the order of their upper-cased names, as the system lists them.
  std::vector<std::u16string> SubKeys(KeyId key);
  // Values in the order of their making.
  std::vector<StoredValue> Values(KeyId key);
  std::optional<StoredValue> Value(KeyId key, std::u16string_view name);
  void SetValue(KeyId key, std::u16string_view name, std::uint32_t type, std::span<const std::byte> data);
  bool DeleteValue(KeyId key, std::u16string_view name);
  std::uint64_t LastWrite(KeyId key);  // 100 ns units since 1601

  // Keys that every Windows has; listings pass over the empty ones.
  bool IsSystemKey(KeyId key);

 private:
  void MakeTables();
  void Seed();
  void MarkSystemKey(KeyId key);
  std::optional<KeyId> Child(KeyId parent, std::u16string_view name);
  KeyId AddChild(KeyId parent, std::u16string_view name);
  void Touch(KeyId key);

  Machine& machine_;
  std::recursive_mutex lock_;
  Database database_;
  bool tables_;  // made before the statements are prepared
  Statement find_child_, add_child_, exists_, delete_key_, delete_values_, sub_keys_, values_, value_, set_value_,
      delete_value_, touch_, last_write_, is_system_;
};

}  // namespace winhost
