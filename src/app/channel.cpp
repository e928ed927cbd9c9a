#include "app/channel.h"

#include "base/paths.h"
#include "install/product_config.h"

namespace vanta {

String ChannelFromFileName(StringView file_name) {
  constexpr size_t kExtension = 4;
  const size_t mark = file_name.rfind(TEXT('_'));
  if (file_name.size() <= 5 || mark == StringView::npos) return {};
  const StringView after = file_name.substr(mark + 1);
  return String(after.size() < kExtension ? after : after.substr(0, after.size() - kExtension));
}

String InstallerChannel(const OptionStore& store, StringView module_path) {
  const String from = store.Get(TEXT("from"));
  return from.empty() ? ChannelFromFileName(FileNameOf(module_path)) : from;
}

String StartChannel(const OptionStore& store, StringView module_path, const String& new_channel) {
  const String channel = InstallerChannel(store, module_path);
  return channel.empty() ? new_channel : channel;
}

String GetInstallerChannel() { return InstallerChannel(GetOptionStore(), ModulePath()); }

String GetChannel() { return StartChannel(GetOptionStore(), ModulePath(), ReadNewChannel()); }

}  // namespace vanta
