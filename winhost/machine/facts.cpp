#include "winhost/machine/facts.h"

#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace winhost {
namespace {

using Json = nlohmann::json;

// Keys that belong to subsystems which read them from Facts::raw themselves.
constexpr const char* kForeignKeys[] = {
    "registry",  "files", "adapters", "disks", "netbios",    "cpuid",         "protection_device",
    "tls_roots", "hosts", "comment",  "fonts", "compositor", "trusted_roots", "screen"};

class Fields {
 public:
  Fields(const Json& object, std::string where) : object_(object), where_(std::move(where)) {
    if (!object.is_object()) throw std::runtime_error(where_ + " must be an object");
  }

  template <class T>
  Fields& Read(const char* key, T& into) {
    return With(key, [&](const Json& value) { value.get_to(into); });
  }
  Fields& With(const char* key, const std::function<void(const Json&)>& read) {
    known_.emplace_back(key);
    const auto found = object_.find(key);
    if (found == object_.end()) return *this;
    try {
      read(*found);
    } catch (const Json::exception& wrong) {
      throw std::runtime_error(where_ + "." + key + ": " + wrong.what());
    }
    return *this;
  }
  Fields& Allow(const char* key) {
    known_.emplace_back(key);
    return *this;
  }
  void NothingElse() const {
    for (const auto& [key, value] : object_.items()) {
      bool known = false;
      for (const auto& name : known_) known = known || name == key;
      if (!known) throw std::runtime_error(where_ + ": unknown key \"" + key + "\"");
    }
  }

 private:
  const Json& object_;
  std::string where_;
  std::vector<std::string> known_;
};

struct NamedVersion {
  const char* name;
  VersionFacts version;
};

const NamedVersion kNamedVersions[] = {
    {"2000", {2, 5, 0, 2195, 1, false, false}}, {"xp", {2, 5, 1, 2600, 1, true, false}},
    {"2003", {2, 5, 2, 3790, 3, true, false}},  {"vista", {2, 6, 0, 6002, 1, true, false}},
    {"7", {2, 6, 1, 7601, 1, true, false}},     {"8", {2, 6, 2, 9200, 1, true, false}},
    {"8.1", {2, 6, 3, 9600, 1, true, false}},   {"10", {2, 10, 0, 19045, 1, true, false}},
    {"11", {2, 10, 0, 22631, 1, true, false}},
};

VersionFacts ReadVersion(const Json& value) {
  if (value.is_string()) {
    for (const auto& row : kNamedVersions) {
      if (value.get<std::string>() == row.name) return row.version;
    }
    throw std::runtime_error("version: no Windows of that name");
  }
  VersionFacts version;
  Fields(value, "version")
      .Read("platform", version.platform)
      .Read("major", version.major)
      .Read("minor", version.minor)
      .Read("build", version.build)
      .Read("product_type", version.product_type)
      .Read("rtl_get_version", version.rtl_get_version)
      .Read("rtl_get_version_fails", version.rtl_get_version_fails)
      .NothingElse();
  return version;
}

DriveFacts ReadDrive(const Json& value) {
  DriveFacts drive;
  Fields(value, "drives")
      .Read("file_system", drive.file_system)
      .Read("total_bytes", drive.total_bytes)
      .With("free_bytes", [&](const Json& bytes) { drive.free_bytes = bytes.get<std::uint64_t>(); })
      .Read("kind", drive.kind)
      .Read("read_only", drive.read_only)
      .NothingElse();
  return drive;
}

ServiceFacts ReadService(const Json& value) {
  ServiceFacts service;
  Fields(value, "services")
      .Read("state", service.state)
      .Read("start_type", service.start_type)
      .Read("type", service.type)
      .Read("full_access_error", service.full_access_error)
      .Read("start_error", service.start_error)
      .NothingElse();
  return service;
}

FaultFacts ReadFault(const Json& value) {
  FaultFacts fault;
  Fields(value, "faults")
      .Read("operation", fault.operation)
      .Read("subject", fault.subject)
      .Read("nth", fault.nth)
      .Read("times", fault.times)
      .Read("error", fault.error)
      .Read("until", fault.until)
      .Read("process", fault.process)
      .NothingElse();
  if (!fault.until.empty() && !value.contains("error")) fault.error = 0;
  if (fault.operation.empty()) throw std::runtime_error("faults: a fault needs its operation");
  return fault;
}

template <class T>
auto EachOf(std::map<std::string, T>& into, T (*read)(const Json&)) {
  return [&into, read](const Json& object) {
    for (const auto& [name, value] : object.items()) into[name] = read(value);
  };
}

}  // namespace

bool Facts::AtLeast(std::uint32_t major, std::uint32_t minor) const {
  return version.major != major ? version.major > major : version.minor >= minor;
}

Facts ParseFacts(const std::string& text) {
  auto raw = std::make_shared<Json>();
  try {
    *raw = Json::parse(text, nullptr, true, true);
  } catch (const Json::exception& wrong) {
    throw std::runtime_error(wrong.what());
  }
  Facts facts;
  Fields fields(*raw, "machine");
  fields.With("version", [&](const Json& value) { facts.version = ReadVersion(value); })
      .Read("windows_bits", facts.windows_bits)
      .Read("architecture", facts.architecture)
      .Read("process_bits", facts.process_bits)
      .Read("elevated", facts.elevated)
      .Read("desktop_shell", facts.desktop_shell)
      .Read("dpi", facts.dpi)
      .Read("zone_bias_minutes", facts.zone_bias_minutes)
      .Read("user", facts.user)
      .Read("computer", facts.computer)
      .Read("folders", facts.folders)
      .With("drives", EachOf(facts.drives, ReadDrive))
      .Read("denied", facts.denied)
      .With("services", EachOf(facts.services, ReadService))
      .Read("missing_classes", facts.missing_classes)
      .Read("missing_exports", facts.missing_exports)
      .Read("running", facts.running)
      .Read("launches_wait", facts.launches_wait)
      .Read("trace_calls", facts.trace_calls)
      .Read("environment", facts.environment)
      .With("clock",
            [&](const Json& value) {
              Fields(value, "clock")
                  .Read("at", facts.clock.at)
                  .Read("stands", facts.clock.stands)
                  .Read("speed", facts.clock.speed)
                  .NothingElse();
            })
      .With("faults", [&](const Json& list) {
        for (const Json& value : list) facts.faults.push_back(ReadFault(value));
      });
  for (const char* key : kForeignKeys) fields.Allow(key);
  fields.NothingElse();
  if (facts.windows_bits != 32 && facts.windows_bits != 64) throw std::runtime_error("windows_bits: 32 or 64");
  if (facts.process_bits != 32 && facts.process_bits != 64) throw std::runtime_error("process_bits: 32 or 64");
  if (facts.process_bits > facts.windows_bits) throw std::runtime_error("process_bits: more than windows_bits");
  if (!(facts.clock.speed > 0)) throw std::runtime_error("clock.speed: must be above 0");
  facts.raw = raw;
  return facts;
}

Facts ReadFacts(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return ParseFacts("{}");
  return ParseFacts(std::string(std::istreambuf_iterator<char>(file), {}));
}

}  // namespace winhost
