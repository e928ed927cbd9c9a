// A machine's facts: what machine.json says. Every member has the value of a plain, current, elevated 64-bit Windows 10
// when the file does not name it. The file's keys are listed in docs/machine.md; unknown keys are refused, so a
// misspelt fact is no silent success.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace winhost {

struct VersionFacts {
  std::uint32_t platform = 2;  // VER_PLATFORM_WIN32_NT
  std::uint32_t major = 10;
  std::uint32_t minor = 0;
  std::uint32_t build = 19045;
  std::uint8_t product_type = 1;
  bool rtl_get_version = true;         // ntdll exports it
  bool rtl_get_version_fails = false;  // … and it answers an error
};

struct DriveFacts {
  std::string file_system = "NTFS";
  std::uint64_t total_bytes = 256ull << 30;
  std::optional<std::uint64_t> free_bytes;  // a bound that writing uses up; none: never full
  std::string kind = "fixed";               // fixed, removable, network, cdrom
  bool read_only = false;
};

struct ServiceFacts {
  std::string state = "running";        // running, stopped, start_pending, …
  std::string start_type = "auto";      // auto, manual, disabled
  std::uint32_t type = 0x20;            // SERVICE_WIN32_SHARE_PROCESS
  std::uint32_t full_access_error = 0;  // non-zero: opening with full access fails so
  std::uint32_t start_error = 0;        // non-zero: starting fails so
};

// One planned failure: the `nth` call (counted a process, from 1; 0 means every call) of `operation` whose subject
// contains `subject` without regard to ASCII case (empty: any) fails with `error`. `times` calls from the nth on fail.
// With `until`, a path below the machine's folder, such a call is first held until that file is there (60 real seconds
// at most), and meanwhile the same path with ".wanted" behind it is a file; without an error of its own the call is
// then made. So tests can say which of two threads is ahead.
struct FaultFacts {
  std::string operation;  // the Win32 name: "CreateFileW", "RegSetValueExW", "ITaskService::Connect" …
  std::string subject;    // UTF-8: part of the path, key, service, class name …
  std::uint32_t nth = 1;
  std::uint32_t times = 1;
  std::uint32_t error = 5;  // a system error number; an HRESULT for COM operations
  std::string until;        // "C/go"; empty: nothing is waited for
  std::string process;      // only in processes whose image name contains this; empty: in all
};

struct ClockFacts {
  std::string at;       // "2024-03-05T14:07:09" or with ".123", local time; empty: the Linux clock
  bool stands = false;  // time moves only by sleeping and waiting
  double speed = 1;     // machine seconds a real second; a Sleep takes 1/speed of its length
};

struct Facts {
  VersionFacts version;
  int windows_bits = 64;          // 32 or 64; "arm64" as `architecture` is neither AMD64 nor x86
  std::string architecture = "";  // "", "x86", "amd64", "ia64", "arm64"; "" follows windows_bits
  int process_bits = 32;          // 32 as shipped; 64 to compare with Wine's 64-bit runs
  bool elevated = true;
  bool desktop_shell = true;  // the shell runs and shows its desktop
  int dpi = 96;
  int zone_bias_minutes = 0;  // UTC = local + bias
  std::string user = "user";
  std::string computer = "DESKTOP-VANTA";
  std::map<std::string, std::string> folders;    // "CSIDL_PROGRAMS" → path, "" = cannot be found
  std::map<std::string, DriveFacts> drives;      // "C" → …
  std::vector<std::string> denied;               // "C:\\Locked": folders in and below which nothing may be changed
  std::map<std::string, ServiceFacts> services;  // "Schedule" → …
  std::vector<std::string> missing_classes;      // COM classes not registered: "CLSID_TaskScheduler" …
  std::vector<std::string> missing_exports;      // "Kernel32.dll!AddDllDirectory" … beyond what the version implies
  std::vector<std::string> running;              // "C:\\Program Files\\…\\x.exe": processes listed but not ours
  ClockFacts clock;
  bool launches_wait = false;  // a launch returns when the launched program has ended: no two run side by side
  std::vector<FaultFacts> faults;
  bool trace_calls = false;                        // journal every call that can be planned to fail in "calls"
  std::map<std::string, std::string> environment;  // process environment variables
  std::shared_ptr<const nlohmann::json> raw;       // the whole file, for subsystems with facts of their own

  // Version code comparisons for winhost's own gates: AtLeast(6, 0) is Vista.
  bool AtLeast(std::uint32_t major, std::uint32_t minor) const;
};

// Reads `path`; a missing file gives the defaults. Throws std::runtime_error naming the key that is wrong.
Facts ReadFacts(const std::filesystem::path& path);
Facts ParseFacts(const std::string& json);

}  // namespace winhost
