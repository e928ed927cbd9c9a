#include "tools/vantakit/view/app_views.h"

#include "app/channel.h"
#include "app/command_line.h"
#include "tools/vantakit/view/json_text.h"

#include <stdexcept>

namespace vantakit {
namespace {

using Json = nlohmann::json;

vanta::OptionStore StoreOf(const vanta::String& command_line, bool posixly_correct) {
  const auto words = vanta::SplitCommandLine(command_line.c_str());
  return vanta::ParseWords(words, vanta::kOptionTable, posixly_correct).store;
}

Json Apply(const Json& operation, vanta::OptionStore& store) {
  const auto verb = operation.at(0).get<std::string>();
  const vanta::String name = TextOf(operation.at(1));
  const bool with_value = operation.size() > 2 && !operation.at(2).is_null();
  if (verb == "has") return with_value ? store.Has(name, TextOf(operation.at(2))) : store.Has(name);
  if (verb == "get") return vanta::ToUtf8(store.Get(name));
  if (verb == "set") {
    store.Set(name, TextOf(operation.at(2)));
  } else if (verb == "remove") {
    store.Remove(name);
  } else {
    throw std::runtime_error("unknown store operation \"" + verb + "\"");
  }
  return nullptr;
}

}  // namespace

Json CmdlineParseView(const Json& input) {
  const vanta::String command_line = TextOf(input, "cmdline");
  Json argv = Json::array();
  for (const vanta::String& word : vanta::SplitCommandLine(command_line.c_str())) argv.push_back(vanta::ToUtf8(word));
  const auto store = StoreOf(command_line, input.at("posixly_correct").get<bool>());
  return {{"argv", argv}, {"store", ObjectOf(store.all())}};
}

Json CmdlineChannelView(const Json& input) {
  const auto store = StoreOf(TextOf(input, "cmdline"), input.at("posixly_correct").get<bool>());
  const vanta::String module = TextOf(input, "module");
  return {{"channel", vanta::ToUtf8(vanta::StartChannel(store, module, TextOf(input, "newChannel")))},
          {"installer_channel", vanta::ToUtf8(vanta::InstallerChannel(store, module))}};
}

Json CmdlineStoreView(const Json& input) {
  auto store = StoreOf(TextOf(input, "cmdline"), false);
  Json results = Json::array();
  for (const Json& operation : input.at("ops")) results.push_back(Apply(operation, store));
  return {{"results", results}, {"store", ObjectOf(store.all())}};
}

}  // namespace vantakit
