#include "tools/vantakit/view/app_views.h"
#include "tools/vantakit/view/control_views.h"
#include "tools/vantakit/view/globals_views.h"
#include "tools/vantakit/view/identity_views.h"
#include "tools/vantakit/view/image_views.h"
#include "tools/vantakit/view/install_views.h"
#include "tools/vantakit/view/machine_views.h"
#include "tools/vantakit/view/markup_views.h"
#include "tools/vantakit/view/skin_views.h"
#include "tools/vantakit/view/stats_views.h"
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
      {"identity.hash", IdentityHashView},
      {"identity.crc8", IdentityCrc8View},
      {"identity.mid", IdentityMidView},
      {"identity.m2", IdentityM2View},
      {"machine.identity", MachineIdentityView},
      {"stats.url", StatsUrlView},
      {"stats.upgrade", StatsUpgradeView},
      {"stats.retry", StatsRetryView},
      {"markup.load", MarkupLoadView},
      {"markup.navigate", MarkupNavigateView},
      {"globals.hash", GlobalsHashView},
      {"globals.load", GlobalsLoadView},
      {"globals.attributeList", GlobalsAttributeListView},
      {"globals.colorSpec", GlobalsColorSpecView},
      {"layout.rects", LayoutRectsView},
      {"window.hit", WindowHitView},
      {"text.style", TextStyleView},
      {"text.stateColor", TextStateColorView},
      {"progress.fill", ProgressFillView},
      {"events.options", EventsOptionsView},
      {"image.parse", ImageParseView},
      {"image.scaleFile", ImageScaleFileView},
      {"image.cells", ImageCellsView},
      {"image.svg", ImageSvgView},
  };
  return kViews;
}

}  // namespace vantakit
