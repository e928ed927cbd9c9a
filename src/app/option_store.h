// The options of this start: names from the option table to values, ordered by name, compared exactly.
//
// Filled once from the command line; later only the setup window edits it, before an installation starts. The lookups
// are free functions over the process's one store; OptionStore itself is plain data for tests and tools.
#pragma once

#include "base/text.h"

#include <map>

namespace vanta {

class OptionStore {
 public:
  bool Has(StringView name) const;
  // An empty `value` asks for presence only; another is compared without regard to case.
  bool Has(StringView name, const String& value) const;
  // The value; "" when the option is absent.
  String Get(StringView name) const;
  // Leaves an existing value unchanged.
  void Set(StringView name, const String& value);
  // Puts the value in place of an earlier one.
  void Replace(StringView name, const String& value);
  void Remove(StringView name);

  const std::map<String, String, std::less<>>& all() const { return values_; }

 private:
  std::map<String, String, std::less<>> values_;
};

OptionStore& GetOptionStore();

bool HasOption(StringView name);
bool HasOption(StringView name, const String& value);
String GetOption(StringView name);
void SetOption(StringView name, const String& value);
void RemoveOption(StringView name);

bool IsSilent();
bool IsAuto();
bool IsAssoc();

}  // namespace vanta
