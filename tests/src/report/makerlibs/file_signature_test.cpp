#include "report/makerlibs/file_signature.h"

#include "report/makerlibs/certificate_table.h"
#include "report/makerlibs/signature_verdict.h"
#include "tests/src/report/makerlibs/maker_machine.h"

namespace vanta {
namespace {

TEST(JudgeSignatureTest, OnlySuccessAndAnUntrustedRootGoOnToTheKey) {
  for (const LONG code : {LONG{0}, static_cast<LONG>(0x800B0109u)}) {
    EXPECT_EQ(JudgeSignature(code, CertificateTable::Present), SignatureVerdict::CompareKey);
    EXPECT_EQ(JudgeSignature(code, CertificateTable::Damaged), SignatureVerdict::Refused);
    EXPECT_EQ(JudgeSignature(code, CertificateTable::None), SignatureVerdict::Unsigned);
    EXPECT_EQ(JudgeSignature(code, CertificateTable::NoProgram), SignatureVerdict::Unsigned);
  }
}

TEST(JudgeSignatureTest, EveryOtherAnswerRefuses) {
  std::vector<DWORD> codes = {1, 2, 5, 0x57, 0x80070005, 0x8007000E, 0x80092003, 0x80096010, 0xFFFFFFFF};
  for (DWORD code = 0x800B0001; code <= 0x800B000A; ++code) codes.push_back(code);
  for (DWORD code = 0x800B0100; code <= 0x800B0115; ++code) codes.push_back(code);
  for (DWORD code = 0x80096001; code <= 0x8009601F; ++code) codes.push_back(code);
  for (const DWORD code : codes) {
    if (code == 0x800B0109) continue;
    EXPECT_EQ(JudgeSignature(static_cast<LONG>(code), CertificateTable::Present), SignatureVerdict::Refused)
        << std::hex << code;
  }
}

const String kPath = TEXT("C:\\P\\program.exe");
constexpr char kFile[] = "C:\\P\\program.exe";

class FileSignatureTest : public MakerMachine {
 protected:
  // status and level in one word: "2/1".
  std::string Check() {
    const SignatureResult result = CheckFileSignature(kPath);
    return std::to_string(result.status) + "/" + std::to_string(result.level);
  }
  void Change(const std::function<void(std::string&)>& change) {
    std::string bytes = Contents(kFile);
    change(bytes);
    Put(kFile, bytes);
  }
};

TEST_F(FileSignatureTest, MakersOwnFileIsAccepted) {
  Start();
  PutSigned(kFile, "maker");
  EXPECT_EQ(Check(), "2/1");
  EXPECT_TRUE(IsSignedMakerFile(kPath));
}

TEST_F(FileSignatureTest, AnyCertificateOnTheMakersKeyWillDo) {
  Start();
  PutProgram(kFile);
  signing_.MakeOnKeyOf("maker", "renewed", "codeSigning");
  signing_.Sign(Disk(kFile), "renewed");
  EXPECT_EQ(Check(), "2/1");
}

TEST_F(FileSignatureTest, RootsOfTheMachineDoNotMakeAStrangerTheMaker) {
  Start("{\"trusted_roots\": [\"" + signing_.Cert("stranger") + "\", \"" + signing_.Cert("maker") + "\"]}");
  PutSigned(kFile, "stranger");
  EXPECT_EQ(Check(), "1/3");
  EXPECT_FALSE(IsSignedMakerFile(kPath));
  PutSigned(kFile, "maker");
  EXPECT_EQ(Check(), "2/1");
}

TEST_F(FileSignatureTest, NothingToJudgeIsStatus0WithoutALevel) {
  Start();
  EXPECT_EQ(Check(), "0/-1") << "missing";
  EXPECT_FALSE(IsSignedMakerFile(kPath));
  for (const std::string& bytes : {std::string(), std::string("MZ"), std::string("text"),
                                   testing_support::SmallProgram(), testing_support::SmallProgram().substr(0, 200)}) {
    Put(kFile, bytes);
    EXPECT_EQ(Check(), "0/-1") << bytes.size();
  }
}

TEST_F(FileSignatureTest, FileThatSomebodyWritesToIsUnreadable) {
  Start();
  PutSigned(kFile, "maker");
  const UniqueFile writer(CreateFileW(kPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer);
  EXPECT_EQ(Check(), "0/-1");
}

TEST_F(FileSignatureTest, FileCannotBeChangedWhileItIsChecked) {
  Start();
  PutSigned(kFile, "maker");
  const UniqueFile file = OpenForCheck(kPath);
  ASSERT_TRUE(file);
  const UniqueFile writer(CreateFileW(kPath.c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
  EXPECT_FALSE(writer);
  EXPECT_FALSE(DeleteFileW(kPath.c_str()));
  EXPECT_EQ(CheckFileSignature(file.Get(), kPath).status, 2);
}

TEST_F(FileSignatureTest, MakersKeyOnACertificateForServersIsRefused) {
  Start();
  PutProgram(kFile);
  signing_.MakeOnKeyOf("maker", "server", "serverAuth");
  signing_.Sign(Disk(kFile), "server");
  EXPECT_EQ(Check(), "1/3");
}

struct DamageCase {
  const char* name;
  void (*change)(std::string& bytes);
};

// The offset of the certificate table in a 32-bit program.
std::size_t TableEntry(const std::string& bytes) { return static_cast<unsigned char>(bytes[0x3C]) + 24u + 96 + 4 * 8; }
std::uint32_t& Word(std::string& bytes, std::size_t at) { return *reinterpret_cast<std::uint32_t*>(bytes.data() + at); }
std::size_t Table(std::string& bytes) { return Word(bytes, TableEntry(bytes)); }

const DamageCase kDamages[] = {
    {"body_changed", [](std::string& b) { b[b.size() / 3] = static_cast<char>(b[b.size() / 3] ^ 1); }},
    {"trailing_byte", [](std::string& b) { b += 'x'; }},
    {"trailing_zeros", [](std::string& b) { b.append(16, '\0'); }},
    {"table_cut_short", [](std::string& b) { b.resize(b.size() - 100); }},
    {"table_removed_but_named", [](std::string& b) { b.resize(Table(b)); }},
    {"entry_beyond_the_end", [](std::string& b) { Word(b, TableEntry(b)) += 8; }},
    {"entry_with_a_huge_size", [](std::string& b) { Word(b, TableEntry(b) + 4) = 0xFFFFFFFF; }},
    {"entry_with_size_only", [](std::string& b) { Word(b, TableEntry(b)) = 0; }},
    {"certificate_length_too_big", [](std::string& b) { Word(b, Table(b)) += 64; }},
    {"certificate_length_zero", [](std::string& b) { Word(b, Table(b)) = 0; }},
    {"certificate_of_another_type", [](std::string& b) { b[Table(b) + 6] = 1; }},
    {"message_of_garbage", [](std::string& b) { b.replace(Table(b) + 20, 40, 40, '\xEE'); }},
    {"message_length_garbled", [](std::string& b) { b[Table(b) + 9] = '\x80'; }},
    {"junk_hidden_in_the_table",
     [](std::string& b) {
       b.append(64, 'j');
       Word(b, Table(b)) += 64;
       Word(b, TableEntry(b) + 4) += 64;
     }},
};

class DamagedFileTest : public FileSignatureTest, public testing::WithParamInterface<DamageCase> {};

TEST_P(DamagedFileTest, IsRefusedWithLevel3) {
  Start();
  PutSigned(kFile, "maker");
  Change([](std::string& bytes) { GetParam().change(bytes); });
  EXPECT_EQ(Check(), "1/3");
}

INSTANTIATE_TEST_SUITE_P(Damages, DamagedFileTest, testing::ValuesIn(kDamages),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FileSignatureTest, SystemThatAnswersAnythingElseRefuses) {
  Start(R"({"faults": [{"operation": "WinVerifyTrust", "error": 2148204801},
                       {"operation": "CryptEncodeObject", "nth": 1},
                       {"operation": "CertGetEnhancedKeyUsage", "nth": 2}]})");
  PutSigned(kFile, "maker");
  EXPECT_EQ(Check(), "1/3") << "expired";
  EXPECT_EQ(Check(), "1/3") << "no key";
  EXPECT_EQ(Check(), "1/3") << "no usage";
  EXPECT_EQ(Check(), "2/1");
}

}  // namespace
}  // namespace vanta
