#include "tools/vantakit/skincheck/picture_check.h"

#include <algorithm>
#include <set>

#include "lumo/render/image_attribute.h"
#include "lumo/render/image_cache.h"
#include "lumo/render/scale_file.h"

namespace vantakit {
namespace {

constexpr int kDesignScale = 100;

bool IsVector(const std::string& name) {
  const std::string_view text = name;
  return text.size() >= 4 && vanta::EqualAsciiNoCase(vanta::FromUtf8(text.substr(text.size() - 4)), TEXT(".svg"));
}

// The number of the scale folder that holds the entry; 0 for none.
int ScaleOf(const std::string& entry) {
  const std::size_t end = entry.rfind('/');
  const std::size_t start = end == 0 || end == entry.npos ? entry.npos : entry.rfind('/', end - 1);
  if (start == entry.npos) return 0;
  const std::string folder = entry.substr(start + 1, end - start - 1);
  const bool number = !folder.empty() && folder.size() < 5 && folder.find_first_not_of("0123456789") == folder.npos;
  return number ? std::stoi(folder) : 0;
}

// The scales that the theme has pictures for, if there are such folders beside this picture; none otherwise.
std::set<int> ScalesFor(const SkinTheme& theme, const std::string& picture) {
  const std::string folder = picture.substr(0, picture.rfind('/') + 1);
  std::set<int> scales;
  bool beside = false;
  for (const FolderEntry* const entry : theme.Entries()) {
    const int scale = ScaleOf(entry->name);
    if (!scale) continue;
    scales.insert(scale);
    beside = beside || entry->name.starts_with(folder + std::to_string(scale) + "/");
  }
  return beside ? scales : std::set<int>();
}

// As a window of that scale loads it.
bool CanBeDrawn(lumo::StringView folder, lumo::StringView file, lumo::StringView scale, int percent) {
  lumo::ImageAttribute image;
  image.Assign(file);
  image.scale = scale;
  return lumo::LoadImage(image, folder, percent);
}

}  // namespace

Remarks CheckPicture(SkinTheme& theme, lumo::StringView window_folder, lumo::StringView file, lumo::StringView scale) {
  const lumo::String path = lumo::ResolveImagePath(file, window_folder);
  const FolderEntry* const entry = theme.FindEntry(path);
  if (!entry) return {{"no picture \"" + vanta::ToUtf8(file) + "\" in the skin"}};
  if (!CanBeDrawn(window_folder, file, scale, kDesignScale)) return {{entry->name + " cannot be drawn"}};
  Remarks remarks;
  for (const int percent : IsVector(entry->name) ? std::set<int>() : ScalesFor(theme, entry->name)) {
    if (!theme.FindEntry(lumo::InsertScaleFolder(path, percent))) {
      remarks.push_back({"no \"" + vanta::ToUtf8(file) + "\" in the folder " + std::to_string(percent) + " beside it",
                         Finding::Warning});
    } else if (!CanBeDrawn(window_folder, file, scale, percent)) {
      remarks.push_back({entry->name + " cannot be drawn at " + std::to_string(percent) + " percent"});
    }
  }
  return remarks;
}

}  // namespace vantakit
