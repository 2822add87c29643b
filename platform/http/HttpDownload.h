#pragma once

#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <stop_token>
#include <string>

namespace glimmerly {

struct HttpDownload {
    std::string url;
    std::uint64_t largest = 0;            ///< bytes; what is longer fails
    int patience = 30;                    ///< seconds without a connection, or without a byte
    int longest = 0;                      ///< seconds for all of it; 0: no limit
    std::string certificateAuthorities{}; ///< a PEM file in place of the system's; empty: the system's
};

/// Takes what arrives, piece by piece; a failure of it ends the download and is its outcome.
using ReceiveBytes = std::function<Result<void>(std::span<const std::byte>)>;

/// Fetches `download` over HTTPS, redirects to other servers included, and waits for it; an error unless all
/// of it came with the status 200; the body of any other answer is not read. Gives up within a fraction of a
/// second of `stop`.
[[nodiscard]] Result<void> fetch(const HttpDownload& download, const ReceiveBytes& receive,
                                 const std::stop_token& stop);

} // namespace glimmerly
