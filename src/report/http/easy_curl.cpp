#include "report/http/easy_curl.h"

#include "report/http/easy_options.h"
#include "report/http/network_library.h"
#include "report/http/transacted_file.h"
#include "report/log/logger.h"

namespace vanta {
namespace {

constexpr WCHAR kLogTag[] = TEXT("EasyCurl");
constexpr long kConnectTime = 30000;   // ms
constexpr long kTransferTime = 60000;  // ms

class BusyMark {
 public:
  explicit BusyMark(std::atomic<bool>& mark) : mark_(mark) { mark_ = true; }
  ~BusyMark() { mark_ = false; }
  BusyMark(const BusyMark&) = delete;
  BusyMark& operator=(const BusyMark&) = delete;

 private:
  std::atomic<bool>& mark_;
};

}  // namespace

CEasyCurl::CEasyCurl() : functions_(GetNetworkFunctions()) {
  if (functions_ && functions_->easy_init) easy_ = functions_->easy_init();
  Set(EasyConnectTimeoutMs, kConnectTime);
  Set(EasyTimeoutMs, kTransferTime);
}

CEasyCurl::~CEasyCurl() {
  Drop();
  if (headers_ && functions_->slist_free_all) functions_->slist_free_all(headers_);
  if (form_ && functions_->formfree) functions_->formfree(form_);
}

void CEasyCurl::Drop() {
  if (easy_ && functions_->easy_cleanup) functions_->easy_cleanup(easy_);
  easy_ = nullptr;
}

template <class Value>
bool CEasyCurl::Set(int option, Value value) {
  return easy_ && functions_->easy_setopt && functions_->easy_setopt(easy_, option, value) == EasyOk;
}

bool CEasyCurl::AddHeader(const String& line) {
  if (!functions_ || !functions_->slist_append) return false;
  void* const longer = functions_->slist_append(headers_, ToUtf8(line).c_str());
  if (longer) headers_ = longer;
  return longer != nullptr;
}

bool CEasyCurl::SetUrl(const String& url) { return Set(EasyUrl, ToUtf8(url).c_str()); }

bool CEasyCurl::AddFormField(const String& name, const String& content) {
  if (!functions_ || !functions_->formadd) return false;
  return functions_->formadd(&form_, &form_end_, int{EasyFormCopyName}, ToUtf8(name).c_str(), int{EasyFormCopyContents},
                             ToUtf8(content).c_str(), int{EasyFormEnd}) == 0;
}

int CEasyCurl::Perform(const String& download_path) {
  if (!easy_) return EasyFailedInit;
  if (const int code = Prepare(download_path); code != EasyOk) return code;
  const int code = Transfer();
  download_.Reset();
  if (code != EasyOk) Log(kLogTag, TEXT("Curl_easy_perform return %d"), code);
  return code == EasyPartialFile ? EasyOk : code;
}

int CEasyCurl::Prepare(const String& download_path) {
  body_.clear();
  header_text_.clear();
  received_ = 0;
  if (!download_path.empty() && !OpenDownload(download_path)) return EasyWriteError;
  if (SetCallbacks()) return EasyOk;
  Drop();
  download_.Reset();
  return EasyFailedInit;
}

bool CEasyCurl::SetCallbacks() {
  void* const self = this;
  return Set(EasyWriteFunction, &CEasyCurl::OnBody) && Set(EasyWriteData, self) &&
         Set(EasyHeaderFunction, &CEasyCurl::OnHeader) && Set(EasyHeaderData, self) && Set(EasyProgressOff, 0L) &&
         Set(EasyProgressFunction, &CEasyCurl::OnProgress) && Set(EasyProgressData, self) &&
         Set(EasyHttpHeader, headers_) && Set(EasyFollowLocation, 1L);
}

bool CEasyCurl::OpenDownload(const String& path) {
  download_.Reset(CreateFileForDownload(path, transaction_));
  return static_cast<bool>(download_);
}

int CEasyCurl::Transfer() {
  if (form_) Set(EasyHttpPost, form_);
  if (header_only_) Set(EasyNoBody, 1L);
  const BusyMark busy(busy_);
  return functions_->easy_perform ? functions_->easy_perform(easy_) : EasyFailedInit;
}

// How much was taken; less than `size` ends the transfer with a write error.
size_t CEasyCurl::Take(const char* bytes, size_t size) {
  received_ += size;
  if (!download_) {
    body_.append(bytes, size);
    return size;
  }
  DWORD written = 0;
  return WriteFile(download_.Get(), bytes, static_cast<DWORD>(size), &written, nullptr) ? written : 0;
}

size_t CEasyCurl::OnBody(char* bytes, size_t size, size_t count, void* self) {
  return static_cast<CEasyCurl*>(self)->Take(bytes, size * count);
}

size_t CEasyCurl::OnHeader(char* bytes, size_t size, size_t count, void* self) {
  static_cast<CEasyCurl*>(self)->header_text_.append(bytes, size * count);
  return size * count;
}

// Nothing here ends a transfer; what came is counted by OnBody.
int CEasyCurl::OnProgress(void*, double, double, double, double) { return 0; }

}  // namespace vanta
