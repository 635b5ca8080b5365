#pragma once

#include <string>

struct stat;

/// The owner, group, permissions and access control list of a file that another one replaces.
class zelqFileRights {
public:
    /// Gives the rights of the old file to the new one, which is open and so far accessible to its
    /// owner alone. Where the system does not allow the same owner or group, nobody gets a right
    /// that the old file did not give. Set-user-id, set-group-id and sticky bits are dropped.
    static void copy(const std::string& oldName, const struct stat& old, int newFile);
};
