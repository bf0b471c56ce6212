#include "programs/cli/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace zel::cli {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void OnInterrupt(int signal) {
    g_interrupted = signal;
}

}  // namespace

void HandleInterrupts() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM}) {
        // Ignored by whoever started the program: a shell does so for a program in the background.
        struct sigaction inherited {};
        if (sigaction(signal, nullptr, &inherited) == 0 && inherited.sa_handler == SIG_IGN) continue;
        sigaction(signal, &action, nullptr);
    }
}

bool WasInterrupted() noexcept {
    return g_interrupted != 0;
}

ExitCode InterruptCode() noexcept {
    return static_cast<ExitCode>(static_cast<int>(ExitCode::kSignal) + g_interrupted);
}

}  // namespace zel::cli
