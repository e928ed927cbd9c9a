// Identifier 2: when the cached value is used, when the machine is asked, and what is stored.
#pragma once

#include <optional>

#include "base/text.h"
#include "report/identity/mid2_form.h"
#include "report/makerlibs/self_protection.h"

namespace vanta {

// What the rules ask and change.
class Mid2Surroundings {
 public:
  // The stored "m2", empty for none.
  virtual String ReadCached() = 0;
  // A system that knows no elevation counts as elevated.
  virtual bool IsElevated() = 0;
  virtual SelfProtection AskProtection() = 0;
  virtual std::string Processor() = 0;
  // Asks the machine for the address and the disk where `hardware` lacks them.
  virtual void Collect(Mid2Hardware* hardware) = 0;
  // Lets half a second pass.
  virtual void Wait() = 0;
  virtual std::optional<GUID> RandomValue() = 0;
  // Stores a text as "m2" or "m2_old". Best effort.
  virtual void Write(const WCHAR* name, const String& text) = 0;

 protected:
  ~Mid2Surroundings() = default;
};

// 44 characters.
std::string Identifier2(Mid2Surroundings& surroundings);

}  // namespace vanta
