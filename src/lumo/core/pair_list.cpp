#include "lumo/core/pair_list.h"

namespace lumo {
namespace {

constexpr bool IsBlank(WCHAR c) { return c <= 32; }

}  // namespace

bool PairReader::Next(StringView* key, StringView* value) {
  do {
    ended_ = ended_ || !TakePair(key, value);
    if (ended_) return false;
  } while (value->empty());
  return true;
}

bool PairReader::TakePair(StringView* key, StringView* value) {
  const bool separated = rest_.empty() || first_ || IsBlank(rest_.front());
  if (!separated) return false;
  first_ = false;
  while (!rest_.empty() && IsBlank(rest_.front())) rest_.remove_prefix(1);
  size_t end = 0;
  while (end < rest_.size() && rest_[end] != '=' && !IsBlank(rest_[end])) ++end;
  if (end == 0 || !rest_.substr(end).starts_with(TEXT("='"))) return false;
  const size_t quote = rest_.find('\'', end + 2);
  if (quote == StringView::npos) return false;
  *key = rest_.substr(0, end);
  *value = rest_.substr(end + 2, quote - end - 2);
  rest_.remove_prefix(quote + 1);
  return true;
}

}  // namespace lumo
