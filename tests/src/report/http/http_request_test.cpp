#include "report/http/http_request.h"

#include "tests/support/https_server.h"
#include "tests/support/machine_fixture.h"

namespace vanta::HttpLib {
namespace {

class HttpRequestTest : public testing_support::OnMachine {
 protected:
  void OnFacts(const std::string& more = "") { Start(server_.Facts(more)); }
  // Time-outs of seconds pass in tenths of one; what answers does so long before.
  void OnFastMachine() { OnFacts(R"("clock": {"at": "2024-03-05T14:07:09", "speed": 25}, )"); }

  CHttpRequestPtr Get(const std::string& url) { return CreateHttpRequest(FromUtf8(url), String(), String(), String()); }
  // The status, or 0 when nothing arrived.
  DWORD StatusOf(const std::string& url) {
    const auto response = Get(url)->Send();
    return response->Arrived() ? response->status : 0;
  }
  std::string FinalUrlOf(const std::string& url) {
    const auto request = Get(url);
    EXPECT_EQ(SendHttpRequest(request), 1) << url;
    return ToUtf8(request->url);
  }
  // Error of the last try to send.
  DWORD ErrorOf(const std::string& url) {
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(StatusOf(url), 0u) << url;
    return GetLastError();
  }

  testing_support::HttpsServer server_;
};

TEST_F(HttpRequestTest, EveryStatusIsAnArrival) {
  OnFacts();
  EXPECT_EQ(StatusOf(server_.Url("/ok")), 200u);
  EXPECT_EQ(StatusOf(server_.Url("/status/404")), 404u);
  EXPECT_EQ(StatusOf(server_.Url("/status/500")), 500u);
  EXPECT_EQ(StatusOf(server_.Url("/status/307")), 307u);
  EXPECT_EQ(StatusOf(server_.Url("/interim")), 200u);
  EXPECT_EQ(SendHttpRequest(Get(server_.Url("/status/404"))), 1);
}

TEST_F(HttpRequestTest, PathAndQueryGoOutAsTheyAre) {
  OnFacts();
  StatusOf(server_.Url("/ok?a=b|c&d=%41&e=x+y;{}"));
  EXPECT_EQ(server_.Requests().substr(0, 31), "GET /ok?a=b|c&d=%41&e=x+y;{} [H");
}

TEST_F(HttpRequestTest, MethodHeadersAgentAndBodyAreSent) {
  OnFacts();
  const auto request = CreateHttpRequest(FromUtf8(server_.Url("/ok")), TEXT("POST"), String(), TEXT("agent/1"));
  request->headers[TEXT("X-Two")] = {TEXT("a"), TEXT("b")};
  request->headers[TEXT("X-One")] = {TEXT("c")};
  request->body = {'h', 'i'};
  EXPECT_EQ(SendHttpRequest(request), 1);
  const std::string sent = server_.Requests();
  EXPECT_TRUE(sent.starts_with("POST /ok [")) << sent;
  EXPECT_NE(sent.find("X-One:c; X-Two:a,b"), sent.npos) << sent;
  EXPECT_NE(sent.find("User-Agent: agent/1"), sent.npos) << sent;
  EXPECT_NE(sent.find("] hi\n"), sent.npos) << sent;
}

TEST_F(HttpRequestTest, RedirectsAreFollowedFiveTimes) {
  OnFacts();
  EXPECT_EQ(FinalUrlOf(server_.Url("/hops/5")), server_.Url("/hops/0"));
  EXPECT_EQ(server_.RequestCount(), 6);
  EXPECT_EQ(StatusOf(server_.Url("/hops/6")), 0u);
  EXPECT_EQ(server_.RequestCount(), 12);
  EXPECT_EQ(StatusOf(server_.Url("/loop")), 0u);
  EXPECT_EQ(server_.RequestCount(), 18);
}

TEST_F(HttpRequestTest, RedirectMayLeadToAnotherHost) {
  OnFacts();
  const std::string other = "https://other.invalid:" + std::to_string(server_.Port()) + "/ok";
  EXPECT_EQ(FinalUrlOf(server_.Url("/to?" + other)), other);
  EXPECT_EQ(StatusOf(server_.Url("/to?https://nobody.invalid/ok")), 0u);
}

TEST_F(HttpRequestTest, PlainHttpUrlIsRequestedOverTlsOnItsPort) {
  OnFacts();
  const std::string plain = "http://localhost:" + std::to_string(server_.Port()) + "/ok";
  EXPECT_EQ(StatusOf(plain), 200u);
  EXPECT_EQ(StatusOf(server_.Url("/to?" + plain)), 200u);
  EXPECT_EQ(server_.RequestCount(), 3);
}

TEST_F(HttpRequestTest, RedirectWithoutLocationIsTheAnswer) {
  OnFacts();
  EXPECT_EQ(StatusOf(server_.Url("/nowhere")), 302u);
}

TEST_F(HttpRequestTest, LocationThatIsNoUrlOrTooLongEndsTheRequest) {
  OnFacts();
  EXPECT_EQ(StatusOf(server_.Url("/relative")), 0u);
  EXPECT_EQ(StatusOf(server_.Url("/long")), 0u);
  EXPECT_EQ(StatusOf(server_.Url("/to?")), 0u);
  EXPECT_EQ(server_.RequestCount(), 3);
}

TEST_F(HttpRequestTest, StatusIsNotReadWhenNobodyWantsIt) {
  OnFacts();
  const auto request = Get(server_.Url("/loop"));
  request->read_response = false;
  const auto response = request->Send();
  EXPECT_TRUE(response->Arrived());
  EXPECT_EQ(response->status, 0u);
  EXPECT_EQ(server_.RequestCount(), 1);
}

TEST_F(HttpRequestTest, UrlPartsHaveTheirBounds) {
  OnFacts();
  const std::string path = "/ok?" + std::string(1019, 'a');
  EXPECT_EQ(path.size(), 1023u);
  EXPECT_EQ(StatusOf(server_.Url(path)), 200u);
  EXPECT_EQ(ErrorOf(server_.Url(path + "a")), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(ErrorOf("https://" + std::string(260, 'h') + "/ok"), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
  EXPECT_EQ(ErrorOf("https://" + std::string(243, 'h') + ".invalid/ok"),
            static_cast<DWORD>(ERROR_INTERNET_NAME_NOT_RESOLVED));
  for (const char* none : {"", "nonsense", "ftp://localhost/ok", "https:///ok", "https://localhost:99999/", "/ok"}) {
    EXPECT_EQ(StatusOf(none), 0u) << none;
  }
  EXPECT_EQ(server_.RequestCount(), 1);
}

TEST_F(HttpRequestTest, AnswersThatBreakOffOrAreNoneFail) {
  OnFacts();
  EXPECT_EQ(ErrorOf(server_.Url("/early")), static_cast<DWORD>(ERROR_INTERNET_CONNECTION_RESET));
  EXPECT_EQ(ErrorOf(server_.Url("/garbage")), static_cast<DWORD>(ERROR_HTTP_INVALID_SERVER_RESPONSE));
  EXPECT_EQ(StatusOf(server_.Url("/cut")), 200u) << "the body does not count";
}

TEST_F(HttpRequestTest, UnknownHostAndRefusedConnectionFailAtOnce) {
  OnFacts();
  EXPECT_EQ(ErrorOf("https://nobody.invalid/"), static_cast<DWORD>(ERROR_INTERNET_NAME_NOT_RESOLVED));
  EXPECT_EQ(ErrorOf(server_.Url("/ok", "closed")), static_cast<DWORD>(ERROR_INTERNET_CANNOT_CONNECT));
}

TEST_F(HttpRequestTest, CertificatesAreVerified) {
  OnFacts();
  EXPECT_EQ(ErrorOf(server_.Url("/ok", "wrong_name")), static_cast<DWORD>(ERROR_INTERNET_SEC_CERT_CN_INVALID));
  EXPECT_EQ(ErrorOf(server_.Url("/ok", "expired")), static_cast<DWORD>(ERROR_INTERNET_SEC_CERT_DATE_INVALID));
  EXPECT_EQ(ErrorOf(server_.Url("/ok", "stranger")), static_cast<DWORD>(ERROR_INTERNET_INVALID_CA));
  EXPECT_EQ(server_.RequestCount(), 0);
}

TEST_F(HttpRequestTest, CertificatesAreJudgedAtTheMachinesTime) {
  OnFacts(R"("clock": {"at": "1999-06-01T00:00:00", "stands": true}, )");
  EXPECT_EQ(ErrorOf(server_.Url("/ok")), static_cast<DWORD>(ERROR_INTERNET_SEC_CERT_DATE_INVALID));
}

TEST_F(HttpRequestTest, WithoutTheMachinesRootNobodyHereIsTrusted) {
  Start(R"({"hosts": {"localhost": "127.0.0.1"}})");
  EXPECT_EQ(ErrorOf(server_.Url("/ok")), static_cast<DWORD>(ERROR_INTERNET_INVALID_CA));
}

TEST_F(HttpRequestTest, ServerThatNeverAnswersCostsTheStepTime) {
  OnFastMachine();
  for (const auto& url : {server_.Url("/never"), server_.Url("/ok", "silent")}) {
    const auto request = Get(url);
    request->times = {5000, 0};
    const DWORD before = GetTickCount();
    EXPECT_FALSE(request->Send()->Arrived());
    EXPECT_GE(GetTickCount() - before, 5000u);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_TIMEOUT));
  }
}

TEST_F(HttpRequestTest, ServerThatDribblesIsEndedByTheWholeTime) {
  OnFastMachine();
  const auto request = Get(server_.Url("/slow"));
  request->times = {5000, 10000};
  const DWORD before = GetTickCount();
  EXPECT_FALSE(request->Send()->Arrived());
  EXPECT_GE(GetTickCount() - before, 10000u);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_OPERATION_CANCELLED));
}

class FailingCall : public HttpRequestTest, public testing::WithParamInterface<const char*> {};

TEST_P(FailingCall, GivesAnEmptyResponse) {
  OnFacts(std::string(R"("faults": [{"operation": ")") + GetParam() + R"("}], )");
  const auto request = CreateHttpRequest(FromUtf8(server_.Url("/ok")), String(), String(), String());
  request->times = {5000, 0};
  const auto response = request->Send();
  EXPECT_FALSE(response->session || response->connection || response->request);
  EXPECT_EQ(SendHttpRequest(request), 1) << "the next one is none the worse";
}
INSTANTIATE_TEST_SUITE_P(Each, FailingCall,
                         testing::Values("InternetCrackUrlW", "InternetOpenW", "InternetSetOptionW", "InternetConnectW",
                                         "HttpOpenRequestW", "HttpSendRequestW", "HttpQueryInfoW"),
                         [](const auto& call) { return std::string(call.param); });

TEST_F(HttpRequestTest, ProxyIsAskedInsteadOfTheServer) {
  OnFacts();
  const auto request = CreateHttpRequest(FromUtf8(server_.Url("/ok")), String(),
                                         FromUtf8("127.0.0.1:" + std::to_string(server_.Port("closed"))), String());
  EXPECT_EQ(SendHttpRequest(request), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNET_CANNOT_CONNECT));
  EXPECT_EQ(server_.RequestCount(), 0);
}

TEST(HeaderBlockTest, NamesInOrderValuesJoined) {
  EXPECT_EQ(HeaderBlock({}), String());
  EXPECT_EQ(HeaderBlock({{TEXT("b"), {TEXT("1")}}, {TEXT("a"), {TEXT("2"), TEXT("3")}}, {TEXT("c"), {}}}),
            String(TEXT("a:2,3\nb:1\nc:")));
}

}  // namespace
}  // namespace vanta::HttpLib
