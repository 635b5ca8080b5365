#include "output/zelqSignalRemoval.h"

#include <array>
#include <atomic>
#include <climits>
#include <csignal>

#include <unistd.h>

namespace {

constexpr std::array kSignals{SIGHUP, SIGINT, SIGTERM};

/// The handler may run at any moment on any thread, so it takes no lock and the names are not on
/// the heap: nothing that it reads can be freed.
struct Slot {
    enum State : int { Free, Changing, Set, Removing };

    std::atomic<int> state = Free;
    std::array<char, PATH_MAX> name{};
};

static_assert(std::atomic<int>::is_always_lock_free, "a signal handler uses it");

constinit std::array<Slot, 8> slots;

extern "C" void removeAndEnd(int signal) {
    for (Slot& slot : slots) {
        int expected = Slot::Set;
        if (slot.state.compare_exchange_strong(expected, Slot::Removing)) {
            ::unlink(slot.name.data());
        }
    }
    // Delivered when the handler returns, so that the exit status names the signal.
    std::signal(signal, SIG_DFL);  // NOLINT(cert-err33-c)
    std::raise(signal);            // NOLINT(cert-err33-c)
}

}  // namespace

void zelqSignalRemoval::install() noexcept {
    struct sigaction action {};
    action.sa_handler = removeAndEnd;
    ::sigfillset(&action.sa_mask);
    for (const int signal : kSignals) {
        struct sigaction old {};
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN) {
            ::sigaction(signal, &action, nullptr);
        }
    }
}

zelqSignalRemoval::zelqSignalRemoval(const std::string& name) noexcept {
    for (std::size_t i = 0; i < slots.size() && name.size() < slots[i].name.size(); ++i) {
        int expected = Slot::Free;
        if (slots[i].state.compare_exchange_strong(expected, Slot::Changing)) {
            slots[i].name[name.copy(slots[i].name.data(), name.size())] = '\0';
            slots[i].state = Slot::Set;
            slot_ = i;
            return;
        }
    }
}

zelqSignalRemoval::~zelqSignalRemoval() {
    int expected = Slot::Set;
    if (slot_ != kNoSlot) {
        // A slot whose name the handler is reading is not freed: the program ends anyway.
        slots[slot_].state.compare_exchange_strong(expected, Slot::Free);
    }
}
