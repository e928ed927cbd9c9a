#include "winhost/kernel/share_table.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>
#include <windows.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::uint32_t kSlots = 8192;
constexpr std::uint32_t kBuckets = 4096;
constexpr std::uint32_t kVersion = 1;

struct Slot {
  FileKey key;
  std::uint64_t started;  // the owner's start, so that a reused process id does not keep a dead one's entries
  std::uint32_t pid;
  std::uint32_t next;  // 1-based; 0 ends
  std::uint8_t access;
  std::uint8_t share;
  bool image;
  bool delete_pending;
  bool used;
};

// A handle that asked for nothing but attributes takes no part in sharing.
bool KeepsFromGoing(const Slot& slot) { return slot.access != 0 && (slot.share & kShareDelete) == 0; }

// Field 22 of /proc/<pid>/stat, counted behind the name, which may hold anything. 0 when there is no such process.
std::uint64_t StartOf(std::uint32_t pid) {
  char text[1024];
  std::snprintf(text, sizeof text, "/proc/%u/stat", pid);
  const int file = open(text, O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  const ssize_t length = read(file, text, sizeof text - 1);
  close(file);
  if (length <= 0) return 0;
  text[length] = 0;
  const char* at = std::string_view(text).rfind(')') == std::string_view::npos
                       ? nullptr
                       : text + std::string_view(text).rfind(')') + 1;
  for (int field = 2; at && field < 21; ++field) {
    at = std::string_view(at + 1).find(' ') == std::string_view::npos ? nullptr
                                                                      : at + 1 + std::string_view(at + 1).find(' ');
  }
  return at ? std::strtoull(at + 1, nullptr, 10) : 0;
}

// This process, asked once and again after a fork.
struct Self {
  std::atomic<std::uint32_t> pid{0};
  std::atomic<std::uint64_t> started{0};
};
Self g_self;

void LearnSelf() {
  const auto pid = static_cast<std::uint32_t>(getpid());
  g_self.started.store(StartOf(pid), std::memory_order_relaxed);
  g_self.pid.store(pid, std::memory_order_relaxed);
}

}  // namespace

struct ShareTable::Shared {
  std::atomic<std::uint32_t> ready;  // kVersion once the mutex is made
  pthread_mutex_t mutex;
  std::atomic<std::uint64_t> changes;
  std::atomic<std::int64_t> used_bytes[26];
  std::uint32_t free_head;  // 1-based
  std::uint32_t high_water;
  std::uint32_t buckets[kBuckets];
  Slot slots[kSlots];

  std::uint32_t& Bucket(const FileKey& key) {
    return buckets[(key.name ^ (key.folder * 0x9E3779B97F4A7C15ull)) % kBuckets];
  }
  Slot& At(std::uint32_t number) { return slots[number - 1]; }

  std::uint32_t Take() {
    if (free_head != 0) {
      const std::uint32_t number = free_head;
      free_head = At(number).next;
      return number;
    }
    return high_water < kSlots ? ++high_water : 0;
  }
  void Link(std::uint32_t number) {
    std::uint32_t& bucket = Bucket(At(number).key);
    At(number).next = bucket;
    bucket = number;
  }
  void Unlink(std::uint32_t number) {
    std::uint32_t* at = &Bucket(At(number).key);
    while (*at != 0 && *at != number) at = &At(*at).next;
    if (*at == number) *at = At(number).next;
  }
  void Free(std::uint32_t number) {
    At(number).used = false;
    At(number).next = free_head;
    free_head = number;
  }
  // After an owner died in the middle of a change the chains may be torn; the slots themselves tell all.
  void Rebuild() {
    for (std::uint32_t& bucket : buckets) bucket = 0;
    free_head = 0;
    for (std::uint32_t number = high_water; number > 0; --number) {
      if (At(number).used) {
        Link(number);
      } else {
        Free(number);
      }
    }
  }
  bool IsAlive(const Slot& slot) {
    if (slot.pid == g_self.pid.load(std::memory_order_relaxed)) {
      return slot.started == g_self.started.load(std::memory_order_relaxed);
    }
    if (kill(static_cast<pid_t>(slot.pid), 0) != 0 && errno == ESRCH) return false;
    const std::uint64_t started = StartOf(slot.pid);
    return started != 0 && started == slot.started;
  }
  // Calls `visit` for the live entries of a file until it answers true; drops dead ones for which it would have.
  template <class Visit>
  bool AnyOf(const FileKey& key, Visit visit) {
    for (std::uint32_t number = Bucket(key); number != 0;) {
      Slot& slot = At(number);
      const std::uint32_t next = slot.next;
      if (slot.key == key && visit(slot)) {
        if (IsAlive(slot)) return true;
        Unlink(number);
        Free(number);
      }
      number = next;
    }
    return false;
  }
};

class ShareTable::Lock {
 public:
  explicit Lock(Shared* shared) : shared_(shared) {
    if (pthread_mutex_lock(&shared_->mutex) == EOWNERDEAD) {
      shared_->Rebuild();
      pthread_mutex_consistent(&shared_->mutex);
    }
  }
  ~Lock() { pthread_mutex_unlock(&shared_->mutex); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

 private:
  Shared* shared_;
};

std::uint64_t HashName(std::u16string_view upcased) {
  std::uint64_t hash = 0xCBF29CE484222325ull;
  for (char16_t c : upcased) hash = (hash ^ c) * 0x100000001B3ull;
  return hash ^ (hash >> 29);
}

ShareTable::ShareTable(const std::filesystem::path& folder) {
  static const int kForkHandler = pthread_atfork(nullptr, nullptr, LearnSelf);
  (void)kForkHandler;
  LearnSelf();
  const auto path = folder / ".openfiles";
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  void* memory = MAP_FAILED;
  if (file >= 0) {
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
    if (ftruncate(file, sizeof(Shared)) == 0) {
      memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    }
  }
  if (memory == MAP_FAILED) {
    std::fprintf(stderr, "machine: cannot map %s\n", path.c_str());
    std::exit(3);
  }
  shared_ = static_cast<Shared*>(memory);
  if (shared_->ready.load() != kVersion) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    pthread_mutex_init(&shared_->mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
    shared_->ready.store(kVersion);
  }
  flock(file, LOCK_UN);  // closing would not: the mapping keeps the open file, and so its lock
  close(file);
  changes_seen_ = shared_->changes.load();
}

ShareTable::~ShareTable() { munmap(shared_, sizeof(Shared)); }

DWORD ShareTable::Open(const Request& request, std::uint32_t* slot) {
  Lock lock(shared_);
  DWORD error = 0;
  const bool refused = shared_->AnyOf(request.key, [&](const Slot& other) {
    if (other.delete_pending) {
      error = ERROR_ACCESS_DENIED;
    } else if (request.access != 0 && other.access != 0 &&
               ((request.access & ~other.share) != 0 || (other.access & ~request.share) != 0)) {
      error = ERROR_SHARING_VIOLATION;
    } else {
      return false;
    }
    return true;
  });
  if (refused) return error;
  const std::uint32_t number = shared_->Take();
  if (number == 0) return ERROR_TOO_MANY_OPEN_FILES;
  shared_->At(number) = {request.key,
                         g_self.started.load(std::memory_order_relaxed),
                         g_self.pid.load(std::memory_order_relaxed),
                         0,
                         request.access,
                         request.share,
                         request.image,
                         false,
                         true};
  shared_->Link(number);
  *slot = number;
  return 0;
}

bool ShareTable::Close(std::uint32_t number) {
  Lock lock(shared_);
  Slot& slot = shared_->At(number);
  const FileKey key = slot.key;
  bool last = slot.delete_pending;
  shared_->Unlink(number);
  shared_->Free(number);
  if (last) last = !shared_->AnyOf(key, [](const Slot&) { return true; });
  return last;
}

void ShareTable::DeleteOnClose(std::uint32_t number) {
  Lock lock(shared_);
  const FileKey key = shared_->At(number).key;
  shared_->AnyOf(key, [](Slot& slot) {
    slot.delete_pending = true;
    return false;
  });
}

DWORD ShareTable::AskToDelete(const FileKey& key, bool mark, bool* open) {
  Lock lock(shared_);
  DWORD error = 0;
  const bool refused = shared_->AnyOf(key, [&](const Slot& slot) {
    error = slot.image || slot.delete_pending ? ERROR_ACCESS_DENIED : ERROR_SHARING_VIOLATION;
    return slot.image || slot.delete_pending || KeepsFromGoing(slot);
  });
  *open = false;
  if (refused) return error;
  *open = shared_->AnyOf(key, [](const Slot&) { return true; });
  if (*open && mark) {
    shared_->AnyOf(key, [](Slot& slot) {
      slot.delete_pending = true;
      return false;
    });
  }
  return 0;
}

DWORD ShareTable::AskToMove(const FileKey& key) {
  Lock lock(shared_);
  DWORD error = 0;
  const bool refused = shared_->AnyOf(key, [&](const Slot& slot) {
    error = slot.delete_pending ? ERROR_ACCESS_DENIED : ERROR_SHARING_VIOLATION;
    return slot.delete_pending || KeepsFromGoing(slot);
  });
  return refused ? error : 0;
}

bool ShareTable::IsOpen(const FileKey& key) {
  Lock lock(shared_);
  return shared_->AnyOf(key, [](const Slot&) { return true; });
}

bool ShareTable::AnyOpenIn(std::uint64_t device, std::uint64_t folder) {
  Lock lock(shared_);
  for (std::uint32_t number = 1; number <= shared_->high_water; ++number) {
    const Slot& slot = shared_->At(number);
    if (slot.used && slot.key.device == device && slot.key.folder == folder && shared_->IsAlive(slot)) return true;
  }
  return false;
}

void ShareTable::Move(const FileKey& from, const FileKey& to) {
  Lock lock(shared_);
  for (std::uint32_t number = shared_->Bucket(from); number != 0;) {
    const std::uint32_t next = shared_->At(number).next;
    if (shared_->At(number).key == from) {
      shared_->Unlink(number);
      shared_->At(number).key = to;
      shared_->Link(number);
    }
    number = next;
  }
}

void ShareTable::CountChange() {
  const std::uint64_t before = shared_->changes.fetch_add(1);
  if (before == changes_seen_) changes_seen_ = before + 1;
}

bool ShareTable::OthersChanged() {
  const std::uint64_t now = shared_->changes.load(std::memory_order_acquire);
  if (now == changes_seen_) return false;
  changes_seen_ = now;
  return true;
}

std::int64_t ShareTable::UsedBytes(char16_t drive) const { return shared_->used_bytes[drive - u'A'].load(); }

bool ShareTable::TakeBytes(char16_t drive, std::int64_t bytes, std::uint64_t bound) {
  std::atomic<std::int64_t>& used = shared_->used_bytes[drive - u'A'];
  std::int64_t before = used.load();
  do {
    if (bytes > 0 && before + bytes > static_cast<std::int64_t>(bound)) return false;
  } while (!used.compare_exchange_weak(before, before + bytes));
  return true;
}

}  // namespace winhost
