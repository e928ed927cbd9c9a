#include "app/option_store.h"

#include "base/lock.h"

namespace vanta {
namespace {

constinit Lazy<OptionStore> process_store;

}  // namespace

bool OptionStore::Has(StringView name) const { return values_.find(name) != values_.end(); }

bool OptionStore::Has(StringView name, const String& value) const {
  const auto found = values_.find(name);
  return found != values_.end() && (value.empty() || EqualNoCase(found->second, value));
}

String OptionStore::Get(StringView name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? String() : found->second;
}

void OptionStore::Set(StringView name, const String& value) { values_.emplace(name, value); }

void OptionStore::Replace(StringView name, const String& value) { values_.insert_or_assign(String(name), value); }

void OptionStore::Remove(StringView name) {
  if (const auto found = values_.find(name); found != values_.end()) values_.erase(found);
}

OptionStore& GetOptionStore() { return process_store.Get(); }

bool HasOption(StringView name) { return GetOptionStore().Has(name); }
bool HasOption(StringView name, const String& value) { return GetOptionStore().Has(name, value); }
String GetOption(StringView name) { return GetOptionStore().Get(name); }
void SetOption(StringView name, const String& value) { GetOptionStore().Set(name, value); }
void RemoveOption(StringView name) { GetOptionStore().Remove(name); }

bool IsSilent() { return HasOption(TEXT("silent")); }
bool IsAuto() { return HasOption(TEXT("auto")); }
bool IsAssoc() { return HasOption(TEXT("assoc")); }

}  // namespace vanta
