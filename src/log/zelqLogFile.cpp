#include "log/zelqLogFile.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string errorText(int error) {
    return std::generic_category().message(error);
}

}  // namespace

zelqLogFile::zelqLogFile(const std::string& name) {
    // Without O_NONBLOCK, opening a FIFO that nobody writes to would wait for ever.
    descriptor_ = ::open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &status) != 0) {
        problem_ = "cannot be opened: " + errorText(errno);
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        problem_ = "is not a regular file";
        return;
    }
    size_ = static_cast<std::size_t>(status.st_size);
    if (size_ == 0) {
        return;
    }
    bytes_ = allocateMemory(size_);
    if (bytes_ == nullptr) {
        problem_ = "is too large for the memory: " + std::to_string(size_) + " bytes";
        size_ = 0;
    }
}

zelqLogFile::~zelqLogFile() {
    close();
}

bool zelqLogFile::readMore(std::size_t size) {
    const std::size_t done = read_.load(std::memory_order_relaxed);
    const std::size_t wanted = std::min(size, size_ - done);
    if (wanted == 0 || !problem_.empty()) {
        return false;
    }
    ssize_t got = 0;
    do {
        got = ::read(descriptor_, bytes_.get() + done, wanted);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        problem_ = "cannot be read past offset " + std::to_string(done) + ": " + errorText(errno);
        return false;
    }
    read_.store(done + static_cast<std::size_t>(got), std::memory_order_release);
    return got > 0;
}

void zelqLogFile::close() noexcept {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}
