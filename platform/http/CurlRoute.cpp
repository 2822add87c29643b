#include "platform/http/CurlRoute.h"

namespace glimmerly {

void setRoute(CURL* transfer, const CurlRoute& route, const char* protocols) {
    setOption(transfer, CURLOPT_PROTOCOLS_STR, protocols);
    setOption(transfer, CURLOPT_REDIR_PROTOCOLS_STR, protocols);
    setOption(transfer, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    setOption(transfer, CURLOPT_SSL_VERIFYPEER, 1L);
    setOption(transfer, CURLOPT_SSL_VERIFYHOST, 2L);
    setOption(transfer, CURLOPT_PROXY, route.proxy.c_str());
    if (!route.certificateAuthorities.empty())
        setOption(transfer, CURLOPT_CAINFO, route.certificateAuthorities.c_str());
    setOption(transfer, CURLOPT_NOSIGNAL, 1L);
    // A name server that does not answer would otherwise hold up the end of the program for as long as it
    // likes.
    setOption(transfer, CURLOPT_QUICK_EXIT, 1L);
}

} // namespace glimmerly
