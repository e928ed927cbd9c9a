#include <windows.h>
#include <wintrust.h>
#include <softpub.h>

#include <random>

#include "tests/support/machine_fixture.h"
#include "tests/support/signing.h"
#include "winhost/trust/der.h"

namespace {

using testing_support::SmallProgram;

constexpr char kFile[] = "C:\\Temp\\program.exe";

class WinVerifyTrustTest : public testing_support::OnMachine {
 protected:
  // A file signed by a fresh self-signed signer.
  void PutSigned(bool is64 = false) {
    signing_.MakeSigner("signer");
    Put(kFile, SmallProgram(is64));
    signing_.Sign(Disk(kFile), "signer");
  }
  void StartTrusting(const std::string& root, const std::string& more = "") {
    Start("{\"trusted_roots\": [\"" + signing_.Cert(root) + "\"]" + more + "}");
  }

  // The answer when the file is opened here and checked through the handle.
  LONG Verify(const std::string& file = kFile) {
    const std::u16string path = winhost::Wide(file);
    const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    const LONG answer = VerifyHandle(path, handle);
    CloseHandle(handle);
    return answer;
  }
  LONG VerifyHandle(const std::u16string& path, HANDLE handle) {
    WINTRUST_FILE_INFO info{sizeof(info), path.c_str(), handle, nullptr};
    WINTRUST_DATA data{};
    data.cbStruct = sizeof(data);
    data.dwUIChoice = WTD_UI_NONE;
    data.dwUnionChoice = WTD_CHOICE_FILE;
    data.pFile = &info;
    data.dwStateAction = WTD_STATEACTION_VERIFY;
    GUID action = WINTRUST_ACTION_GENERIC_VERIFY_V2;
    const LONG answer = WinVerifyTrust(nullptr, &action, &data);
    CRYPT_PROVIDER_SGNR* signer =
        WTHelperGetProvSignerFromChain(WTHelperProvDataFromStateData(data.hWVTStateData), 0, FALSE, 0);
    chain_length_ = signer ? signer->csCertChain : 0;
    data.dwStateAction = WTD_STATEACTION_CLOSE;
    WinVerifyTrust(nullptr, &action, &data);
    return answer;
  }
  void Change(const std::function<void(std::string&)>& change) {
    std::string bytes = Contents(kFile);
    change(bytes);
    Put(kFile, bytes);
  }
  // Offset of the PE signature.
  static std::size_t Headers(const std::string& bytes) { return static_cast<unsigned char>(bytes[0x3C]); }

  testing_support::Signing signing_;
  DWORD chain_length_ = 0;
};

TEST_F(WinVerifyTrustTest, SelfSignedFileHasAnUntrustedRootUntilTheMachineTrustsIt) {
  PutSigned();
  Start();
  EXPECT_EQ(Verify(), CERT_E_UNTRUSTEDROOT);
  EXPECT_EQ(chain_length_, 1u);
}

TEST_F(WinVerifyTrustTest, TrustedSelfSignedFileIsFine) {
  PutSigned(true);
  StartTrusting("signer");
  EXPECT_EQ(Verify(), ERROR_SUCCESS);
}

TEST_F(WinVerifyTrustTest, CertificateBelowATrustedRootIsFineAndShowsItsChain) {
  signing_.MakeRoot("root");
  signing_.MakeIssued("issued", "root");
  Put(kFile, SmallProgram());
  signing_.Sign(Disk(kFile), "issued");
  StartTrusting("root");
  EXPECT_EQ(Verify(), ERROR_SUCCESS);
  EXPECT_EQ(chain_length_, 2u);
}

TEST_F(WinVerifyTrustTest, CertificateWhoseIssuerIsNowhereDoesNotChain) {
  signing_.MakeRoot("root");
  signing_.MakeIssued("issued", "root");
  Put(kFile, SmallProgram());
  signing_.Sign(Disk(kFile), "issued");
  Start();
  EXPECT_EQ(Verify(), CERT_E_CHAINING);
}

TEST_F(WinVerifyTrustTest, CertificateForServersIsNoCodeSigner) {
  signing_.MakeSigner("server", "serverAuth");
  Put(kFile, SmallProgram());
  signing_.Sign(Disk(kFile), "server");
  StartTrusting("server");
  EXPECT_EQ(Verify(), CERT_E_WRONG_USAGE);
}

TEST_F(WinVerifyTrustTest, ExpiryFollowsTheMachinesClock) {
  PutSigned();
  StartTrusting("signer", R"(, "clock": {"at": "2055-01-01T00:00:00", "stands": true})");
  EXPECT_EQ(Verify(), CERT_E_EXPIRED);
}

TEST_F(WinVerifyTrustTest, TimeStampOutlivesTheCertificateWhereItsOwnRootIsTrusted) {
  signing_.MakeRoot("root");
  signing_.MakeRoot("other");
  signing_.MakeIssued("issued", "root", "codeSigning", 30);
  for (const auto& [stamper_root, answer] :
       {std::pair("root", LONG{ERROR_SUCCESS}), std::pair("other", static_cast<LONG>(CERT_E_EXPIRED))}) {
    signing_.MakeIssued("stamper", stamper_root, "timeStamping", 30);
    Put(kFile, SmallProgram());
    signing_.Sign(Disk(kFile), "issued",
                  "-TSA-certs " + signing_.Cert("stamper") + " -TSA-key " + signing_.Key("stamper"));
    StartTrusting("root", R"(, "clock": {"at": "2040-01-01T00:00:00", "stands": true})");
    EXPECT_EQ(Verify(), answer) << stamper_root;
  }
}

TEST_F(WinVerifyTrustTest, FilesWithoutASignatureAreToldApart) {
  Start();
  Put(kFile, SmallProgram());
  EXPECT_EQ(Verify(), TRUST_E_NOSIGNATURE);
  Put(kFile, "no program at all");
  EXPECT_EQ(Verify(), TRUST_E_SUBJECT_FORM_UNKNOWN);
  Put(kFile, "");
  EXPECT_EQ(Verify(), TRUST_E_SUBJECT_FORM_UNKNOWN);
}

TEST_F(WinVerifyTrustTest, DigestCoversWhatItShould) {
  PutSigned();
  StartTrusting("signer");
  const std::string good = Contents(kFile);
  const std::size_t headers = Headers(good);
  struct Row {
    const char* what;
    std::size_t at;
    LONG answer;
  };
  const Row rows[] = {{"DOS header", 0x20, TRUST_E_BAD_DIGEST},
                      {"time stamp", headers + 8, TRUST_E_BAD_DIGEST},
                      {"checksum", headers + 24 + 64, ERROR_SUCCESS},
                      {"subsystem", headers + 24 + 68, TRUST_E_BAD_DIGEST},
                      {"body", good.size() / 2, TRUST_E_BAD_DIGEST}};
  for (const Row& row : rows) {
    std::string changed = good;
    changed[row.at] = static_cast<char>(changed[row.at] ^ 1);
    Put(kFile, changed);
    EXPECT_EQ(Verify(), row.answer) << row.what;
  }
}

TEST_F(WinVerifyTrustTest, SignatureOfAnotherKeyIsRefused) {
  PutSigned();
  StartTrusting("signer");
  // The signer's signature is the last value of the message when there are no unsigned attributes.
  Change([](std::string& bytes) {
    std::size_t last = bytes.size() - 1;
    while (bytes[last] == 0) --last;
    bytes[last - 5] = static_cast<char>(bytes[last - 5] ^ 0x10);
  });
  EXPECT_EQ(Verify(), TRUST_E_CERT_SIGNATURE);
}

TEST_F(WinVerifyTrustTest, BytesBehindTheTableOrInItsPaddingMakeItNoSignature) {
  PutSigned();
  StartTrusting("signer");
  const std::string good = Contents(kFile);
  Put(kFile, good + "x");
  EXPECT_EQ(Verify(), TRUST_E_NOSIGNATURE);
  Put(kFile, good + std::string(8, '\0'));
  EXPECT_EQ(Verify(), TRUST_E_NOSIGNATURE);
  Put(kFile, good.substr(0, good.size() - 8));
  EXPECT_EQ(Verify(), TRUST_E_NOSIGNATURE);
}

TEST_F(WinVerifyTrustTest, HostileBytesNeverPassAndNeverCrash) {
  PutSigned();
  StartTrusting("signer");
  const std::string good = Contents(kFile);
  for (std::size_t size = 0; size < good.size(); size += 1 + good.size() / 150) {
    Put(kFile, good.substr(0, size));
    EXPECT_NE(Verify(), ERROR_SUCCESS) << size;
  }
  std::mt19937 random(7);
  for (int round = 0; round < 400; ++round) {
    std::string changed = good;
    // Half of the rounds in the table, whose DER is the harder reader; several bytes, so that lengths break as well.
    const std::size_t begin = round % 2 ? good.size() - 1400 : 0;
    for (int i = 0; i < 4; ++i) changed[begin + random() % (changed.size() - begin)] = static_cast<char>(random());
    Put(kFile, changed);
    const LONG answer = Verify();
    if (round % 2 == 0 && changed != good) {
      EXPECT_NE(answer, ERROR_SUCCESS) << round;
    }
  }
}

TEST_F(WinVerifyTrustTest, WrongCallsAreAnswered) {
  Start(R"({"faults": [{"operation": "WinVerifyTrust", "subject": "planned", "error": 2148204815}]})");
  EXPECT_EQ(WinVerifyTrust(nullptr, nullptr, nullptr), ERROR_INVALID_PARAMETER);
  GUID unknown{};
  WINTRUST_DATA data{};
  data.cbStruct = sizeof(data);
  EXPECT_EQ(WinVerifyTrust(nullptr, &unknown, &data), TRUST_E_PROVIDER_UNKNOWN);
  EXPECT_EQ(VerifyHandle(u"C:\\none.exe", nullptr), CRYPT_E_FILE_ERROR);
  EXPECT_EQ(VerifyHandle(u"C:\\planned.exe", nullptr), static_cast<LONG>(0x800B010Fu));
}

TEST(DerTest, LengthsAreBelievedOnlyWithinTheView) {
  using winhost::DerBytes;
  struct Row {
    std::vector<std::uint8_t> bytes;
    bool good;
  };
  const Row rows[] = {{{0x30, 0x00}, true},
                      {{0x30, 0x01}, false},
                      {{0x30, 0x81, 0x01, 0x05}, true},
                      {{0x30, 0x84, 0xFF, 0xFF, 0xFF, 0xFF}, false},
                      {{0x30, 0x85, 0, 0, 0, 0, 1, 9}, false},
                      {{0x30, 0x80, 0, 0}, false},
                      {{0x30}, false},
                      {{}, false}};
  for (const Row& row : rows) {
    DerBytes rest(row.bytes);
    EXPECT_EQ(winhost::EatDer(rest).has_value(), row.good) << row.bytes.size();
    EXPECT_EQ(rest.empty(), row.good || row.bytes.empty());
  }
}

}  // namespace
