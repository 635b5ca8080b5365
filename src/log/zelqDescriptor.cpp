#include "log/zelqDescriptor.h"

#include <cerrno>

#include <poll.h>
#include <sys/uio.h>
#include <unistd.h>

zelqDescriptor::~zelqDescriptor() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

std::ptrdiff_t zelqDescriptor::readAt(std::uint64_t offset, std::span<std::byte> to) const {
    std::size_t done = 0;
    while (done < to.size()) {
        const ssize_t got = ::pread(descriptor_, to.data() + done, to.size() - done,
                                    static_cast<off_t>(offset + done));
        if (got == 0) {
            break;
        }
        if (got > 0) {
            done += static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            return -1;
        }
    }
    return static_cast<std::ptrdiff_t>(done);
}

std::ptrdiff_t zelqDescriptor::readCachedAt(std::uint64_t offset, std::span<std::byte> to) const {
    const iovec room{.iov_base = to.data(), .iov_len = to.size()};
    return ::preadv2(descriptor_, &room, 1, static_cast<off_t>(offset), RWF_NOWAIT);
}

std::ptrdiff_t zelqDescriptor::readNext(std::span<std::byte> to) const {
    for (;;) {
        const ssize_t got = ::read(descriptor_, to.data(), to.size());
        if (got >= 0) {
            return got;
        }
        if (errno == EAGAIN) {  // standard input that somebody made not to wait
            pollfd input{.fd = descriptor_, .events = POLLIN, .revents = 0};
            ::poll(&input, 1, -1);
        } else if (errno != EINTR) {
            return -1;
        }
    }
}

bool zelqDescriptor::isReady() const {
    pollfd input{.fd = descriptor_, .events = POLLIN, .revents = 0};
    return ::poll(&input, 1, 0) != 0;
}
