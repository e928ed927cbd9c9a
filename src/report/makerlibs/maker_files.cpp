#include "report/makerlibs/maker_files.h"

#include "base/paths.h"
#include "report/probes/suite.h"

namespace vanta {

String FindMakerFile(StringView name) {
  const String own_directory = ModuleDirectory();
  const String beside = JoinPath(own_directory, name);
  if (FileExists(beside)) return beside;
  const String above = JoinPath(own_directory, String(TEXT("..\\")).append(name));
  if (FileExists(above)) return above;
  return GetSuiteDirectory(String(name).c_str());
}

}  // namespace vanta
