// Identifier 2 on the machine that runs.
#pragma once

#include "report/identity/mid2_rules.h"

namespace vanta {

class Mid2Machine : public Mid2Surroundings {
 public:
  virtual ~Mid2Machine() = default;

  String ReadCached() override;
  bool IsElevated() override;
  SelfProtection AskProtection() override;
  std::string Processor() override;
  void Collect(Mid2Hardware* hardware) override;
  void Wait() override;
  std::optional<GUID> RandomValue() override;
  void Write(const WCHAR* name, const String& text) override;
};

}  // namespace vanta
