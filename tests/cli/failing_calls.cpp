// Preloaded into raslog: the call that FAILING names fails.

#include <cerrno>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <stdio.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int unlessFailing(std::string_view name, long result) {
    const char* const failing = std::getenv("FAILING");
    return failing != nullptr && name == failing ? (errno = EIO, -1) : static_cast<int>(result);
}

}  // namespace

extern "C" int rename(const char* from, const char* to) noexcept {
    const int result = unlessFailing("rename", 0);
    return result != 0 ? result : ::renameat(AT_FDCWD, from, AT_FDCWD, to);
}
extern "C" int close(int file) {
    return unlessFailing("close", ::syscall(SYS_close, file));
}
