#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

/// Which file it is, whatever its name: two names with equal identities are the same file.
struct zelqFileIdentity {
    dev_t device;
    ino_t inode;

    friend bool operator==(const zelqFileIdentity&, const zelqFileIdentity&) = default;

    /// Of the file that a name leads to, through links too; none if there is no such file.
    [[nodiscard]] static std::optional<zelqFileIdentity> of(const std::string& name) noexcept;
    /// Of an open file; none if the descriptor is not open.
    [[nodiscard]] static std::optional<zelqFileIdentity> ofDescriptor(int descriptor) noexcept;
};
