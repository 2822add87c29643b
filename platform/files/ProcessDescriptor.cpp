#include "platform/files/ProcessDescriptor.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace glimmerly {

FileDescriptor openProcess(pid_t process) {
    // The C library's own header does not serve C++ (2.36).
    return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

} // namespace glimmerly
