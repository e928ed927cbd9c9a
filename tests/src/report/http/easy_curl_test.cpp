#include "report/http/easy_curl.h"

#include "report/http/easy_request.h"
#include "report/http/network_library.h"
#include "tests/src/report/makerlibs/maker_machine.h"
#include "tests/support/https_server.h"

namespace vanta {
namespace {

constexpr WCHAR kDownload[] = TEXT("C:\\Setup\\download.bin");

class EasyCurlTest : public MakerMachine {
 protected:
  ~EasyCurlTest() override {
    for (const char* name : {"MAKER_VERSION", "MAKER_DIRECT", "MAKER_NET_ROOT", "MAKER_NET_MISSING",
                             "MAKER_NET_REFUSES", "MAKER_NET_CODE"}) {
      unsetenv(name);
    }
  }
  void WithLibrary(const std::string& facts = "{}") {
    Start(facts);
    setenv("MAKER_VERSION", "11", 1);
    setenv("MAKER_DIRECT", "1", 1);
    setenv("MAKER_NET_ROOT", server_.Root().c_str(), 1);
    PutLibrary("C:\\Setup\\VantaBase.dll", "VantaBase", "maker");
    PutLibrary("C:\\Setup\\vantanetbase.dll", "vantanetbase");
    Put("C:\\Setup\\xLogConfig.ini", "[*]\r\nlog=2\r\n");
    ASSERT_EQ(LoadNetworkLibrary(), 0);
  }
  int Get(CEasyCurl& curl, const std::string& path, const String& download = String()) {
    EXPECT_TRUE(curl.SetUrl(FromUtf8(server_.Url(path))));
    return curl.Perform(download);
  }
  // The log without its times.
  std::string LogText() {
    const std::string bytes =
        Contents("C:\\Users\\user\\AppData\\Roaming\\VantaPictorSetup.exe\\Logs\\VantaPictorSetup.exe.log");
    std::string text;
    for (size_t i = 0; i < bytes.size(); i += 2) text += bytes[i];
    std::string lines;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) lines += line.substr(std::min(line.size(), size_t{20}));
    return lines;
  }
  // The options that were set since, by their numbers.
  std::string OptionsSetBy(const std::string& before) {
    std::string set;
    std::istringstream lines(Calls().substr(before.size()));
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("set ")) set += line.substr(4) + " ";
    }
    return set;
  }

  testing_support::HttpsServer server_;
};

TEST_F(EasyCurlTest, WithoutTheLibraryNothingIsSent) {
  Start();
  CEasyCurl curl;
  EXPECT_FALSE(curl.AddHeader(TEXT("A: b")));
  EXPECT_FALSE(curl.SetUrl(TEXT("https://localhost/")));
  EXPECT_FALSE(curl.AddFormField(TEXT("a"), TEXT("b")));
  EXPECT_EQ(curl.Perform(), 2);
  EasyCurl::CHttpRequest request;
  request.url = TEXT("https://localhost/");
  EXPECT_EQ(request.Send(), 2);
}

TEST_F(EasyCurlTest, BodyAndHeadersAreKept) {
  WithLibrary();
  CEasyCurl curl;
  EXPECT_TRUE(curl.AddHeader(TEXT("X-Mine: 1")));
  EXPECT_EQ(Get(curl, "/ok"), 0);
  EXPECT_EQ(curl.body(), "ok\n");
  EXPECT_EQ(curl.received(), 3u);
  EXPECT_NE(curl.headers().find("HTTP/1.1 200"), std::string::npos);
  EXPECT_NE(server_.Requests().find("X-Mine: 1"), std::string::npos);
  EXPECT_FALSE(curl.IsBusy());
  EXPECT_EQ(LogText(), "");
}

TEST_F(EasyCurlTest, OptionsAreSetInTheirOrder) {
  WithLibrary();
  std::string before = Calls();
  CEasyCurl curl;
  EXPECT_EQ(OptionsSetBy(before), "156 155 ");
  before = Calls();
  curl.SetHeaderOnly(true);
  EXPECT_EQ(Get(curl, "/ok"), 0);
  EXPECT_EQ(OptionsSetBy(before), "10002 20011 10001 20079 10029 43 20056 10057 10023 52 44 ");
  EXPECT_TRUE(server_.Requests().starts_with("HEAD /ok"));
}

TEST_F(EasyCurlTest, RedirectsAreFollowed) {
  WithLibrary();
  CEasyCurl curl;
  EXPECT_EQ(Get(curl, "/hops/2"), 0);
  EXPECT_EQ(server_.RequestCount(), 3);
}

TEST_F(EasyCurlTest, FormIsPosted) {
  WithLibrary();
  CEasyCurl curl;
  EXPECT_TRUE(curl.AddFormField(TEXT("name"), TEXT("content")));
  EXPECT_EQ(Get(curl, "/ok"), 0);
  EXPECT_TRUE(server_.Requests().starts_with("POST /ok"));
  EXPECT_NE(server_.Requests().find("name=\"name\"\r\n\r\ncontent"), std::string::npos);
}

TEST_F(EasyCurlTest, DownloadGoesToTheFileAnew) {
  WithLibrary();
  Put("C:\\Setup\\download.bin", "what was there before");
  CEasyCurl curl;
  EXPECT_EQ(Get(curl, "/ok", kDownload), 0);
  EXPECT_EQ(Contents("C:\\Setup\\download.bin"), "ok\n");
  EXPECT_EQ(curl.body(), "");
  EXPECT_EQ(curl.received(), 3u);
}

TEST_F(EasyCurlTest, DownloadThatCannotBeCreatedOrWrittenFails) {
  WithLibrary(R"({"faults": [{"operation": "CreateFileW", "subject": "download", "error": 5},
                             {"operation": "WriteFile", "subject": "download", "error": 112}]})");
  CEasyCurl curl;
  EXPECT_EQ(Get(curl, "/ok", kDownload), 23);
  EXPECT_EQ(server_.RequestCount(), 0);
  EXPECT_EQ(Get(curl, "/ok", kDownload), 23);
  EXPECT_EQ(LogText(), "[EasyCurl] Curl_easy_perform return 23\r");
}

TEST_F(EasyCurlTest, TransactionNeedsAWindowsThatHasThem) {
  WithLibrary(R"({"version": "xp", "windows_bits": 32})");
  CEasyCurl curl;
  curl.SetTransaction(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  EXPECT_EQ(Get(curl, "/ok", kDownload), 23);
  EXPECT_FALSE(Exists("C:\\Setup\\download.bin"));
}
TEST_F(EasyCurlTest, DownloadInATransaction) {
  WithLibrary();
  CEasyCurl curl;
  curl.SetTransaction(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  EXPECT_EQ(Get(curl, "/ok", kDownload), 0);
  EXPECT_EQ(Contents("C:\\Setup\\download.bin"), "ok\n");
  CEasyCurl other;
  other.SetTransaction(INVALID_HANDLE_VALUE);
  EXPECT_EQ(Get(other, "/ok", kDownload), 23);
}

TEST_F(EasyCurlTest, PartOfAFileIsASuccessThatIsLogged) {
  WithLibrary();
  CEasyCurl curl;
  EXPECT_EQ(Get(curl, "/cut"), 0);
  EXPECT_EQ(curl.body(), "half");
  EXPECT_EQ(LogText(), "[EasyCurl] Curl_easy_perform return 18\r");
}

TEST_F(EasyCurlTest, FailedTransferGivesItsNumberAndIsLogged) {
  WithLibrary();
  CEasyCurl curl;
  EXPECT_TRUE(curl.SetUrl(FromUtf8(server_.Url("/ok", "closed"))));
  EXPECT_EQ(curl.Perform(), 7);
  EXPECT_TRUE(curl.SetUrl(FromUtf8(server_.Url("/ok", "expired"))));
  EXPECT_EQ(curl.Perform(), 60);
  EXPECT_EQ(LogText(), "[EasyCurl] Curl_easy_perform return 7\r[EasyCurl] Curl_easy_perform return 60\r");
}

TEST_F(EasyCurlTest, LibraryWithoutPerformIsErrorTwo) {
  setenv("MAKER_NET_MISSING", "perform", 1);
  WithLibrary();
  CEasyCurl curl;
  EXPECT_EQ(Get(curl, "/ok"), 2);
  EXPECT_EQ(LogText(), "[EasyCurl] Curl_easy_perform return 2\r");
}
TEST_F(EasyCurlTest, LibraryWithoutInitGivesNoHandle) {
  setenv("MAKER_NET_MISSING", "init", 1);
  WithLibrary();
  EXPECT_EQ(CEasyCurl().Perform(), 2);
}

TEST_F(EasyCurlTest, RefusedOptionDropsTheHandle) {
  for (const char* option : {"20011", "10001", "20079", "10029", "43", "20056", "10057", "10023", "52"}) {
    setenv("MAKER_NET_REFUSES", option, 1);
    if (!GetNetworkFunctions()) WithLibrary();
    const std::string before = Calls();
    CEasyCurl curl;
    EXPECT_NE(Get(curl, "/ok"), 0) << option;
    EXPECT_NE(Calls().substr(before.size()).find("cleanup"), std::string::npos) << option;
    EXPECT_FALSE(curl.SetUrl(TEXT("https://localhost/"))) << option;
  }
  EXPECT_EQ(server_.RequestCount(), 0);
}

}  // namespace
}  // namespace vanta
