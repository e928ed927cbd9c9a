// What the library's controls take: names and kinds from its own tables, and its controls' word on who takes what.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "lumo/core/value_kind.h"

namespace lumo {
class ControlBase;
}

namespace vantakit {

class Catalogue {
 public:
  Catalogue();
  ~Catalogue();

  bool HasTag(lumo::StringView tag) const;
  // A control of that tag holds children.
  bool IsContainer(lumo::StringView tag);
  // The kind of an attribute's value; none when a control of that tag passes the attribute over.
  std::optional<lumo::ValueKind> KindOf(lumo::StringView tag, lumo::StringView attribute);
  // The same for the Window element.
  std::optional<lumo::ValueKind> WindowKindOf(lumo::StringView attribute) const;
  // The same for an attribute that some control takes.
  std::optional<lumo::ValueKind> AnyKindOf(lumo::StringView attribute) const;

  // The tag, or the attribute that the tag takes, which is written nearly so; "" for none. With an empty tag any
  // attribute, with "Window" the window's.
  lumo::StringView TagNear(lumo::StringView word) const;
  lumo::StringView AttributeNear(lumo::StringView tag, lumo::StringView word);

 private:
  lumo::ControlBase* Sample(lumo::StringView tag);  // null for a tag that there is not

  lumo::AttributeInfos attributes_;
  lumo::AttributeInfos window_attributes_;
  std::map<lumo::String, std::unique_ptr<lumo::ControlBase>, std::less<>> samples_;
};

// The kind of `name` among them; none when it is not there.
std::optional<lumo::ValueKind> FindKind(const lumo::AttributeInfos& infos, lumo::StringView name);

// The word that differs from `word` by case or at most two letters; "" for none.
lumo::StringView NearestOf(const std::vector<lumo::StringView>& words, lumo::StringView word);

}  // namespace vantakit
