// Owners of libcurl's handles.
#pragma once

#include <curl/curl.h>

#include <array>
#include <memory>
#include <string>

namespace winhost {

struct CurlEasyDelete {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
using CurlEasy = std::unique_ptr<CURL, CurlEasyDelete>;

struct CurlMultiDelete {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
using CurlMulti = std::unique_ptr<CURLM, CurlMultiDelete>;

// Null when libcurl cannot be used. Any thread; the library is initialised once a process.
CurlEasy MakeCurlEasy();
CurlMulti MakeCurlMulti();

// The string lists of one transfer, which must live as long as its handle.
class CurlLists {
 public:
  CurlLists() = default;
  ~CurlLists() {
    for (curl_slist* list : lists_) curl_slist_free_all(list);
  }
  CurlLists(const CurlLists&) = delete;
  CurlLists& operator=(const CurlLists&) = delete;
  void Add(std::size_t list, const std::string& text) {
    if (curl_slist* longer = curl_slist_append(lists_[list], text.c_str())) lists_[list] = longer;
  }
  curl_slist* Get(std::size_t list) const { return lists_[list]; }

 private:
  std::array<curl_slist*, 2> lists_{};
};

}  // namespace winhost
