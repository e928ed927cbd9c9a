#include "lumo/core/markup_marks.h"

#include <emmintrin.h>

namespace lumo {
namespace {

constexpr size_t kRow = 16;

// Sixteen units as bytes; units that are not bytes become 0 or 0xFF.
inline __m128i BytesOf(const WCHAR* units) {
  const auto* const halves = reinterpret_cast<const __m128i*>(units);
  return _mm_packus_epi16(_mm_loadu_si128(halves), _mm_loadu_si128(halves + 1));
}

inline __m128i Equal(__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }

inline ULONGLONG BitsOf(__m128i found) { return static_cast<unsigned>(_mm_movemask_epi8(found)); }

inline UnitMarks MarkRow(const WCHAR* units) {
  const __m128i c = BytesOf(units);
  const __m128i blank = _mm_cmpeq_epi8(_mm_min_epu8(c, _mm_set1_epi8(' ')), c);
  const __m128i words = _mm_or_si128(_mm_or_si128(blank, Equal(c, '/')), _mm_or_si128(Equal(c, '>'), Equal(c, '=')));
  const __m128i values = _mm_or_si128(_mm_or_si128(Equal(c, '"'), Equal(c, '&')), Equal(c, '<'));
  return {BitsOf(words), BitsOf(values)};
}

}  // namespace

UnitMarks MarkUnits(const WCHAR* units) {
  const UnitMarks first = MarkRow(units), second = MarkRow(units + kRow);
  const UnitMarks third = MarkRow(units + 2 * kRow), fourth = MarkRow(units + 3 * kRow);
  return {first.words | second.words << kRow | third.words << 2 * kRow | fourth.words << 3 * kRow,
          first.values | second.values << kRow | third.values << 2 * kRow | fourth.values << 3 * kRow};
}

}  // namespace lumo
