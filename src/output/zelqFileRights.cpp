#include "output/zelqFileRights.h"

#include <vector>

#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";

/// The file's access control list as the system keeps it; empty if it has none.
std::vector<char> accessListOf(const std::string& name) {
    std::vector<char> list(XATTR_SIZE_MAX);
    const ssize_t size = ::getxattr(name.c_str(), kAccessList, list.data(), list.size());
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return list;
}

}  // namespace

void zelqFileRights::copy(const std::string& oldName, const struct stat& old, int newFile) {
    constexpr auto kSameOwner = static_cast<uid_t>(-1);
    const bool sameGroup = ::fchown(newFile, old.st_uid, old.st_gid) == 0 ||
                           ::fchown(newFile, kSameOwner, old.st_gid) == 0;
    const std::vector<char> accessList = accessListOf(oldName);
    if (!accessList.empty() && sameGroup &&
        ::fsetxattr(newFile, kAccessList, accessList.data(), accessList.size(), 0) == 0) {
        return;  // it contains the permissions
    }
    mode_t mode = old.st_mode & 0777U;
    if (!accessList.empty()) {
        mode &= 0700U;  // the group's permissions are those of everybody in the list
    } else if (!sameGroup) {
        // Members of the old group are now others, and members of the new one were.
        const mode_t common = mode & (mode >> 3U) & 07U;
        mode = (mode & 0700U) | common << 3U | common;
    }
    ::fremovexattr(newFile, kAccessList);  // the folder may give one to every new file
    ::fchmod(newFile, mode);               // if this fails, only the owner has access
}
