// The resources of an image as a map from (type, name, language) to bytes, in the order in which a .rsrc section keeps
// them: text names first, sorted, then numbers.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "winhost/image/bytes.h"

namespace winhost {

// A resource's type or name: a number, or text, which is kept in upper case (compare, do not display).
class ResourceName {
 public:
  ResourceName(std::uint16_t id) : id_(id) {}
  explicit ResourceName(std::u16string_view text);
  bool IsText() const { return !text_.empty(); }
  std::uint16_t id() const { return id_; }
  const std::u16string& text() const { return text_; }
  // "#205" or the text.
  std::u16string Display() const;
  bool operator==(const ResourceName&) const = default;
  bool operator<(const ResourceName& other) const;

 private:
  std::uint16_t id_ = 0;
  std::u16string text_;
};

struct ResourceKey {
  ResourceName type;
  ResourceName name;
  std::uint16_t language = 0;
  bool operator==(const ResourceKey&) const = default;
  bool operator<(const ResourceKey& other) const;
};

// Bytes of a resource: owned, or a view of memory that the caller keeps (a mapped payload is never copied).
class ResourceBlob {
 public:
  ResourceBlob() = default;
  explicit ResourceBlob(std::vector<std::byte> bytes)
      : owned_(std::make_shared<const std::vector<std::byte>>(std::move(bytes))), view_(*owned_) {}
  static ResourceBlob View(Bytes bytes) {
    ResourceBlob blob;
    blob.view_ = bytes;
    return blob;
  }
  Bytes bytes() const { return view_; }

 private:
  std::shared_ptr<const std::vector<std::byte>> owned_;
  Bytes view_;
};

using ResourceTree = std::map<ResourceKey, ResourceBlob>;

// Predefined types.
inline constexpr std::uint16_t kTypeIcon = 3;
inline constexpr std::uint16_t kTypeRcData = 10;
inline constexpr std::uint16_t kTypeGroupIcon = 14;
inline constexpr std::uint16_t kTypeVersion = 16;
inline constexpr std::uint16_t kTypeManifest = 24;

// Puts `blob` in place of every language that the type and name have.
void SetResource(ResourceTree& tree, const ResourceName& type, const ResourceName& name, std::uint16_t language,
                 ResourceBlob blob);

// The bytes for a type and name: the neutral language, else American English, else the first; null when there is none.
const ResourceBlob* FindInTree(const ResourceTree& tree, const ResourceName& type, const ResourceName& name);

}  // namespace winhost
