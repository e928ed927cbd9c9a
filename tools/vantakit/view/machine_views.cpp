#include "tools/vantakit/view/machine_views.h"

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
#include "tools/vantakit/view/on_machine.h"

namespace vantakit {
namespace {

using Json = nlohmann::json;

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

}  // namespace

Json ProbesOsView(const Json& input) {
  const auto field = [&input](const char* name) { return input.at(name).get<DWORD>(); };
  return OsJson(vanta::ClassifyOs(field("platform"), field("major"), field("minor"), field("build")));
}

Json MachineProbesView(const Json& input) { return AnswerOn("machine.probes", input, ProbesHere); }

}  // namespace vantakit
