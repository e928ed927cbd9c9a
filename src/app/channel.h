// The distribution channel: who passed this setup on.
#pragma once

#include "app/option_store.h"

namespace vanta {

// The channel in an installer's file name: the text after its last "_" without the last four characters (".exe"); all
// of that text when the "_" lies within them; "" for names of at most five characters or without "_". Pure.
String ChannelFromFileName(StringView file_name);

// The option "from" or, when it has no value, the channel of the program's file name. Pure.
String InstallerChannel(const OptionStore& store, StringView module_path);

// As InstallerChannel, and when that is empty the registry value "newChannel". Pure.
String StartChannel(const OptionStore& store, StringView module_path, const String& new_channel);

// The same for this process.
String GetInstallerChannel();
String GetChannel();

}  // namespace vanta
