// Command lines as text and as words.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace winhost {

// Splits as CommandLineToArgvW does: the first word by the rule for program names, the others by the rules for quotes
// and backslashes. An empty text has one empty word.
std::vector<std::u16string> SplitCommandLine(std::u16string_view text);
// The words after a program's name.
std::vector<std::u16string> SplitArguments(std::u16string_view text);
// A text that splits into these words. A quotation mark in the first word, which no program's name has, is dropped.
std::u16string JoinCommandLine(std::span<const std::u16string> words);
// What follows the program's name, without the blanks between: wWinMain's argument.
std::u16string_view AfterProgramName(std::u16string_view text);

}  // namespace winhost
