#include <exdisp.h>
#include <ole2.h>
#include <shldisp.h>
#include <shlwapi.h>
#include <shobjidl.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "tests/support/machine_fixture.h"

namespace {

using testing_support::OnMachine;

template <class T>
struct Held {
  ~Held() {
    if (pointer) pointer->Release();
  }
  T* operator->() { return pointer; }
  void** Put() { return reinterpret_cast<void**>(&pointer); }
  T* pointer = nullptr;
};

VARIANT Text(const OLECHAR* text) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(text);
  return value;
}

class ShellWindowsTest : public OnMachine {
 protected:
  void SetUp() override { CoInitialize(nullptr); }
  void TearDown() override { CoUninitialize(); }

  // The way from the shell's windows to the desktop's application; the first result that is not S_OK ends it.
  HRESULT Reach(Held<IShellDispatch2>* application) {
    Held<IShellWindows> windows;
    Held<IDispatch> desktop, background, dispatch;
    Held<IShellBrowser> browser;
    Held<IShellView> view;
    Held<IShellFolderViewDual> folder;
    VARIANT none;
    VariantInit(&none);
    LONG window = 0;
    HRESULT result =
        CoCreateInstance(CLSID_ShellWindows, nullptr, CLSCTX_LOCAL_SERVER, IID_IShellWindows, windows.Put());
    if (result != S_OK) return result;
    result = windows->FindWindowSW(&none, &none, SWC_DESKTOP, &window, SWFO_NEEDDISPATCH, &desktop.pointer);
    if (result != S_OK) return result;
    result = IUnknown_QueryService(desktop.pointer, SID_STopLevelBrowser, IID_IShellBrowser, browser.Put());
    if (result != S_OK) return result;
    if ((result = browser->QueryActiveShellView(&view.pointer)) != S_OK) return result;
    if ((result = view->GetItemObject(SVGIO_BACKGROUND, IID_IDispatch, background.Put())) != S_OK) return result;
    if ((result = background->QueryInterface(IID_IShellFolderViewDual, folder.Put())) != S_OK) return result;
    if ((result = folder->get_Application(&dispatch.pointer)) != S_OK) return result;
    return dispatch->QueryInterface(IID_IShellDispatch2, application->Put());
  }

  HRESULT Execute(IShellDispatch2* application) {
    VARIANT file = Text(TEXT("C:\\none.exe")), arguments = Text(TEXT("/src=setup")), none, show;
    VariantInit(&none);
    VariantInit(&show);
    show.vt = VT_I4;
    show.lVal = SW_SHOWNORMAL;
    const HRESULT result = application->ShellExecute(file.bstrVal, arguments, none, none, show);
    VariantClear(&file);
    VariantClear(&arguments);
    return result;
  }
};

TEST_F(ShellWindowsTest, TheDesktopStartsProgramsForTheUser) {
  Start();
  Held<IShellDispatch2> application;
  ASSERT_EQ(Reach(&application), S_OK);
  EXPECT_EQ(Execute(application.pointer), S_OK);  // the shell tells the user itself that there is no such file
  std::ifstream journal(folder_ / "launches.jsonl");
  const auto line = nlohmann::json::parse(journal);
  EXPECT_EQ(line["file"], "C:\\none.exe");
  EXPECT_EQ(line["parameters"], "/src=setup");
  EXPECT_EQ(line["by"], "desktop shell");
  EXPECT_EQ(line["elevated"], false);
}

TEST_F(ShellWindowsTest, WithoutDesktopThereIsNothingToFind) {
  Start(R"({"desktop_shell": false})");
  Held<IShellDispatch2> application;
  EXPECT_EQ(Reach(&application), S_FALSE);
}

class EveryStep : public ShellWindowsTest, public testing::WithParamInterface<const char*> {};

TEST_P(EveryStep, CanFail) {
  Start(std::string(R"({"faults": [{"operation": ")") + GetParam() + R"(", "error": 2147500037}]})");
  Held<IShellDispatch2> application;
  HRESULT result = Reach(&application);
  if (result == S_OK) result = Execute(application.pointer);
  EXPECT_EQ(result, E_FAIL);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "launches.jsonl"));
}
INSTANTIATE_TEST_SUITE_P(Desktop, EveryStep,
                         testing::Values("CoCreateInstance", "IShellWindows::FindWindowSW",
                                         "IServiceProvider::QueryService", "IShellBrowser::QueryActiveShellView",
                                         "IShellView::GetItemObject", "IShellFolderViewDual::get_Application",
                                         "IShellDispatch2::ShellExecute"));

}  // namespace
