// The command-line grammar: long options with one or two dashes, any unambiguous prefix of a name, values attached with
// "=". Other words are passed over; "--" ends the options, and so does the first plain word when POSIXLY_CORRECT is
// set.
#pragma once

#include "app/option_store.h"

#include <span>
#include <vector>

namespace vanta {

// The options of the setup.
extern const std::span<const StringView> kOptionTable;

// The words of a command line as CommandLineToArgvW splits it; none when it is null or cannot be split.
std::vector<String> SplitCommandLine(const WCHAR* command_line);

struct ParsedWords {
  OptionStore store;                // full names; later words win
  std::vector<String> diagnostics;  // a line each with its "\n", in getopt's wording
};

// Reads the words after the first, which is the program. Pure.
ParsedWords ParseWords(std::span<const String> words, std::span<const StringView> table, bool posixly_correct);

// Splits and reads a command line into the store; diagnostics go to the standard error stream where there is one. False
// when the command line is missing or cannot be split; unknown options do not make it fail.
bool ParseCommandLine(const WCHAR* command_line, std::span<const StringView> table, OptionStore& store);

}  // namespace vanta
