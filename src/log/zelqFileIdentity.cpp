#include "log/zelqFileIdentity.h"

#include <sys/stat.h>

std::optional<zelqFileIdentity> zelqFileIdentity::of(const std::string& name) noexcept {
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) {
        return std::nullopt;
    }
    return zelqFileIdentity{.device = status.st_dev, .inode = status.st_ino};
}

std::optional<zelqFileIdentity> zelqFileIdentity::ofDescriptor(int descriptor) noexcept {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return std::nullopt;
    }
    return zelqFileIdentity{.device = status.st_dev, .inode = status.st_ino};
}
