#include "tools/vantakit/view/app_views.h"
#include "tools/vantakit/view/install_views.h"
#include "tools/vantakit/view/machine_views.h"
#include "tools/vantakit/view/skin_views.h"
#include "tools/vantakit/view/views.h"
#include "tools/vantakit/view/zip_views.h"

namespace vantakit {

std::span<const View> Views() {
  static constexpr View kViews[] = {
      {"cmdline.parse", CmdlineParseView},
      {"cmdline.channel", CmdlineChannelView},
      {"cmdline.store", CmdlineStoreView},
      {"version.compare", VersionCompareView},
      {"zip.archive", ZipArchiveView},
      {"zip.times", ZipTimesView},
      {"zip.attributes", ZipAttributesView},
      {"zip.sanitise", ZipSanitiseView},
      {"skin.normalise", SkinNormaliseView},
      {"skin.lookup", SkinLookupView},
      {"skin.table", SkinTableView},
      {"task.firstStart", TaskFirstStartView},
      {"log.line", LogLineView},
      {"probes.os", ProbesOsView},
      {"registry.string", RegistryStringView},
      {"machine.probes", MachineProbesView},
  };
  return kViews;
}

}  // namespace vantakit
