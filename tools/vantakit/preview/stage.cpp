#include "tools/vantakit/preview/stage.h"

#include <stdlib.h>

#include "lumo/core/create_window.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/window.h"
#include "report/makerlibs/safe_loader.h"
#include "setupui/skin_package.h"
#include "tools/vantakit/check.h"
#include "tools/vantakit/commands.h"
#include "tools/vantakit/skin_source.h"
#include "tools/vantakit/zip_writer.h"
#include "winhost/image/mapped_file.h"

namespace vantakit {
namespace {

constexpr DWORD kWindowStyle = WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_MINIMIZEBOX;

class PassingFile {
 public:
  PassingFile() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vanta-skin-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw Failure("no folder for the skin can be made below the temporary folder");
    folder_ = pattern;
  }
  ~PassingFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  std::filesystem::path Path() const { return folder_ / "skin.zip"; }

 private:
  std::filesystem::path folder_;
};

}  // namespace

// The archive as the setup would carry it.
struct Stage::Package {
  explicit Package(const std::filesystem::path& skin) {
    const SkinSource source(skin);
    WriteArchive(ListSkin(source.Folder()), 1, file.Path());
    mapped = winhost::MappedFile::Open(file.Path());
    if (!mapped) throw Failure("the skin's archive cannot be read");
  }
  std::string_view Bytes() const {
    return {reinterpret_cast<const char*>(mapped->bytes().data()), mapped->bytes().size()};
  }

  PassingFile file;
  std::shared_ptr<const winhost::MappedFile> mapped;
};

Stage::Stage(const std::filesystem::path& skin) : skin_(skin), package_(std::make_unique<Package>(skin)) { Start(); }

Stage::~Stage() { vanta::ShutdownSkin(); }

void Stage::Start() {
  vanta::LoadSystemLibrary(TEXT("Shcore.dll"));  // as the setup does: DPI functions are looked up in it
  if (vanta::LoadSkinArchive(package_->Bytes(), "") != vanta::SkinOk) throw Failure("the skin cannot be opened");
  vanta::InitSkin(TEXT("resources\\"), TEXT("themes\\default"), TEXT("lang\\zh-CN"), true);
}

void Stage::Prepare() { prepared_ = std::make_unique<Package>(skin_); }

void Stage::Exchange() {
  vanta::ShutdownSkin();
  lumo::Globals().Clear();  // a process has one skin for its life, and the first definition of a name stays
  if (prepared_) std::swap(package_, prepared_);
  Start();
}

HWND Stage::Open(const std::string& layout, lumo::lumowin* handler) {
  std::string folder, file = layout;
  if (const std::size_t slash = layout.find_last_of("/\\"); slash != layout.npos) {
    folder = layout.substr(0, slash);
    file = layout.substr(slash + 1);
  } else {
    folder = std::filesystem::path(layout).stem().string();
    if (!file.ends_with(".xml")) file += ".xml";
  }
  const HWND window = lumo::CreateSkinWindow(vanta::FromUtf8(folder).c_str(), vanta::FromUtf8(file).c_str(), handler,
                                             nullptr, TEXT("VantaView"), kWindowStyle, 0, nullptr);
  if (!window) throw Failure(folder + "/" + file + ": no window can be made of this layout");
  return window;
}

lumo::Window* WindowBehind(HWND window) {
  return reinterpret_cast<lumo::Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void Settle(int turns) {
  MSG message = {};
  while (turns-- > 0 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace vantakit
