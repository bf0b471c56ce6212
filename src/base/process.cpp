#include "base/process.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace zel::base {

void PrepareProcess() noexcept {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        // The lowest free descriptor is this one. Open for reading alone, so that a write fails.
        ::open("/dev/null", O_RDONLY | O_NOCTTY);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace zel::base
