// Command-line options of the commands: "--name VALUE" or "--name=VALUE", and flags.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vantakit {

struct Option {
  enum Kind { Value, Repeatable, Flag };
  const char* name;  // without dashes
  Kind kind;
  const char* argument;  // what the value is: "FILE"; null for flags
  const char* help;
};

class Arguments {
 public:
  // Throws WrongArguments for an unknown option, a missing value, a value that a flag has, or a second value.
  Arguments(std::span<const Option> options, int argc, char** argv);

  bool Has(const std::string& name) const { return values_.contains(name); }
  std::optional<std::string> Get(const std::string& name) const;
  std::vector<std::string> All(const std::string& name) const;
  // Throws WrongArguments when it is missing.
  std::string Required(const std::string& name) const;
  // What is no option, in order.
  const std::vector<std::string>& rest() const { return rest_; }
  void ExpectNoRest() const;

 private:
  std::map<std::string, std::vector<std::string>> values_;
  std::vector<std::string> rest_;
};

// True, after printing the text and the options, when one of the arguments is --help.
bool AskedForHelp(int argc, char** argv, const char* text, std::span<const Option> options);

}  // namespace vantakit
