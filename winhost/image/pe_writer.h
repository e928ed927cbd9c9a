// Writing resources into PE files. The result is first a plan: pieces of new bytes and views of what the caller holds
// (a payload of hundreds of megabytes is written straight from its mapping, never copied in memory).
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "winhost/image/pe_image.h"

namespace winhost {

class FilePlan {
 public:
  void Add(std::vector<std::byte> bytes);
  void AddView(Bytes bytes);
  void PadTo(std::uint64_t size);  // zeros up to this size
  void AddPlan(const FilePlan& other);
  // Overwrites bytes that a piece added by Add holds.
  void Patch32(std::uint64_t offset, std::uint32_t value);

  std::uint64_t size() const { return size_; }
  std::vector<std::byte> ToBytes() const;
  // Replaces `path` by a whole new file, or leaves it alone and answers why not.
  std::optional<std::string> WriteTo(const std::filesystem::path& path, bool executable) const;
  // The PE checksum's sum over all bytes, without the length.
  std::uint32_t Sum() const;

 private:
  struct Piece {
    std::uint64_t offset;
    Bytes bytes;
    std::shared_ptr<std::vector<std::byte>> owned;
  };
  std::vector<Piece> pieces_;
  std::uint64_t size_ = 0;
};

// `bare` with `resources` added to its own (what it has of the same type and name, in any language, is replaced). The
// resource section stays at its place or is added behind the last one; the relocations move behind it. `why` says why
// not: the file is no PE file, is signed already, has debug sections behind its resources, or would exceed 2 GiB.
std::optional<FilePlan> PlanWithResources(Bytes bare, const ResourceTree& resources, std::string* why);
// The same in memory; empty when it cannot be done.
std::vector<std::byte> WithResources(Bytes bare, const ResourceTree& resources);

struct ResourceImageKind {
  bool is64 = false;
  bool dll = true;
};
// A valid PE file that holds resources and no code; nothing when they exceed 2 GiB.
std::optional<FilePlan> PlanResourceImage(const ResourceTree& resources, ResourceImageKind kind);

}  // namespace winhost
