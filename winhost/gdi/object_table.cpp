#include "winhost/gdi/object_table.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <numeric>
#include <vector>

namespace winhost {
namespace {

// A handle is place and use number, shifted so that the values up to 4095 (system colours as brushes) are none.
constexpr int kPlaceBits = 20;
constexpr std::uintptr_t kMostPlaces = std::uintptr_t{1} << kPlaceBits;
constexpr int kShift = 4;

struct Place {
  std::uintptr_t use = 0;
  bool permanent = false;
  std::shared_ptr<GraphicsObject> object;
};

struct Table {
  std::mutex lock;
  std::vector<Place> places;
  std::vector<std::uintptr_t> free;
  std::array<int, static_cast<std::size_t>(ObjectKind::Count)> counts{};
};

Table& TheTable() {
  static auto* table = new Table;
  return *table;
}

void* MakeHandle(std::uintptr_t place, std::uintptr_t use) {
  return reinterpret_cast<void*>(((use << kPlaceBits) | place) << kShift);
}

// Null when the handle stands for nothing. The lock is held.
Place* FindPlace(Table& table, const void* handle) {
  const auto number = reinterpret_cast<std::uintptr_t>(handle);
  const std::uintptr_t index = (number >> kShift) & (kMostPlaces - 1);
  if (index >= table.places.size()) return nullptr;
  Place& place = table.places[index];
  return place.object && MakeHandle(index, place.use) == handle ? &place : nullptr;
}

int& CountOf(Table& table, ObjectKind kind) { return table.counts[static_cast<std::size_t>(kind)]; }

}  // namespace

void* EnterObject(std::shared_ptr<GraphicsObject> object, bool permanent) {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  if (table.free.empty()) {
    if (table.places.size() == kMostPlaces) return nullptr;
    table.free.push_back(table.places.size());
    table.places.emplace_back();
  }
  const std::uintptr_t index = table.free.back();
  table.free.pop_back();
  Place& place = table.places[index];
  ++place.use;
  place.permanent = permanent;
  if (!permanent) ++CountOf(table, object->kind());
  place.object = std::move(object);
  return MakeHandle(index, place.use);
}

std::shared_ptr<GraphicsObject> FindGraphicsObject(const void* handle) {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  const Place* place = FindPlace(table, handle);
  return place ? place->object : nullptr;
}

bool RemoveObject(const void* handle) {
  Table& table = TheTable();
  std::shared_ptr<GraphicsObject> object;  // destroyed outside the lock: it may hold others
  std::scoped_lock lock(table.lock);
  Place* place = FindPlace(table, handle);
  if (!place || place->permanent) return false;
  object = std::move(place->object);
  place->object = nullptr;
  --CountOf(table, object->kind());
  table.free.push_back(static_cast<std::uintptr_t>(place - table.places.data()));
  return true;
}

bool IsPermanentObject(const void* handle) {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  const Place* place = FindPlace(table, handle);
  return place && place->permanent;
}

void RemoveAllObjects() {
  Table& table = TheTable();
  std::vector<std::shared_ptr<GraphicsObject>> objects;
  std::scoped_lock lock(table.lock);
  for (std::size_t i = 0; i < table.places.size(); ++i) {
    Place& place = table.places[i];
    if (!place.object) continue;
    if (!place.permanent) --CountOf(table, place.object->kind());
    objects.push_back(std::move(place.object));
    place.object = nullptr;
    table.free.push_back(i);
  }
}

int CountObjects(ObjectKind kind) {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  return CountOf(table, kind);
}

int CountAllObjects() {
  Table& table = TheTable();
  std::scoped_lock lock(table.lock);
  return std::accumulate(table.counts.begin(), table.counts.end(), 0);
}

}  // namespace winhost
