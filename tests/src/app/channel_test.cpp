#include "app/channel.h"

#include <gtest/gtest.h>

namespace {

using vanta::String;

TEST(ChannelTest, FileNamesCarryChannels) {
  const struct {
    const char* name;
    const char* channel;
  } rows[] = {
      {"setup_abc12.exe", "abc12"},
      {"pictor_setup_xyz.exe", "xyz"},
      {"a_b.exe", "b"},
      {"setup.exe", ""},
      {"_.exe", ""},
      {"a_.exe", ""},
      {"setup.e_e", "e"},
      {"setup_.x", ".x"},
      {"setup_abc", "abc"},
      {"setup_abcd", ""},
      {"", ""},
      {"a_b_c d.exe", "c d"},
  };
  for (const auto& row : rows) {
    const std::string name = row.name;
    const std::string channel = row.channel;
    EXPECT_EQ(vanta::ChannelFromFileName(String(name.begin(), name.end())), String(channel.begin(), channel.end()))
        << name;
  }
}

TEST(ChannelTest, OptionThenFileNameThenRegistryDecide) {
  const vanta::StringView named = TEXT("C:\\downloads_x\\setup_file.exe");
  const vanta::StringView plain = TEXT("C:\\downloads_x\\setup.exe");
  vanta::OptionStore store;
  EXPECT_EQ(vanta::StartChannel(store, named, TEXT("registry")), String(TEXT("file")));
  EXPECT_EQ(vanta::StartChannel(store, plain, TEXT("registry")), String(TEXT("registry")));
  EXPECT_EQ(vanta::InstallerChannel(store, plain), String());
  store.Set(TEXT("from"), String());
  EXPECT_EQ(vanta::StartChannel(store, named, TEXT("registry")), String(TEXT("file")));
  store.Replace(TEXT("from"), TEXT("option"));
  EXPECT_EQ(vanta::InstallerChannel(store, named), String(TEXT("option")));
}

}  // namespace
