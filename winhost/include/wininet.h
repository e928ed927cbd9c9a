// WinINet: HTTP requests, really made, by libcurl.
//
// Promises: certificates are always verified, at the machine's time, against the system's store and the machine's own
// roots (the fact "tls_roots"); names are looked up in the fact "hosts" first, and names below .invalid that are not
// there are unknown at once. HttpSendRequestW returns when the answer's headers are there and reads no body. Time-outs
// follow the machine's clock (that for receiving holds for sending too); on a standing clock they last as long as on a
// running one, and the seconds that pass move it on. A handle may be closed from another thread while HttpSendRequestW
// works on it, which then fails with ERROR_INTERNET_OPERATION_CANCELLED; closing a session or connection leaves what
// was opened from it alone. Simplifies: no preconfigured proxy (the access type is PRECONFIG, the proxy none), no
// cookies, no cache, no connection is kept for the next request; redirects are never followed
// (INTERNET_FLAG_NO_AUTO_REDIRECT must be given, ERROR_NOT_SUPPORTED otherwise). Of the header queries there are the
// two below. To fail: the fault plan, by function name; the subject is the URL for InternetCrackUrlW, the host for
// InternetConnectW, the path for HttpOpenRequestW, the whole URL for HttpSendRequestW and HttpQueryInfoW.
#pragma once

#include <windef.h>

using HINTERNET = LPVOID;
using INTERNET_PORT = WORD;

#define INTERNET_DEFAULT_HTTP_PORT 80
#define INTERNET_DEFAULT_HTTPS_PORT 443

#define INTERNET_OPEN_TYPE_PRECONFIG 0
#define INTERNET_OPEN_TYPE_DIRECT 1
#define INTERNET_OPEN_TYPE_PROXY 3
#define INTERNET_SERVICE_HTTP 3

#define INTERNET_FLAG_SECURE 0x00800000
#define INTERNET_FLAG_KEEP_CONNECTION 0x00400000
#define INTERNET_FLAG_NO_AUTO_REDIRECT 0x00200000
#define INTERNET_FLAG_NO_COOKIES 0x00080000

#define INTERNET_OPTION_CONNECT_TIMEOUT 2  // DWORD, milliseconds
#define INTERNET_OPTION_CONNECT_RETRIES 3  // DWORD, how often connecting is tried
#define INTERNET_OPTION_SEND_TIMEOUT 5     // DWORD, milliseconds
#define INTERNET_OPTION_RECEIVE_TIMEOUT 6  // DWORD, milliseconds from one piece of the answer to the next
#define INTERNET_OPTION_PROXY 38           // INTERNET_PROXY_INFO

#define HTTP_QUERY_STATUS_CODE 19
#define HTTP_QUERY_LOCATION 33

#define INTERNET_ERROR_BASE 12000
#define ERROR_INTERNET_TIMEOUT (INTERNET_ERROR_BASE + 2)
#define ERROR_INTERNET_INTERNAL_ERROR (INTERNET_ERROR_BASE + 4)
#define ERROR_INTERNET_INVALID_URL (INTERNET_ERROR_BASE + 5)
#define ERROR_INTERNET_UNRECOGNIZED_SCHEME (INTERNET_ERROR_BASE + 6)
#define ERROR_INTERNET_NAME_NOT_RESOLVED (INTERNET_ERROR_BASE + 7)
#define ERROR_INTERNET_INVALID_OPTION (INTERNET_ERROR_BASE + 9)
#define ERROR_INTERNET_BAD_OPTION_LENGTH (INTERNET_ERROR_BASE + 10)
#define ERROR_INTERNET_OPERATION_CANCELLED (INTERNET_ERROR_BASE + 17)
#define ERROR_INTERNET_INCORRECT_HANDLE_TYPE (INTERNET_ERROR_BASE + 18)
#define ERROR_INTERNET_CANNOT_CONNECT (INTERNET_ERROR_BASE + 29)
#define ERROR_INTERNET_CONNECTION_ABORTED (INTERNET_ERROR_BASE + 30)
#define ERROR_INTERNET_CONNECTION_RESET (INTERNET_ERROR_BASE + 31)
#define ERROR_INTERNET_SEC_CERT_DATE_INVALID (INTERNET_ERROR_BASE + 37)
#define ERROR_INTERNET_SEC_CERT_CN_INVALID (INTERNET_ERROR_BASE + 38)
#define ERROR_INTERNET_INVALID_CA (INTERNET_ERROR_BASE + 45)
#define ERROR_HTTP_HEADER_NOT_FOUND (INTERNET_ERROR_BASE + 150)
#define ERROR_HTTP_INVALID_SERVER_RESPONSE (INTERNET_ERROR_BASE + 152)
#define ERROR_INTERNET_SECURITY_CHANNEL_ERROR (INTERNET_ERROR_BASE + 157)

enum INTERNET_SCHEME {
  INTERNET_SCHEME_UNKNOWN = -1,
  INTERNET_SCHEME_DEFAULT = 0,
  INTERNET_SCHEME_HTTP = 3,
  INTERNET_SCHEME_HTTPS = 4
};

// A part whose text pointer is null is not asked for; a query that is not asked for stays behind the path. Lengths are
// characters: the buffer's with room for the terminator going in, the text's without it coming out.
struct URL_COMPONENTSW {
  DWORD dwStructSize;
  LPWSTR lpszScheme;
  DWORD dwSchemeLength;
  INTERNET_SCHEME nScheme;
  LPWSTR lpszHostName;
  DWORD dwHostNameLength;
  INTERNET_PORT nPort;
  LPWSTR lpszUserName;
  DWORD dwUserNameLength;
  LPWSTR lpszPassword;
  DWORD dwPasswordLength;
  LPWSTR lpszUrlPath;
  DWORD dwUrlPathLength;
  LPWSTR lpszExtraInfo;
  DWORD dwExtraInfoLength;
};
using LPURL_COMPONENTSW = URL_COMPONENTSW*;

struct INTERNET_PROXY_INFO {
  DWORD dwAccessType;
  LPCTSTR lpszProxy;
  LPCTSTR lpszProxyBypass;
};

// Schemes http and https. Only host name, port and path are given back; another part that is asked for, and flags, are
// ERROR_NOT_SUPPORTED. Too small a buffer: ERROR_INSUFFICIENT_BUFFER.
BOOL WINAPI InternetCrackUrlW(LPCWSTR url, DWORD characters, DWORD flags, LPURL_COMPONENTSW parts);

HINTERNET WINAPI InternetOpenW(LPCWSTR agent, DWORD access_type, LPCWSTR proxy, LPCWSTR bypass, DWORD flags);
// Options of a session hold for connections opened later.
BOOL WINAPI InternetSetOptionW(HINTERNET handle, DWORD option, LPVOID value, DWORD bytes);
// Nothing is sent yet.
HINTERNET WINAPI InternetConnectW(HINTERNET session, LPCWSTR host, INTERNET_PORT port, LPCWSTR user, LPCWSTR password,
                                  DWORD service, DWORD flags, DWORD_PTR context);
HINTERNET WINAPI HttpOpenRequestW(HINTERNET connection, LPCWSTR verb, LPCWSTR path, LPCWSTR version, LPCWSTR referrer,
                                  LPCWSTR* accept_types, DWORD flags, DWORD_PTR context);
// Header lines are parted by CR LF or LF; `characters` may be (DWORD)-1 for a terminated text.
BOOL WINAPI HttpSendRequestW(HINTERNET request, LPCWSTR headers, DWORD characters, LPVOID body, DWORD bytes);
// `bytes` is the buffer's size going in; coming out the text's without terminator, or with it when the buffer is too
// small (ERROR_INSUFFICIENT_BUFFER).
BOOL WINAPI HttpQueryInfoW(HINTERNET request, DWORD what, LPVOID buffer, LPDWORD bytes, LPDWORD index);
BOOL WINAPI InternetCloseHandle(HINTERNET handle);
