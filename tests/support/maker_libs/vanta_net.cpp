// A stand-in for the maker's network library: libcurl behind the function table. MAKER_NET_INIT: what InitLibs returns.
// MAKER_NET_GLOBAL: what the global initialisation returns. MAKER_NET_MISSING: an entry that stays null ("perform",
// "init"). MAKER_NET_REFUSES: the number of an option that cannot be set. MAKER_NET_CODE: what a transfer returns in
// place of its own result. MAKER_NET_ROOT: the file of the root certificate that is trusted. Every call is told.
#include <curl/curl.h>

#include <cstdarg>
#include <cstring>
#include <string>

#include "report/http/network_functions.h"
#include "tests/support/maker_libs/settings.h"

namespace {

using maker_libs::Setting;
using maker_libs::Tell;

int GlobalInit(long flags) {
  Tell(("global " + std::to_string(flags)).c_str());
  const auto planned = static_cast<int>(Setting("MAKER_NET_GLOBAL", 0));
  return planned ? planned : curl_global_init(flags);
}

void* EasyInit() {
  CURL* easy = curl_easy_init();
  curl_easy_setopt(easy, CURLOPT_PROXY, "");
  if (const char* root = std::getenv("MAKER_NET_ROOT")) curl_easy_setopt(easy, CURLOPT_CAINFO, root);
  return easy;
}

int EasySetopt(void* easy, int option, ...) {
  Tell(("set " + std::to_string(option)).c_str());
  if (option == static_cast<int>(Setting("MAKER_NET_REFUSES", 0))) return CURLE_UNKNOWN_OPTION;
  va_list arguments;
  va_start(arguments, option);
  const auto which = static_cast<CURLoption>(option);
  const CURLcode code = option < CURLOPTTYPE_OBJECTPOINT ? curl_easy_setopt(easy, which, va_arg(arguments, long))
                                                         : curl_easy_setopt(easy, which, va_arg(arguments, void*));
  va_end(arguments);
  return code;
}

int EasyPerform(void* easy) {
  const CURLcode code = curl_easy_perform(easy);
  return static_cast<int>(Setting("MAKER_NET_CODE", static_cast<unsigned long>(code)));
}

void EasyCleanup(void* easy) {
  Tell("cleanup");
  curl_easy_cleanup(easy);
}

void* ListAppend(void* list, const char* text) { return curl_slist_append(static_cast<curl_slist*>(list), text); }
void ListFree(void* list) { curl_slist_free_all(static_cast<curl_slist*>(list)); }

// Only the one form that is used: copied name, copied content, end.
int FormAdd(void** first, void** last, ...) {
  va_list arguments;
  va_start(arguments, last);
  const int name = va_arg(arguments, int);
  const char* name_text = va_arg(arguments, const char*);
  const int content = va_arg(arguments, int);
  const char* content_text = va_arg(arguments, const char*);
  const int end = va_arg(arguments, int);
  va_end(arguments);
  if (name != CURLFORM_COPYNAME || content != CURLFORM_COPYCONTENTS || end != CURLFORM_END) return 1;
  return curl_formadd(reinterpret_cast<curl_httppost**>(first), reinterpret_cast<curl_httppost**>(last),
                      CURLFORM_COPYNAME, name_text, CURLFORM_COPYCONTENTS, content_text, CURLFORM_END);
}
void FormFree(void* form) { curl_formfree(static_cast<curl_httppost*>(form)); }

bool IsMissing(const char* entry) {
  const char* missing = std::getenv("MAKER_NET_MISSING");
  return missing && std::strcmp(missing, entry) == 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int WINAPI InitLibs(vanta::CVantaNetExportFuncs* table) {
  Tell(table->size == sizeof(*table) ? "InitLibs" : "InitLibs with a wrong size");
  table->version = 1;
  table->global_init = GlobalInit;
  table->global_cleanup = curl_global_cleanup;
  if (!IsMissing("init")) table->easy_init = EasyInit;
  table->easy_setopt = EasySetopt;
  if (!IsMissing("perform")) table->easy_perform = EasyPerform;
  table->easy_cleanup = EasyCleanup;
  table->slist_append = ListAppend;
  table->slist_free_all = ListFree;
  table->formadd = FormAdd;
  table->formfree = FormFree;
  return static_cast<int>(Setting("MAKER_NET_INIT", 0));
}
