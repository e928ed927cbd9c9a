#include "tools/vantakit/view/machine_views.h"

#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "base/format.h"
#include "install/directories.h"
#include "install/product.h"
#include "install/product_config.h"
#include "install/version.h"
#include "report/makerlibs/file_signature.h"
#include "report/makerlibs/maker_files.h"
#include "report/probes/browser.h"
#include "report/probes/internet_cafe.h"
#include "report/probes/os_version.h"
#include "report/probes/security_software.h"
#include "report/probes/suite.h"
#include "tools/vantakit/view/json_text.h"
#include "winhost/machine/machine.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

Json OsJson(const vanta::OsRecord& os) {
  return {{"name", vanta::ToUtf8(os.name)},
          {"code", os.code},
          {"sysver", vanta::ToUtf8(vanta::Format(TEXT("%d.%d.%d"), os.major, os.minor, os.build))},
          {"atLeastVista", vanta::OsCodeAtLeast(os.code, vanta::OsVista)},
          {"atLeast7", vanta::OsCodeAtLeast(os.code, vanta::Os7)},
          {"isXP", os.code == vanta::OsXp}};
}

Json Trust(const vanta::String& path) {
  const vanta::SignatureResult signature = vanta::CheckFileSignature(path);
  return {{"path", vanta::ToUtf8(path)},
          {"status", signature.status},
          {"level", signature.level},
          {"accepted", signature.Accepted()}};
}

Json TrustOfMakerFiles() {
  Json files = Json::object();
  for (const WCHAR* name :
       {vanta::kSiblingProgram, vanta::kViewerProgram, vanta::kUpdaterProgram, vanta::kUninstaller}) {
    files[vanta::ToUtf8(name)] = Trust(vanta::InstalledFile(name));
  }
  for (const WCHAR* name : {TEXT("VantaBase.dll"), TEXT("vantanetbase.dll"), TEXT("CrashReport.dll")}) {
    files[vanta::ToUtf8(name)] = Trust(vanta::FindMakerFile(name));
  }
  return files;
}

Json ProbesHere() {
  const vanta::OsRecord& os = vanta::GetOsVersion();
  Json answer = OsJson(os);
  answer["productType"] = os.product_type;
  vanta::ResolveInstallDirectory();
  return {{"os", std::move(answer)},
          {"is64Bit", vanta::Is64BitOs()},
          {"security", vanta::ToUtf8(vanta::BuildSecuritySoftwareList())},
          {"internetCafe", vanta::IsInternetCafe()},
          {"suiteDirectory", vanta::ToUtf8(vanta::GetSuiteDirectory(nullptr))},
          {"suiteInstalled", vanta::IsSuiteInstalled()},
          {"browser", static_cast<int>(vanta::DetectBrowser())},
          {"installDirectory", vanta::ToUtf8(vanta::GetInstallDirectory())},
          {"installedVersion", vanta::ToUtf8(vanta::ReadInstalledVersion())},
          {"isInstalled", vanta::IsInstalled()},
          {"isLowerSetup", vanta::isLowerSetup()},
          {"trust", TrustOfMakerFiles()}};
}

struct Pipe {
  int ends[2] = {-1, -1};
  Pipe() {
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  }
  ~Pipe() {
    Close(0);
    Close(1);
  }
  void Close(int end) {
    if (ends[end] >= 0) close(ends[end]);
    ends[end] = -1;
  }
};

// Sends one request to a view process that lives on the machine; its answer line.
std::string AskOn(const fs::path& machine, const std::string& request) {
  Pipe to, from;
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    dup2(to.ends[0], STDIN_FILENO);
    dup2(from.ends[1], STDOUT_FILENO);
    for (Pipe* pipe : {&to, &from}) {
      pipe->Close(0);
      pipe->Close(1);
    }
    setenv("VANTA_MACHINE", machine.c_str(), 1);
    unsetenv("VANTA_IMAGE");
    execl("/proc/self/exe", "vantakit", "view", "--here", static_cast<char*>(nullptr));
    _exit(127);
  }
  to.Close(0);
  from.Close(1);
  [[maybe_unused]] const ssize_t written = write(to.ends[1], request.data(), request.size());
  to.Close(1);
  std::string answer;
  char buffer[4096];
  for (ssize_t got; (got = read(from.ends[0], buffer, sizeof buffer)) > 0;)
    answer.append(buffer, static_cast<size_t>(got));
  waitpid(child, nullptr, 0);
  return answer;
}

}  // namespace

Json ProbesOsView(const Json& input) {
  const auto field = [&input](const char* name) { return input.at(name).get<DWORD>(); };
  return OsJson(vanta::ClassifyOs(field("platform"), field("major"), field("minor"), field("build")));
}

Json MachineProbesView(const Json& input) {
  const fs::path machine = input.at("machine").get<std::string>();
  std::error_code error;
  if (!fs::is_directory(machine / "C", error)) throw std::runtime_error(machine.string() + " is no machine folder");
  if (fs::equivalent(machine, winhost::Machine::Current().folder(), error)) return ProbesHere();
  const Json request = {{"op", "machine.probes"}, {"input", {{"machine", fs::absolute(machine).string()}}}};
  const Json answer = Json::parse(AskOn(fs::absolute(machine), request.dump() + "\n"));
  if (answer.contains("error")) throw std::runtime_error(answer["error"].get<std::string>());
  return answer.at("output");
}

}  // namespace vantakit
