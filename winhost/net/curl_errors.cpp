#include "winhost/net/curl_errors.h"

#include <openssl/x509_vfy.h>
#include <wininet.h>

namespace winhost {
namespace {

DWORD CertificateError(CURL* easy) {
  long verdict = X509_V_OK;
  curl_easy_getinfo(easy, CURLINFO_SSL_VERIFYRESULT, &verdict);
  switch (verdict) {
    // The chain holds, or libcurl did not come to tell: it is the name.
    case X509_V_OK:
    case X509_V_ERR_UNSPECIFIED:
      return ERROR_INTERNET_SEC_CERT_CN_INVALID;
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
      return ERROR_INTERNET_SEC_CERT_DATE_INVALID;
    default:
      return ERROR_INTERNET_INVALID_CA;
  }
}

}  // namespace

DWORD InternetErrorOf(CURL* easy, CURLcode code) {
  switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return ERROR_INTERNET_NAME_NOT_RESOLVED;
    case CURLE_COULDNT_CONNECT:
      return ERROR_INTERNET_CANNOT_CONNECT;
    case CURLE_PEER_FAILED_VERIFICATION:
      return CertificateError(easy);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CACERT_BADFILE:
      return ERROR_INTERNET_SECURITY_CHANNEL_ERROR;
    case CURLE_OPERATION_TIMEDOUT:
      return ERROR_INTERNET_TIMEOUT;
    case CURLE_SEND_ERROR:
      return ERROR_INTERNET_CONNECTION_ABORTED;
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
      return ERROR_INTERNET_CONNECTION_RESET;
    case CURLE_UNSUPPORTED_PROTOCOL:  // an answer that is none of HTTP's
    case CURLE_WEIRD_SERVER_REPLY:
      return ERROR_HTTP_INVALID_SERVER_RESPONSE;
    case CURLE_URL_MALFORMAT:
      return ERROR_INTERNET_INVALID_URL;
    default:
      return ERROR_INTERNET_INTERNAL_ERROR;
  }
}

}  // namespace winhost
