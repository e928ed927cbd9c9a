// Makes the folders that extracted files go into.
#pragma once

#include "base/text.h"

namespace vanta {

class FolderMaker {
 public:
  // Makes every missing level of an absolute path; a trailing separator is ignored. True: the folder is there.
  // The last folder is remembered and not looked at again until Forget.
  bool Ensure(StringView folder);
  bool Remembers(StringView folder) const;
  void Forget() { last_.clear(); }

 private:
  String last_;
};

}  // namespace vanta
