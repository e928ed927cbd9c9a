#include "lumo/core/markup_marks_plain.h"

namespace lumo {

UnitMarks MarkUnits(const WCHAR* units) { return MarkUnitsPlainly(units); }

}  // namespace lumo
