#include "winhost/gdi/text_font.h"

#include <hb.h>

#include <map>
#include <mutex>

#include "winhost/gdi/text_engine.h"

namespace winhost {
namespace {

// One table of a font file.
class FontTable {
 public:
  FontTable(hb_face_t* face, hb_tag_t tag) : blob_(hb_face_reference_table(face, tag)) {
    bytes_ = reinterpret_cast<const unsigned char*>(hb_blob_get_data(blob_, &size_));
  }
  FontTable(const FontTable&) = delete;
  FontTable& operator=(const FontTable&) = delete;
  ~FontTable() { hb_blob_destroy(blob_); }

  bool Has(unsigned bytes) const { return size_ >= bytes; }
  int Unsigned(unsigned at) const { return Has(at + 2) ? bytes_[at] << 8 | bytes_[at + 1] : 0; }
  int Signed(unsigned at) const { return static_cast<std::int16_t>(Unsigned(at)); }

 private:
  hb_blob_t* blob_;
  const unsigned char* bytes_;
  unsigned size_ = 0;
};

// OS/2: 2 average width, 74 and 76 the cell's ascent and descent; hhea: 4 ascender, 6 descender, 8 line gap.
FaceMetrics ReadMetrics(hb_face_t* face) {
  const FontTable os2(face, HB_TAG('O', 'S', '/', '2')), hhea(face, HB_TAG('h', 'h', 'e', 'a'));
  const double em = hb_face_get_upem(face);
  const bool has_cell = os2.Has(78);
  const int ascent = has_cell ? os2.Unsigned(74) : hhea.Signed(4);
  const int descent = has_cell ? os2.Unsigned(76) : -hhea.Signed(6);
  const int gap = hhea.Signed(8) - (ascent + descent - (hhea.Signed(4) - hhea.Signed(6)));
  if (em <= 0 || ascent + descent <= 0) return {};
  return {ascent / em, descent / em, gap > 0 ? gap / em : 0, os2.Signed(2) / em};
}

FaceMetrics Measure(const std::string& family) {
  PangoFontDescription* description = DescribeFont({.family = family, .em = 16});
  const std::unique_ptr<PangoFont, GObjectReleased> font(
      pango_context_load_font(TextContext(GlyphPlaces::Fractions), description));
  pango_font_description_free(description);
  hb_font_t* shaped = font ? pango_font_get_hb_font(font.get()) : nullptr;
  const FaceMetrics metrics = shaped ? ReadMetrics(hb_font_get_face(shaped)) : FaceMetrics{};
  constexpr FaceMetrics kNoFont{0.9, 0.25, 0, 0.5};
  return metrics.ascent > 0 ? metrics : kNoFont;
}

}  // namespace

const FaceMetrics& MetricsOf(const std::string& family) {
  static std::mutex lock;
  static auto* faces = new std::map<std::string, FaceMetrics>;
  std::scoped_lock guard(lock);
  const auto found = faces->find(family);
  return found != faces->end() ? found->second : faces->emplace(family, Measure(family)).first->second;
}

}  // namespace winhost
