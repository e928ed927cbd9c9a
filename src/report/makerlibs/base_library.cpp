#include "report/makerlibs/base_library.h"

#include "base/com_ptr.h"
#include "base/lock.h"
#include "report/makerlibs/export_tables.h"
#include "report/makerlibs/public_library.h"
#include "report/makerlibs/trust_object.h"

namespace vanta {
namespace {

constexpr WCHAR kBaseLibrary[] = TEXT("VantaBase.dll");
constexpr DWORD kLastTableWithoutDirectEntry = 10;

using BaseLibrary = CVantaPublicDLLHelper<CVantaBaseExportFuncs>;
constinit Lazy<BaseLibrary> g_base_library;

DWORD Property(IVantaFileTrust* object, DWORD number) {
  DWORD value = 0;
  return SUCCEEDED(object->GetProperty(number, &value)) ? value : 0;
}

LONG LevelByObject(CreateObjectCall create_object, const String& path) {
  ComPtr<IVantaFileTrust> object;
  if (!create_object || FAILED(create_object(kTrustObjectId, object.PutVoid())) || !object) return TrustUndecided;
  if (FAILED(object->Open(path.c_str(), 0))) return TrustUndecided;
  const DWORD property4 = Property(object.Get(), 4);
  const DWORD property5 = Property(object.Get(), 5);
  const DWORD property3 = Property(object.Get(), 3);
  return TrustLevelOf(property4, property5, property3);
}

}  // namespace

LONG TrustLevelOf(DWORD property4, DWORD property5, DWORD property3) {
  const DWORD maker = property4 >> 12 & 0xF;
  if (maker == 2 || maker == 3) return TrustMaker;
  if ((property5 >> 16 & 0xF) == 3) return TrustReporter;
  if ((property3 >> 8 & 0xF) == 3) return TrustRefused;
  return TrustUndecided;
}

bool LoadBaseLibrary() { return g_base_library.Get().Load(kBaseLibrary); }

bool GetFileTrustLevel(const String& path, LONG* level) {
  *level = TrustUndecided;
  BaseLibrary& library = g_base_library.Get();
  if (!library.Load(kBaseLibrary)) return false;
  const CVantaBaseExportFuncs& exports = library.exports();
  if (exports.version > kLastTableWithoutDirectEntry && exports.file_trust_level) {
    LONG answer = TrustUndecided;
    if (exports.file_trust_level(path.c_str(), &answer)) *level = answer;
  } else {
    *level = LevelByObject(library.create_object(), path);
  }
  return *level != TrustUndecided;
}

}  // namespace vanta
