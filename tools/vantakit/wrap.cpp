// vantakit wrap: programs built for Linux in the form of Windows images, so that they can carry a version and a
// signature.
#include <cstdio>

#include "tools/vantakit/arguments.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/signing.h"
#include "winhost/image/host_image.h"
#include "winhost/image/icon.h"
#include "winhost/image/mapped_file.h"
#include "winhost/image/version_info.h"
#include "winhost/machine/text.h"

namespace vantakit {
namespace {

constexpr char kHelp[] =
    "Puts a Linux program or library into a Windows image that carries it as a resource. Such images are what the\n"
    "machines of this project start and load; they can be signed like any other.\n\n"
    "usage: vantakit wrap --elf FILE --version A.B.C.D --description TEXT --out FILE [options]\n\n";
constexpr Option kOptions[] = {
    {"elf", Option::Value, "FILE", "the Linux program or library"},
    {"out", Option::Value, "FILE", "the image"},
    {"version", Option::Value, "A.B.C.D", "its version"},
    {"description", Option::Value, "TEXT", "its description"},
    {"icon", Option::Value, "FILE", "an .ico file"},
    {"dll", Option::Flag, nullptr, "a library"},
    {"x64", Option::Flag, nullptr, "says it is a 64-bit image; 32-bit otherwise"},
    {"sign-key", Option::Value, "PEM", "signs the image"},
    {"sign-cert", Option::Value, "PEM", "the certificate of that key"},
};

winhost::VersionInfo DescribeImage(const Arguments& arguments, const std::string& file_name) {
  const auto number = winhost::VersionNumber::Parse(arguments.Required("version"));
  if (!number) throw WrongArguments("--version is four numbers of at most 65535");
  winhost::VersionInfo info;
  info.file = info.product = *number;
  info.dll = arguments.Has("dll");
  info.strings = {{u"FileDescription", winhost::Wide(arguments.Required("description"))},
                  {u"FileVersion", winhost::Wide(number->Text())},
                  {u"OriginalFilename", winhost::Wide(file_name)},
                  {u"ProductName", u"VantaView"},
                  {u"ProductVersion", winhost::Wide(number->Text())}};
  return info;
}

}  // namespace

int RunWrap(int argc, char** argv) {
  if (AskedForHelp(argc, argv, kHelp, kOptions)) return 0;
  const Arguments arguments(kOptions, argc, argv);
  arguments.ExpectNoRest();
  const std::filesystem::path out = arguments.Required("out");
  const auto elf = winhost::MappedFile::Open(arguments.Required("elf"));
  if (!elf || !winhost::IsElf(elf->bytes())) throw Failure(arguments.Required("elf") + ": no Linux program");
  winhost::ResourceTree tree;
  const auto version = BuildVersionResource(DescribeImage(arguments, out.filename().string()));
  SetResource(tree, winhost::kTypeVersion, 1, 0, winhost::ResourceBlob(version));
  if (const auto icon = arguments.Get("icon")) {
    const auto file = winhost::MappedFile::Open(*icon);
    std::string why = "cannot be read";
    if (!file || !winhost::AddIcon(tree, file->bytes(), 1, 1, &why)) throw Failure(*icon + ": " + why);
  }
  const auto plan =
      winhost::WrapHostImage(elf->bytes(), tree, {.is64 = arguments.Has("x64"), .dll = arguments.Has("dll")});
  if (!plan) throw Failure("the image would exceed 2 GiB");
  const auto key = arguments.Get("sign-key");
  const std::filesystem::path written = key ? std::filesystem::path(out.string() + ".unsigned") : out;
  if (const auto error = plan->WriteTo(written, false)) throw Failure(*error);
  if (key) {
    std::filesystem::last_write_time(written, std::filesystem::last_write_time(arguments.Required("elf")));
    SignImage({*key, arguments.Required("sign-cert")}, written, out);
    std::filesystem::remove(written);
  }
  return 0;
}

}  // namespace vantakit
