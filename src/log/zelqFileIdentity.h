#pragma once

#include <sys/types.h>

/// Which file it is, whatever the name it was opened by.
struct zelqFileIdentity {
    dev_t device;
    ino_t inode;
    friend bool operator==(const zelqFileIdentity&, const zelqFileIdentity&) = default;
};
