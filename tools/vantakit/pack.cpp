// vantakit pack: a bare setup, a payload and a skin become a finished setup. No compiler is needed.
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "tools/vantakit/arguments.h"
#include "tools/vantakit/check.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/deployment_block.h"
#include "tools/vantakit/name_rules.h"
#include "tools/vantakit/signing.h"
#include "tools/vantakit/skin_source.h"
#include "tools/vantakit/zip_writer.h"
#include "winhost/image/host_image.h"
#include "winhost/image/icon.h"
#include "winhost/image/mapped_file.h"
#include "winhost/image/version_info.h"
#include "winhost/machine/text.h"

namespace vantakit {
namespace {

namespace fs = std::filesystem;
using winhost::ResourceName;
using winhost::ResourceTree;

constexpr std::uint16_t kPayloadResource = 205;
constexpr std::uint16_t kSkinResource = 202;
constexpr std::uint16_t kDeploymentResource = 206;
constexpr std::uint16_t kIconGroup = 201;
constexpr std::uint16_t kVersionResource = 1;

constexpr char kHelp[] =
    "Makes a finished setup: puts a payload, a skin, a version, an icon and the deployment block into a bare one\n"
    "(a Windows executable, or the setup built for Linux). What is not given stays as the bare setup has it.\n\n"
    "usage: vantakit pack --setup BARE --payload DIR --skin DIR --out FILE [options]\n\n";
constexpr Option kOptions[] = {
    {"setup", Option::Value, "FILE", "the bare setup"},
    {"payload", Option::Value, "DIR", "the product's files"},
    {"skin", Option::Value, "DIR", "folder that holds resources/…"},
    {"out", Option::Value, "FILE", "the finished setup; \"…_CHANNEL.exe\" names a channel"},
    {"version", Option::Value, "A.B.C.D", "the setup's version"},
    {"icon", Option::Value, "FILE", "an .ico file"},
    {"level", Option::Value, "0-9", "how hard to compress; 9 when not given"},
    {"publisher", Option::Value, "HOST", "the maker's web address"},
    {"statistics", Option::Value, "HOST", "the statistics server"},
    {"upgrade", Option::Value, "HOST", "the upgrade server"},
    {"agreement", Option::Value, "HOST", "the server of the agreement pages"},
    {"maker-key", Option::Repeatable, "HEX", "SHA-256 of a public key whose signatures are accepted"},
    {"maker-cert", Option::Repeatable, "PEM", "a certificate whose key is accepted"},
    {"sign-key", Option::Value, "PEM", "signs what is unsigned among the payload's programs"},
    {"sign-cert", Option::Value, "PEM", "the certificate of that key, which is then accepted as well"},
    {"sign-setup", Option::Flag, nullptr, "signs the finished setup, too"},
    {"release", Option::Flag, nullptr, "refuses placeholders and everything that `check` finds"},
};

// A folder beside the result for what is made on the way, gone afterwards.
class WorkFolder {
 public:
  explicit WorkFolder(const fs::path& result) {
    const fs::path parent = fs::absolute(result).parent_path();
    std::string pattern = (parent / ".vantakit-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw Failure(parent.string() + ": no folder can be made here");
    path_ = pattern;
  }
  ~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  fs::path operator/(const std::string& name) const { return path_ / name; }

 private:
  fs::path path_;
};

void Refuse(const std::string& what, const Findings& findings) {
  if (!HasErrors(findings)) return;
  std::string text = what;
  for (const Finding& finding : findings) text += "\n  " + LineOf(finding);
  throw Failure(text);
}

std::shared_ptr<const winhost::MappedFile> Map(const fs::path& file) {
  auto mapped = winhost::MappedFile::Open(file);
  if (!mapped) throw Failure(file.string() + ": cannot be read");
  return mapped;
}

std::string_view AsText(winhost::Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

winhost::ResourceBlob Blob(std::string_view text) {
  const auto* begin = reinterpret_cast<const std::byte*>(text.data());
  return winhost::ResourceBlob({begin, begin + text.size()});
}

class Packer {
 public:
  explicit Packer(const Arguments& arguments)
      : arguments_(arguments), out_(arguments.Required("out")), work_(out_), bare_(Map(arguments.Required("setup"))) {
    if (const auto image = winhost::OpenImage(bare_->bytes())) had_ = image->Resources();
    const auto key = arguments.Get("sign-key");
    const auto certificate = arguments.Get("sign-cert");
    if (key.has_value() != certificate.has_value()) throw WrongArguments("--sign-key and --sign-cert belong together");
    if (key) signing_ = SigningKey{*key, *certificate};
    if (arguments.Has("sign-setup") && !key) throw WrongArguments("--sign-setup needs --sign-key and --sign-cert");
  }

  void Run() {
    AddDeployment();
    AddPayload();
    AddSkin();
    AddVersion();
    AddIcon();
    std::string why;
    const bool elf = winhost::IsElf(bare_->bytes());
    const auto plan = elf ? winhost::PlanAppended(bare_->bytes(), tree_, &why)
                          : winhost::PlanWithResources(bare_->bytes(), tree_, &why);
    if (!plan) throw Failure(arguments_.Required("setup") + ": " + why);
    const bool sign = arguments_.Has("sign-setup");
    if (sign && elf) throw WrongArguments("--sign-setup: only Windows executables can be signed");
    const fs::path written = sign ? work_ / "unsigned.exe" : out_;
    if (const auto error = plan->WriteTo(written, true)) throw Failure(*error);
    if (sign) {
      SignImage(*signing_, written, work_ / "signed.exe");
      fs::permissions(work_ / "signed.exe", fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                                fs::perms::others_read | fs::perms::others_exec);
      fs::rename(work_ / "signed.exe", out_);
    }
    std::printf("%s: version %s, %zu files, %ju bytes\n", out_.c_str(), version_.Text().c_str(), file_count_,
                static_cast<std::uintmax_t>(fs::file_size(out_)));
  }

 private:
  void AddDeployment() {
    const auto* old = winhost::FindInTree(had_, winhost::kTypeRcData, kDeploymentResource);
    fields_ = ReadDeployment(old ? AsText(old->bytes()) : std::string_view());
    const std::pair<const char*, std::string*> hosts[] = {{"publisher", &fields_.publisher},
                                                          {"statistics", &fields_.statistics},
                                                          {"upgrade", &fields_.upgrade},
                                                          {"agreement", &fields_.agreement}};
    for (const auto& [name, field] : hosts) *field = arguments_.Get(name).value_or(*field);
    std::vector<std::string> keys = arguments_.All("maker-key");
    for (const std::string& certificate : arguments_.All("maker-cert")) keys.push_back(PublicKeyHash(certificate));
    if (signing_) keys.push_back(PublicKeyHash(signing_->certificate));
    if (!keys.empty()) fields_.maker_keys.clear();
    for (const std::string& key : keys) {
      if (std::find(fields_.maker_keys.begin(), fields_.maker_keys.end(), key) == fields_.maker_keys.end())
        fields_.maker_keys.push_back(key);
    }
    Refuse("the deployment block is wrong", CheckDeployment(fields_));
    if (arguments_.Has("release")) Refuse("not fit for release", FindPlaceholders(fields_));
    SetResource(tree_, winhost::kTypeRcData, kDeploymentResource, 0, Blob(WriteDeployment(fields_)));
  }

  void AddPayload() {
    const fs::path folder = arguments_.Required("payload");
    std::vector<FolderEntry> entries = ListFolder(folder);
    if (entries.empty()) throw Failure(folder.string() + ": holds no files");
    Refuse("files of the payload could not be installed", CheckEntryNames(entries));
    if (arguments_.Has("release")) Refuse("not fit for release", CheckPayload(folder));
    file_count_ = entries.size();
    if (signing_) {
      for (FolderEntry& entry : entries) SignIfNeeded(entry);
    } else if (arguments_.Has("release")) {
      Refuse("not fit for release", FindUnsigned(entries));
    }
    AddArchive(entries, winhost::kTypeRcData, kPayloadResource, "payload.zip");
  }

  void SignIfNeeded(FolderEntry& entry) {
    const auto file = Map(entry.file);
    if (!IsImage(file->bytes()) || IsSigned(file->bytes())) return;
    const fs::path copy = work_ / ("signed-" + std::to_string(signed_count_++));
    SignImage(*signing_, entry.file, copy);
    fs::last_write_time(copy, fs::last_write_time(entry.file));
    entry.file = copy;
  }

  static Findings FindUnsigned(const std::vector<FolderEntry>& entries) {
    Findings findings;
    for (const FolderEntry& entry : entries) {
      const auto file = Map(entry.file);
      if (IsImage(file->bytes()) && !IsSigned(file->bytes())) findings.push_back({entry.name, "unsigned"});
    }
    return findings;
  }

  void AddSkin() {
    const SkinSource skin(arguments_.Required("skin"));
    const std::vector<FolderEntry> entries = ListSkin(skin.Folder());
    Refuse("files of the skin could not be found", CheckEntryNames(entries));
    if (arguments_.Has("release")) Refuse("not fit for release", CheckSkin(skin.Folder()));
    AddArchive(entries, ResourceName(u"SKIN"), kSkinResource, "skin.zip");
  }

  void AddArchive(const std::vector<FolderEntry>& entries, const ResourceName& type, std::uint16_t id,
                  const char* name) {
    const std::string level = arguments_.Get("level").value_or("9");
    if (level.size() != 1 || level[0] < '0' || level[0] > '9') throw WrongArguments("--level is a digit from 0 to 9");
    WriteArchive(entries, level[0] - '0', work_ / name);
    archives_.push_back(Map(work_ / name));
    SetResource(tree_, type, id, 0, winhost::ResourceBlob::View(archives_.back()->bytes()));
  }

  void AddVersion() {
    winhost::VersionInfo info;
    if (const auto text = arguments_.Get("version")) {
      const auto number = winhost::VersionNumber::Parse(*text);
      if (!number) throw WrongArguments("--version is four numbers of at most 65535: \"" + *text + "\"");
      version_ = *number;
    } else if (const auto old = OwnVersion()) {
      version_ = *old;
    } else {
      throw WrongArguments("the bare setup has no version; --version is missing");
    }
    info.file = info.product = version_;
    const std::u16string number = winhost::Wide(version_.Text());
    info.strings = {{u"CompanyName", winhost::Wide(fields_.publisher)},
                    {u"FileDescription", u"VantaView Setup"},
                    {u"FileVersion", number},
                    {u"InternalName", u"VantaPictorSetup"},
                    {u"OriginalFilename", winhost::Wide(out_.filename().string())},
                    {u"ProductName", u"VantaView"},
                    {u"ProductVersion", number}};
    SetResource(tree_, winhost::kTypeVersion, kVersionResource, 0, winhost::ResourceBlob(BuildVersionResource(info)));
  }

  std::optional<winhost::VersionNumber> OwnVersion() const {
    const auto* block = winhost::FindInTree(had_, winhost::kTypeVersion, kVersionResource);
    const auto fixed = block ? winhost::FindVersionValue(block->bytes(), u"\\") : std::nullopt;
    if (!fixed || fixed->length < 16) return std::nullopt;
    winhost::VersionNumber number;
    for (std::size_t i = 0; i < 4; ++i)
      number.parts[i] = winhost::FieldOr0<std::uint16_t>(fixed->value, 8 + 2 * (i ^ 1));
    return number;
  }

  void AddIcon() {
    const auto file = arguments_.Get("icon");
    if (!file) return;
    std::string why;
    if (!winhost::AddIcon(tree_, Map(*file)->bytes(), kIconGroup, 1, &why)) throw Failure(*file + ": " + why);
  }

  const Arguments& arguments_;
  fs::path out_;
  WorkFolder work_;
  std::shared_ptr<const winhost::MappedFile> bare_;
  ResourceTree had_;
  ResourceTree tree_;
  std::optional<SigningKey> signing_;
  DeploymentFields fields_;
  winhost::VersionNumber version_;
  std::vector<std::shared_ptr<const winhost::MappedFile>> archives_;
  std::size_t file_count_ = 0;
  int signed_count_ = 0;
};

}  // namespace

int RunPack(int argc, char** argv) {
  if (AskedForHelp(argc, argv, kHelp, kOptions)) return 0;
  const Arguments arguments(kOptions, argc, argv);
  arguments.ExpectNoRest();
  for (const char* needed : {"setup", "payload", "skin", "out"}) arguments.Required(needed);
  Packer(arguments).Run();
  return 0;
}

}  // namespace vantakit
