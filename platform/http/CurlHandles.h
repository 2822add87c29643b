#pragma once

#include <curl/curl.h>

#include <memory>

namespace glimmerly {

/// Gives back what libcurl made.
template <auto giveBack>
struct CurlDeleter {
    void operator()(auto* made) const { (void)giveBack(made); }
};

using CurlEasy = std::unique_ptr<CURL, CurlDeleter<curl_easy_cleanup>>;
using CurlMulti = std::unique_ptr<CURLM, CurlDeleter<curl_multi_cleanup>>;
using CurlList = std::unique_ptr<curl_slist, CurlDeleter<curl_slist_free_all>>;

} // namespace glimmerly
