#pragma once

#include "platform/files/FileDescriptor.h"

#include <optional>
#include <span>
#include <vector>

namespace glimmerly {

/// One byte and the open files that came with it.
struct PassedDescriptors {
    char message = 0;
    std::vector<FileDescriptor> descriptors; ///< close on exec
};

/// Sends `message`, and with it the open files `descriptors`, over a local socket; false when that failed.
[[nodiscard]] bool sendWithDescriptors(int socket, char message, std::span<const int> descriptors);
/// Waits for one byte; none at the end of the connection.
[[nodiscard]] std::optional<PassedDescriptors> receiveWithDescriptors(int socket);

} // namespace glimmerly
