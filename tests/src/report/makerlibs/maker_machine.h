// A machine on which this program is a setup of a certain maker, and helpers that put that maker's files there.
#pragma once

#include <stdlib.h>

#include "base/text.h"
#include "tests/support/machine_fixture.h"
#include "tests/support/signing.h"
#include "winhost/image/mapped_file.h"
#include "winhost/kernel/resources.h"

namespace vanta {

class MakerMachine : public testing_support::OnMachine {
 protected:
  MakerMachine() {
    setenv("VANTA_IMAGE", "C:\\Setup\\VantaPictorSetup.exe", 1);
    setenv("MAKER_CALLS", (folder_ / "calls").c_str(), 1);
    signing_.MakeSigner("maker");
    signing_.MakeSigner("stranger");
    const std::string block = "VANTADEPLOY 1\nmaker_key=" + signing_.KeyHash("maker") + "\n";
    winhost::ResourceTree resources;
    const auto* bytes = reinterpret_cast<const std::byte*>(block.data());
    resources[{winhost::kTypeRcData, std::uint16_t{206}, 0}] =
        winhost::ResourceBlob(std::vector<std::byte>(bytes, bytes + block.size()));
    winhost::SetProgramResources(std::move(resources));
  }

  void PutProgram(const std::string& path) { Put(path, testing_support::SmallProgram()); }
  void PutSigned(const std::string& path, const std::string& signer) {
    PutProgram(path);
    signing_.Sign(Disk(path), signer);
  }
  // A stand-in library ("VantaBase" …) as an image that can be signed; unsigned without a signer.
  void PutLibrary(const std::string& path, const std::string& library, const std::string& signer = "") {
    const auto elf = winhost::MappedFile::Open(std::filesystem::read_symlink("/proc/self/exe").parent_path() /
                                               "maker_libs" / (library + ".dll"));
    ASSERT_TRUE(elf) << "the stand-in library is not built";
    const auto plan = winhost::WrapHostImage(elf->bytes(), {}, {});
    ASSERT_TRUE(plan);
    Put(path, testing_support::AsText(plan->ToBytes()));
    if (!signer.empty()) signing_.Sign(Disk(path), signer);
  }
  // What the stand-ins were asked, a line a call.
  std::string Calls() {
    std::ifstream file(folder_ / "calls");
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  testing_support::Signing signing_;
};

}  // namespace vanta
