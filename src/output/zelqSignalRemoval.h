#pragma once

#include <cstddef>
#include <string>

/// While it lives, a signal that ends the program (hang-up, interrupt, termination) removes a file
/// first. Can be made and destroyed on any thread.
class zelqSignalRemoval {
public:
    /// Installs the signal handlers, once and for the whole program. A signal that is ignored stays
    /// ignored, as for a program that is to survive its terminal.
    static void install() noexcept;

    /// The file need not exist yet. Beyond eight names at a time, or if the name is longer than the
    /// system takes, the file is not removed.
    explicit zelqSignalRemoval(const std::string& name) noexcept;
    ~zelqSignalRemoval();
    zelqSignalRemoval(const zelqSignalRemoval&) = delete;
    zelqSignalRemoval& operator=(const zelqSignalRemoval&) = delete;

private:
    static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

    std::size_t slot_ = kNoSlot;
};
