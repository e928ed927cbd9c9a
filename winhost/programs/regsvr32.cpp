// regsvr32.exe: loads each library named and calls its registration entry point.
//
//   regsvr32 [/u] [/s] library …       /u unregister, /s silent; other switches are passed over
//
// Exit code: 0, or that of the first library that failed: 1 wrong arguments, 3 the library cannot be loaded, 4 it has
// no such entry point, 5 the entry point failed. OLE is initialised for the libraries, whose result goes to the
// debugger's output as the message box would say it.
#include <windows.h>
#include <ole2.h>
#include <shellapi.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Text = std::basic_string<WCHAR>;
using RegistrationEntry = HRESULT(WINAPI*)();

enum ExitCode { kDone = 0, kBadArguments = 1, kOleFailed = 2, kLoadFailed = 3, kNoEntryPoint = 4, kCallFailed = 5 };

struct Options {
  bool unregister = false;
  std::vector<Text> libraries;
};

bool IsSwitch(std::basic_string_view<WCHAR> word) { return word.size() > 1 && (word[0] == '/' || word[0] == '-'); }

Options ReadOptions() {
  Options options;
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; words && i < count; ++i) {
    const Text word = words[i];
    if (!IsSwitch(word)) {
      options.libraries.push_back(word);
    } else if (word[1] == 'u' || word[1] == 'U') {
      options.unregister = true;
    }
  }
  LocalFree(words);
  return options;
}

int Say(const Text& what, const Text& library, ExitCode code) {
  OutputDebugStringW((TEXT("regsvr32: ") + what + TEXT(" ") + library).c_str());
  return code;
}

int Register(const Text& library, bool unregister) {
  const HMODULE module = LoadLibraryExW(library.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (!module) return Say(TEXT("cannot load"), library, kLoadFailed);
  const char* const name = unregister ? "DllUnregisterServer" : "DllRegisterServer";
  const auto entry = reinterpret_cast<RegistrationEntry>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
  const HRESULT result = entry ? entry() : E_FAIL;
  FreeLibrary(module);
  if (!entry) return Say(TEXT("no entry point in"), library, kNoEntryPoint);
  if (FAILED(result)) return Say(TEXT("the entry point failed in"), library, kCallFailed);
  return Say(unregister ? TEXT("unregistered") : TEXT("registered"), library, kDone);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  const Options options = ReadOptions();
  if (options.libraries.empty()) return Say(TEXT("no library given"), Text(), kBadArguments);
  if (FAILED(OleInitialize(nullptr))) return kOleFailed;
  int code = kDone;
  for (const Text& library : options.libraries) {
    const int result = Register(library, options.unregister);
    if (code == kDone) code = result;
  }
  OleUninitialize();
  return code;
}
