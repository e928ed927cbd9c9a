#include "lumo/core/markup_finder.h"

#include <string.h>

namespace lumo {

void UnitFinder::TakeBlockOf(const WCHAR* at) {
  // Mostly the next block, whose place does not wait for where the last search ended.
  Take(static_cast<size_t>(at - block_) < 2 * kMarkedUnits ? block_ + kMarkedUnits : at);
}

void UnitFinder::Take(const WCHAR* block) {
  block_ = block;
  const auto left = static_cast<size_t>(end_ - block);
  if (left >= kMarkedUnits) {
    marks_ = MarkUnits(block);
    return;
  }
  WCHAR rest[kMarkedUnits] = {};
  memcpy(rest, block, left * sizeof(WCHAR));
  marks_ = MarkUnits(rest);
  const ULONGLONG end = ULONGLONG{1} << left;
  marks_.words = (marks_.words & (end - 1)) | end;
  marks_.values = (marks_.values & (end - 1)) | end;
}

}  // namespace lumo
