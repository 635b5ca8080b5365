#pragma once

#include <string>

struct stat;

/// The owner, group, permissions and access control list of a file that another one replaces.
class zelqFileRights {
public:
    /// Gives the new file, which is open and so far accessible to its owner alone, the rights of
    /// the old one. Where the system does not let it keep the owner or the group, nobody gets a
    /// right that the old file did not give. Set-user-id, set-group-id and sticky bits are dropped.
    static void copy(const std::string& oldName, const struct stat& old, int newFile);
};
