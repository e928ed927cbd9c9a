#include "tools/vantakit/arguments.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "tools/vantakit/commands.h"

namespace vantakit {

Arguments::Arguments(std::span<const Option> options, int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (!word.starts_with("--")) {
      rest_.emplace_back(word);
      continue;
    }
    const std::size_t equals = word.find('=');
    const std::string name(word.substr(2, equals == word.npos ? word.npos : equals - 2));
    const auto option =
        std::find_if(options.begin(), options.end(), [&](const Option& row) { return name == row.name; });
    if (option == options.end()) throw WrongArguments("no option --" + name);
    if (option->kind != Option::Repeatable && Has(name)) throw WrongArguments("--" + name + " is given twice");
    std::string value;
    if (option->kind == Option::Flag) {
      if (equals != word.npos) throw WrongArguments("--" + name + " takes no value");
    } else if (equals != word.npos) {
      value = word.substr(equals + 1);
    } else if (++i < argc) {
      value = argv[i];
    } else {
      throw WrongArguments("--" + name + " needs a value: " + option->argument);
    }
    values_[name].push_back(std::move(value));
  }
}

std::optional<std::string> Arguments::Get(const std::string& name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::nullopt : std::optional(found->second.front());
}

std::vector<std::string> Arguments::All(const std::string& name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? std::vector<std::string>() : found->second;
}

std::string Arguments::Required(const std::string& name) const {
  const auto value = Get(name);
  if (!value || value->empty()) throw WrongArguments("--" + name + " is missing");
  return *value;
}

void Arguments::ExpectNoRest() const {
  if (!rest_.empty()) throw WrongArguments("unexpected argument \"" + rest_.front() + "\"");
}

bool AskedForHelp(int argc, char** argv, const char* text, std::span<const Option> options) {
  const bool asked =
      std::any_of(argv + 1, argv + argc, [](const char* word) { return std::string_view(word) == "--help"; });
  if (!asked) return false;
  std::fputs(text, stdout);
  for (const Option& option : options) {
    const std::string left =
        std::string("--") + option.name + (option.argument ? std::string(" ") + option.argument : "");
    std::printf("  %-24s %s%s\n", left.c_str(), option.help,
                option.kind == Option::Repeatable ? " (may be repeated)" : "");
  }
  return true;
}

}  // namespace vantakit
