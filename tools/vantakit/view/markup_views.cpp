#include "tools/vantakit/view/markup_views.h"

#include "lumo/core/markup_document.h"
#include "tools/vantakit/view/json_text.h"

#include <stdexcept>

namespace vantakit {
namespace {

using Json = nlohmann::json;

// JSON is printed by recursion; the reader itself knows no limit.
constexpr size_t kDeepestPrinted = 1000;

Json ElementJson(lumo::MarkupDocument& document) {
  Json attributes = Json::array();
  lumo::String name, value;
  for (size_t n = 0; document.AttributeAt(n, &name, &value); ++n) {
    attributes.push_back({vanta::ToUtf8(name), vanta::ToUtf8(value)});
  }
  return Json::array({vanta::ToUtf8(document.TagName()), attributes, Json::array()});
}

void AddChildren(lumo::MarkupDocument& document, Json& list, size_t depth) {
  if (depth > kDeepestPrinted) throw std::runtime_error("the text is nested too deep to be shown");
  while (document.NextChild()) {
    document.EnterChild();
    list.push_back(ElementJson(document));
    AddChildren(document, list.back().at(2), depth + 1);
    document.LeaveElement();
  }
}

Json TreeOf(lumo::MarkupDocument& document) {
  Json tree = Json::array();
  document.Rewind();
  while (document.NextElement()) {
    tree.push_back(ElementJson(document));
    AddChildren(document, tree.back().at(2), 1);
  }
  return tree;
}

// The log is markup itself, of elements without a root.
Json EntriesOf(const lumo::String& log) {
  lumo::MarkupDocument document;
  document.LoadText(log);
  Json names = Json::array();
  while (document.NextElement()) names.push_back(vanta::ToUtf8(document.TagName()));
  return names;
}

lumo::String ArgumentOf(const Json& operation) {
  return operation.size() > 1 && !operation[1].is_null() ? TextOf(operation[1]) : lumo::String();
}

Json AttributeOf(lumo::MarkupDocument& document, const Json& operation) {
  const auto n = operation.at(1).get<int64_t>();
  lumo::String name, value;
  if (n < 0 || !document.AttributeAt(static_cast<size_t>(n), &name, &value)) return nullptr;
  return {vanta::ToUtf8(name), vanta::ToUtf8(value)};
}

Json Navigate(lumo::MarkupDocument& document, const Json& operation) {
  const auto verb = operation.at(0).get<std::string>();
  if (verb == "NextElement") return document.NextElement(ArgumentOf(operation));
  if (verb == "NextChild") return document.NextChild(ArgumentOf(operation));
  if (verb == "TagName") return vanta::ToUtf8(document.TagName());
  if (verb == "AttributeAt") return AttributeOf(document, operation);
  if (verb == "EnterChild") {
    document.EnterChild();
  } else if (verb == "LeaveElement") {
    document.LeaveElement();
  } else if (verb == "Rewind") {
    document.Rewind();
  } else {
    throw std::runtime_error("unknown navigation \"" + verb + "\"");
  }
  return nullptr;
}

}  // namespace

Json MarkupLoadView(const Json& input) {
  lumo::MarkupDocument document;
  const bool ok = document.LoadText(TextOf(input, "text"));
  return {{"ok", ok}, {"log", EntriesOf(document.ParseLog())}, {"tree", TreeOf(document)}};
}

Json MarkupNavigateView(const Json& input) {
  lumo::MarkupDocument document;
  document.LoadText(TextOf(input, "text"));
  Json results = Json::array();
  for (const Json& operation : input.at("ops")) results.push_back(Navigate(document, operation));
  return {{"results", results}};
}

}  // namespace vantakit
