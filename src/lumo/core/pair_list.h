// The language of image and colour attributes: key='value' pairs, separated by blanks.
//
// Everything up to code 32 is a blank. A key holds no blanks, "=" and the quote follow it at once, and a value runs to
// the next single quote. Pairs with an empty value are passed over; reading ends at the first pair of another shape.
#pragma once

#include "lumo/core/types.h"

namespace lumo {

// The views point into the text that was given, which must outlive them.
class PairReader {
 public:
  explicit PairReader(StringView text) : rest_(text) {}

  // The next pair that has a value; false at the end, after which every further call says false too.
  bool Next(StringView* key, StringView* value);
  // What has not been read; after the last pair "", unless something of another shape stands there.
  StringView Rest() const { return rest_; }

 private:
  bool TakePair(StringView* key, StringView* value);

  StringView rest_;
  bool first_ = true;  // nothing need separate the first pair
  bool ended_ = false;
};

}  // namespace lumo
