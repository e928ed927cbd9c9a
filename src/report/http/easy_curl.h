// The network-library client: one transfer through the easy interface of the maker's network library.
#pragma once

#include <windows.h>

#include "base/text.h"
#include "base/unique.h"
#include "report/http/network_functions.h"

#include <atomic>
#include <string>

namespace vanta {

// One thread at a time; IsBusy from any. Without the library (LoadNetworkLibrary) every operation fails.
class CEasyCurl {
 public:
  // Connecting may take 30 seconds, the whole transfer 60.
  CEasyCurl();
  ~CEasyCurl();
  CEasyCurl(const CEasyCurl&) = delete;
  CEasyCurl& operator=(const CEasyCurl&) = delete;

  // A whole line, "Name: value". False when it was not added.
  bool AddHeader(const String& line);
  bool SetUrl(const String& url);
  // Adds a field to the form that is posted instead of getting the URL. False when it was not added.
  bool AddFormField(const String& name, const String& content);
  // Ask for the headers alone.
  void SetHeaderOnly(bool only) { header_only_ = only; }
  // The download is created inside this file-system transaction, which stays the caller's.
  void SetTransaction(HANDLE transaction) { transaction_ = transaction; }

  // Blocks until the transfer is over, redirects included. With a path the answer's body goes to that file, which is
  // created anew; otherwise it is kept here. 0 on success, also when the file came in part; otherwise curl's number.
  // An option that cannot be set drops the handle for good.
  int Perform(const String& download_path = String());

  const std::string& body() const { return body_; }
  const std::string& headers() const { return header_text_; }
  // Bytes of the body that have come so far, whether they are kept or written.
  ULONGLONG received() const { return received_; }
  bool IsBusy() const { return busy_; }

 private:
  template <class Value>
  bool Set(int option, Value value);
  int Prepare(const String& download_path);
  bool SetCallbacks();
  bool OpenDownload(const String& path);
  int Transfer();
  void Drop();
  size_t Take(const char* bytes, size_t size);

  static size_t OnBody(char* bytes, size_t size, size_t count, void* self);
  static size_t OnHeader(char* bytes, size_t size, size_t count, void* self);
  static int OnProgress(void* self, double download_total, double downloaded, double upload_total, double uploaded);

  const CVantaNetExportFuncs* functions_;
  void* easy_ = nullptr;
  void* headers_ = nullptr;
  void* form_ = nullptr;
  void* form_end_ = nullptr;
  UniqueFile download_;
  HANDLE transaction_ = nullptr;
  bool header_only_ = false;
  std::atomic<bool> busy_{false};
  std::string body_;
  std::string header_text_;
  std::atomic<ULONGLONG> received_{0};
};

}  // namespace vanta
