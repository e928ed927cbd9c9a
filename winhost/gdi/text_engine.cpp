#include "winhost/gdi/text_engine.h"

#include "winhost/gdi/object_table.h"

// What the text libraries keep for the process is no leak. It cannot be given back either: Pango looks fonts up on a
// thread of its own, which may still run when the process ends, and FcFini then ends the process with an assertion.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libpango\nleak:libcairo\nleak:libglib\nleak:libgobject\nleak:libharfbuzz\n";
}

namespace winhost {
namespace {

struct ObjectsAtExit {
  ~ObjectsAtExit() { RemoveAllObjects(); }
};

PangoContext* MakeContext(PangoFontMap* map, GlyphPlaces places) {
  const bool whole = places == GlyphPlaces::WholePixels;
  PangoContext* context = pango_font_map_create_context(map);
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, whole ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
  pango_context_set_round_glyph_positions(context, whole);
  pango_context_set_language(context, pango_language_from_string("zh-cn"));
  pango_context_set_base_dir(context, PANGO_DIRECTION_LTR);
  return context;
}

struct ThreadEngine {
  ThreadEngine() {
    static const ObjectsAtExit at_exit;
    map.reset(pango_cairo_font_map_new());
    whole.reset(MakeContext(map.get(), GlyphPlaces::WholePixels));
    fractions.reset(MakeContext(map.get(), GlyphPlaces::Fractions));
  }

  std::unique_ptr<PangoFontMap, GObjectReleased> map;
  std::unique_ptr<PangoContext, GObjectReleased> whole;
  std::unique_ptr<PangoContext, GObjectReleased> fractions;
};

}  // namespace

PangoContext* TextContext(GlyphPlaces places) {
  thread_local ThreadEngine engine;
  return (places == GlyphPlaces::WholePixels ? engine.whole : engine.fractions).get();
}

PangoFontDescription* DescribeFont(const TextFont& font) {
  PangoFontDescription* description = pango_font_description_new();
  pango_font_description_set_family(description, font.family.c_str());
  pango_font_description_set_absolute_size(description, font.em * PANGO_SCALE);
  pango_font_description_set_weight(description, font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(description, font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  return description;
}

}  // namespace winhost
