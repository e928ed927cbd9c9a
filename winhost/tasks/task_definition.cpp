#include "winhost/tasks/task_definition.h"

#include <algorithm>
#include <cstdio>

#include "winhost/machine/machine.h"
#include "winhost/machine/text.h"

namespace winhost {
namespace {

constexpr std::uint64_t kMinute = 60, kHour = 3600, kDay = 86400;

bool EatDigits(std::u16string_view& rest, std::size_t count, int* value) {
  if (rest.size() < count) return false;
  *value = 0;
  for (char16_t c : rest.substr(0, count)) {
    if (c < u'0' || c > u'9') return false;
    *value = *value * 10 + (c - u'0');
  }
  rest.remove_prefix(count);
  return true;
}

bool Eat(std::u16string_view& rest, char16_t wanted) {
  if (rest.empty() || rest[0] != wanted) return false;
  rest.remove_prefix(1);
  return true;
}

int DaysIn(int year, int month) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return month == 2 && leap ? 29 : kDays[month - 1];
}

bool EatZone(std::u16string_view& rest) {
  if (Eat(rest, u'Z')) return true;
  int hours, minutes;
  if (!Eat(rest, u'+') && !Eat(rest, u'-')) return false;
  return EatDigits(rest, 2, &hours) && Eat(rest, u':') && EatDigits(rest, 2, &minutes) && hours <= 14 && minutes < 60;
}

HRESULT CheckTrigger(const TaskTrigger& trigger) {
  if (trigger.start_boundary.empty()) return SCHED_E_MISSINGNODE;
  if (!IsBoundary(trigger.start_boundary)) return SCHED_E_INVALIDVALUE;
  if (!trigger.end_boundary.empty() && !IsBoundary(trigger.end_boundary)) return SCHED_E_INVALIDVALUE;
  for (const auto* text : {&trigger.execution_time_limit, &trigger.random_delay}) {
    if (!text->empty() && !DurationSeconds(*text)) return SCHED_E_INVALIDVALUE;
  }
  if (trigger.interval.empty()) return trigger.duration.empty() ? S_OK : SCHED_E_MISSINGNODE;
  const auto interval = DurationSeconds(trigger.interval);
  if (!interval || *interval < kMinute || *interval > 31 * kDay) return SCHED_E_INVALIDVALUE;
  if (trigger.duration.empty()) return S_OK;
  const auto duration = DurationSeconds(trigger.duration);
  return duration && *duration > *interval ? S_OK : SCHED_E_INVALIDVALUE;
}

HRESULT CheckAccount(const std::u16string& name) {
  return name.empty() || AccountExists(name) ? S_OK : HRESULT_FROM_WIN32(ERROR_NONE_MAPPED);
}

}  // namespace

TaskDefinition::TaskDefinition(const TaskDefinition& other)
    : description(other.description),
      author(other.author),
      version(other.version),
      date(other.date),
      documentation(other.documentation),
      uri(other.uri),
      source(other.source),
      action_context(other.action_context),
      principal_id(other.principal_id),
      display_name(other.display_name),
      user_id(other.user_id),
      group_id(other.group_id),
      logon_type(other.logon_type),
      run_level(other.run_level),
      settings(other.settings) {
  for (const auto& trigger : other.triggers) triggers.push_back(std::make_shared<TaskTrigger>(*trigger));
  for (const auto& action : other.actions) actions.push_back(std::make_shared<TaskAction>(*action));
}

bool IsBoundary(std::u16string_view text) {
  int year, month, day, hour, minute, second;
  if (!EatDigits(text, 4, &year) || !Eat(text, u'-') || !EatDigits(text, 2, &month) || !Eat(text, u'-')) return false;
  if (!EatDigits(text, 2, &day) || !Eat(text, u'T') || !EatDigits(text, 2, &hour) || !Eat(text, u':')) return false;
  if (!EatDigits(text, 2, &minute) || !Eat(text, u':') || !EatDigits(text, 2, &second)) return false;
  if (year < 1 || month < 1 || month > 12 || day < 1 || day > DaysIn(year, month)) return false;
  if (hour > 23 || minute > 59 || second > 59) return false;
  if (Eat(text, u'.')) {
    int digit;
    if (!EatDigits(text, 1, &digit)) return false;
    while (EatDigits(text, 1, &digit)) {
    }
  }
  return text.empty() || (EatZone(text) && text.empty());
}

std::optional<std::uint64_t> DurationSeconds(std::u16string_view text) {
  struct Unit {
    char16_t letter;
    bool after_t;
    std::uint64_t seconds;
  };
  constexpr Unit kUnits[] = {{u'Y', false, 365 * kDay}, {u'M', false, 30 * kDay}, {u'D', false, kDay},
                             {u'H', true, kHour},       {u'M', true, kMinute},    {u'S', true, 1}};
  if (!Eat(text, u'P') || text.empty()) return std::nullopt;
  std::uint64_t total = 0;
  const Unit* next = kUnits;
  bool after_t = false;
  while (!text.empty()) {
    if (!after_t && Eat(text, u'T')) {
      after_t = true;
      if (text.empty()) return std::nullopt;
      continue;
    }
    std::uint64_t number = 0;
    const std::size_t digits = std::min(text.find_first_not_of(u"0123456789"), text.size());
    if (digits == 0 || digits > 9 || digits == text.size()) return std::nullopt;
    for (char16_t c : text.substr(0, digits)) number = number * 10 + static_cast<std::uint64_t>(c - u'0');
    const char16_t letter = text[digits];
    next =
        std::find_if(next, std::end(kUnits), [&](const Unit& u) { return u.letter == letter && u.after_t == after_t; });
    if (next == std::end(kUnits)) return std::nullopt;
    total += number * next++->seconds;
    text.remove_prefix(digits + 1);
  }
  return total;
}

bool AccountExists(std::u16string_view name) {
  constexpr std::u16string_view kBuiltIn[] = {
      u"Administrators", u"Users",           u"Guests",       u"SYSTEM",
      u"LOCAL SERVICE",  u"NETWORK SERVICE", u"INTERACTIVE",  u"Authenticated Users",
      u"Everyone",       u"LocalSystem",     u"LocalService", u"NetworkService"};
  const Facts& facts = Machine::Current().facts();
  if (name.starts_with(u"S-1-")) return name.find_first_not_of(u"0123456789-", 4) == name.npos;
  if (const std::size_t slash = name.find(u'\\'); slash != name.npos) {
    const std::u16string_view domain = name.substr(0, slash);
    const auto is = [&](std::u16string_view known) { return EqualNoCase(domain, known); };
    if (!is(u"BUILTIN") && !is(u"NT AUTHORITY") && !is(u".") && !is(Wide(facts.computer))) return false;
    name.remove_prefix(slash + 1);
  }
  return EqualNoCase(name, Wide(facts.user)) ||
         std::ranges::any_of(kBuiltIn, [&](std::u16string_view known) { return EqualNoCase(name, known); });
}

HRESULT CheckDefinition(const TaskDefinition& definition) {
  if (definition.actions.empty()) return SCHED_E_MISSINGNODE;
  for (const auto& action : definition.actions) {
    if (action->path.empty()) return SCHED_E_MISSINGNODE;
  }
  for (const auto& trigger : definition.triggers) {
    if (const HRESULT checked = CheckTrigger(*trigger); FAILED(checked)) return checked;
  }
  const TaskSettings& settings = definition.settings;
  if (!settings.execution_time_limit.empty() && !DurationSeconds(settings.execution_time_limit)) {
    return SCHED_E_INVALIDVALUE;
  }
  if (settings.priority < 0 || settings.priority > 10) return SCHED_E_INVALIDVALUE;
  if (const HRESULT checked = CheckAccount(definition.user_id); FAILED(checked)) return checked;
  return CheckAccount(definition.group_id);
}

}  // namespace winhost
