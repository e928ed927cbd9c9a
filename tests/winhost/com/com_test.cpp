#include <ole2.h>
#include <shlwapi.h>
#include <shobjidl.h>
#include <taskschd.h>

#include <thread>

#include "tests/support/machine_fixture.h"

namespace {

using testing_support::OnMachine;

class ComTest : public OnMachine {
 protected:
  static HRESULT Create(REFCLSID class_id, REFIID iid, IUnknown** object, DWORD context = CLSCTX_INPROC_SERVER) {
    return CoCreateInstance(class_id, nullptr, context, iid, reinterpret_cast<void**>(object));
  }
  static HRESULT CreateLink() {
    IUnknown* object = nullptr;
    const HRESULT result = Create(CLSID_ShellLink, IID_IShellLinkW, &object);
    if (object) object->Release();
    return result;
  }
  // Runs on a thread of its own, for apartments belong to threads.
  template <class F>
  static void OnThread(F body) {
    std::thread(body).join();
  }
};

TEST_F(ComTest, AThreadWithoutApartmentMakesNoObjects) {
  Start();
  OnThread([] {
    EXPECT_EQ(CreateLink(), CO_E_NOTINITIALIZED);
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    EXPECT_EQ(CreateLink(), S_OK);
    CoUninitialize();
    EXPECT_EQ(CreateLink(), CO_E_NOTINITIALIZED);
  });
}

TEST_F(ComTest, ApartmentsAreCountedAndKeepTheirModel) {
  Start();
  OnThread([] {
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE), S_OK);
    EXPECT_EQ(CoInitialize(nullptr), S_FALSE);
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), RPC_E_CHANGED_MODE);
    CoUninitialize();
    EXPECT_EQ(CreateLink(), S_OK);
    CoUninitialize();
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    EXPECT_EQ(OleInitialize(nullptr), RPC_E_CHANGED_MODE);
    OnThread([] { EXPECT_EQ(CreateLink(), S_OK); });  // the multithreaded apartment serves every thread
    CoUninitialize();
    CoUninitialize();  // one too many is passed over
    EXPECT_EQ(CoInitializeEx(reinterpret_cast<void*>(1), 0), E_INVALIDARG);
  });
}

TEST_F(ComTest, OleCountsOnTopOfCom) {
  Start();
  OnThread([] {
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    EXPECT_EQ(OleInitialize(nullptr), S_OK);
    EXPECT_EQ(OleInitialize(nullptr), S_FALSE);
    OleUninitialize();
    OleUninitialize();
    OleUninitialize();  // not initialised any more: leaves COM alone
    EXPECT_EQ(CreateLink(), S_OK);
    CoUninitialize();
  });
}

TEST_F(ComTest, ClassesCanBeMissing) {
  Start(R"({"missing_classes": ["CLSID_ShellLink"], "version": "xp"})");
  CoInitialize(nullptr);
  IUnknown* object = nullptr;
  EXPECT_EQ(CreateLink(), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(Create(CLSID_TaskScheduler, IID_ITaskService, &object), REGDB_E_CLASSNOTREG);  // since Vista
  EXPECT_EQ(Create(GUID_NULL, IID_IUnknown, &object), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(object, nullptr);
  CoUninitialize();
}

TEST_F(ComTest, MakingCanFailAsPlannedOrAsAsked) {
  Start(R"({"faults": [{"operation": "CoCreateInstance", "subject": "ShellLink", "nth": 2, "error": 2147942405}]})");
  CoInitialize(nullptr);
  IUnknown* object = nullptr;
  EXPECT_EQ(CreateLink(), S_OK);
  EXPECT_EQ(CreateLink(), E_ACCESSDENIED);
  EXPECT_EQ(Create(CLSID_ShellLink, IID_ITaskService, &object), E_NOINTERFACE);
  EXPECT_EQ(Create(CLSID_ShellLink, IID_IUnknown, &object, CLSCTX_LOCAL_SERVER), REGDB_E_CLASSNOTREG);
  ASSERT_EQ(Create(CLSID_ShellLink, IID_IUnknown, &object), S_OK);
  void* inner = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_ShellLink, object, CLSCTX_ALL, IID_IUnknown, &inner), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(IUnknown_QueryService(object, SID_STopLevelBrowser, IID_IShellBrowser, &inner), E_NOINTERFACE);
  EXPECT_EQ(IUnknown_QueryService(nullptr, SID_STopLevelBrowser, IID_IShellBrowser, &inner), E_FAIL);
  EXPECT_EQ(object->Release(), 0u);
  CoUninitialize();
}

TEST_F(ComTest, IdentitiesOfOneObjectAgree) {
  Start();
  CoInitialize(nullptr);
  IUnknown *link = nullptr, *first = nullptr, *second = nullptr;
  IPersistFile* file = nullptr;
  ASSERT_EQ(Create(CLSID_ShellLink, IID_IShellLinkW, &link), S_OK);
  ASSERT_EQ(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file)), S_OK);
  link->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&first));
  file->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&second));
  EXPECT_EQ(first, second);
  for (IUnknown* each : {link, first, second}) each->Release();
  EXPECT_EQ(file->Release(), 0u);
  CoUninitialize();
}

TEST_F(ComTest, BstrsKnowTheirLength) {
  Start();
  const BSTR text = SysAllocStringLen(TEXT("a\0b"), 3);
  EXPECT_EQ(SysStringLen(text), 3u);
  EXPECT_EQ(SysStringByteLen(text), 6u);
  EXPECT_EQ(text[3], 0);
  SysFreeString(text);
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFF), nullptr);
  SysFreeString(nullptr);
}

TEST_F(ComTest, VariantsFreeWhatTheyOwn) {
  Start();
  VARIANT value;
  VariantInit(&value);
  EXPECT_EQ(value.vt, VT_EMPTY);
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocString(TEXT("freed"));
  EXPECT_EQ(VariantClear(&value), S_OK);
  EXPECT_EQ(value.vt, VT_EMPTY);
  value.vt = 99;
  EXPECT_EQ(VariantClear(&value), DISP_E_BADVARTYPE);
}

TEST_F(ComTest, GuidsAreWrittenInBraces) {
  WCHAR text[39];
  EXPECT_EQ(StringFromGUID2(CLSID_ShellLink, text, 39), 39);
  EXPECT_EQ(std::u16string(text), TEXT("{00021401-0000-0000-C000-000000000046}"));
  EXPECT_EQ(StringFromGUID2(CLSID_ShellLink, text, 38), 0);
}

}  // namespace
