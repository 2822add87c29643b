#pragma once

#include "platform/files/FileDescriptor.h"

#include <sys/types.h>

namespace glimmerly {

/// The running `process` as a file, readable from the process's end on; none when there is no such process,
/// with `errno` set.
[[nodiscard]] FileDescriptor openProcess(pid_t process);

} // namespace glimmerly
