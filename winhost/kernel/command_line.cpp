#include "winhost/kernel/command_line.h"

#include <algorithm>

namespace winhost {
namespace {

constexpr std::u16string_view kBlanks = u" \t";
constexpr auto kEnd = std::u16string_view::npos;

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }

std::size_t EatRun(std::u16string_view& rest, char16_t c) {
  const std::size_t length = std::min(rest.find_first_not_of(c), rest.size());
  rest.remove_prefix(length);
  return length;
}

void EatBlanks(std::u16string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

// A program's name knows no escapes: quoted it ends at the next quotation mark, else at a blank.
std::u16string_view EatProgramName(std::u16string_view& rest) {
  const bool quoted = rest.starts_with(u'"');
  if (quoted) rest.remove_prefix(1);
  const std::size_t length = quoted ? rest.find(u'"') : rest.find_first_of(kBlanks);
  const std::u16string_view name = rest.substr(0, length);
  rest.remove_prefix(length == kEnd ? rest.size() : length + (quoted ? 1 : 0));
  return name;
}

// A run of quotation marks, counted together with the one that opened the quoting: every third is a literal one and
// ends it, what is left over opens it (one) or opens and closes it (two).
bool EatQuotes(std::u16string_view& rest, bool quoted, std::u16string& word) {
  const std::size_t marks = EatRun(rest, u'"') + (quoted ? 1 : 0);
  word.append(marks / 3, u'"');
  return marks % 3 == 1;
}

std::u16string EatArgument(std::u16string_view& rest) {
  std::u16string word;
  bool quoted = false;
  while (!rest.empty() && (quoted || !IsBlank(rest[0]))) {
    const std::size_t backslashes = EatRun(rest, u'\\');
    if (!rest.starts_with(u'"')) {
      word.append(backslashes, u'\\');
      if (backslashes) continue;
      word += rest[0];
      rest.remove_prefix(1);
      continue;
    }
    word.append(backslashes / 2, u'\\');
    if (backslashes % 2) {
      word += u'"';
      rest.remove_prefix(1);
      if (!rest.starts_with(u'"')) continue;
    }
    quoted = EatQuotes(rest, quoted, word);
  }
  return word;
}

bool NeedsQuotes(std::u16string_view word) { return word.empty() || word.find_first_of(u" \t\"") != kEnd; }

std::u16string Quote(std::u16string_view word) {
  if (!NeedsQuotes(word)) return std::u16string(word);
  std::u16string quoted = u"\"";
  while (!word.empty()) {
    const std::size_t backslashes = EatRun(word, u'\\');
    const bool before_mark = word.empty() || word[0] == u'"';  // the closing one counts
    quoted.append(before_mark ? 2 * backslashes : backslashes, u'\\');
    if (word.empty()) break;
    if (word[0] == u'"') quoted += u'\\';
    quoted += word[0];
    word.remove_prefix(1);
  }
  return quoted + u'"';
}

std::u16string QuoteProgramName(std::u16string name) {
  std::erase(name, u'"');
  return name.empty() || name.find_first_of(kBlanks) != kEnd ? u'"' + name + u'"' : name;
}

}  // namespace

std::vector<std::u16string> SplitArguments(std::u16string_view text) {
  std::vector<std::u16string> words;
  for (EatBlanks(text); !text.empty(); EatBlanks(text)) words.push_back(EatArgument(text));
  return words;
}

std::vector<std::u16string> SplitCommandLine(std::u16string_view text) {
  std::vector<std::u16string> words{std::u16string(EatProgramName(text))};
  std::ranges::move(SplitArguments(text), std::back_inserter(words));
  return words;
}

std::u16string JoinCommandLine(std::span<const std::u16string> words) {
  if (words.empty()) return {};
  std::u16string text = QuoteProgramName(words[0]);
  for (const std::u16string& word : words.subspan(1)) text += u' ' + Quote(word);
  return text;
}

std::u16string_view AfterProgramName(std::u16string_view text) {
  EatProgramName(text);
  EatBlanks(text);
  return text;
}

}  // namespace winhost
