#pragma once

#include <sys/types.h>

/// Which file it is, whatever its name: two names with equal identities are the same file.
struct zelqFileIdentity {
    dev_t device;
    ino_t inode;

    friend bool operator==(const zelqFileIdentity&, const zelqFileIdentity&) = default;
};
