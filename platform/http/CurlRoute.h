#pragma once

#include <curl/curl.h>

#include <string>

namespace glimmerly {

/// The way that a request takes to its server.
struct CurlRoute {
    std::string proxy;                  ///< empty: none
    std::string certificateAuthorities; ///< a PEM file; empty: the system's
};

/// Has `transfer` go that way, to servers whose certificates are valid, by `protocols` as in "http,https".
void setRoute(CURL* transfer, const CurlRoute& route, const char* protocols);

template <typename T>
void setOption(CURL* transfer, CURLoption option, T value) {
    // Options are known to this libcurl, so what may fail is copying a text.
    (void)curl_easy_setopt(transfer, option, value);
}

} // namespace glimmerly
