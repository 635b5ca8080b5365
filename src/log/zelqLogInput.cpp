#include "log/zelqLogInput.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kPipeSize = 1 << 20;

/// Lets the process have as many open files as the system ever allows it. False if it has already.
bool allowMoreFiles() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur == limit.rlim_max) {
        return false;
    }
    limit.rlim_cur = limit.rlim_max;
    return ::setrlimit(RLIMIT_NOFILE, &limit) == 0;
}

int openLog(const std::string& name) {
    if (name == zelqLogInput::kStandardInput) {
        return ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0);
    }
    const auto open = [&name] { return ::open(name.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC); };
    const int opened = open();
    return opened < 0 && errno == EMFILE && allowMoreFiles() ? open() : opened;
}

}  // namespace

zelqLogInput::zelqLogInput(const std::string& name, Options options)
    : file_(openLog(name)), options_(std::move(options)) {
    struct stat file {};
    if (!file_.isOpen() || ::fstat(file_.get(), &file) != 0) {
        status_ = zelqStatus::systemFailure("cannot be opened", errno);
        return;
    }
    if (S_ISDIR(file.st_mode)) {
        status_ = zelqStatus::failure(std::errc::is_a_directory, "is a directory");
        return;
    }
    if (S_ISFIFO(file.st_mode)) {
        ::fcntl(file_.get(), F_SETPIPE_SZ, kPipeSize);  // fewer and longer reads, if it is allowed
    } else if (S_ISREG(file.st_mode) && file.st_size > 0) {
        // Somebody may have read the first part of standard input.
        const off_t start = name == kStandardInput ? ::lseek(file_.get(), 0, SEEK_CUR) : 0;
        isSized_ = start >= 0 && start <= file.st_size;
        start_ = isSized_ ? static_cast<std::uint64_t>(start) : 0;
        size_ = isSized_ ? static_cast<std::uint64_t>(file.st_size) - start_ : 0;
        ::posix_fadvise(file_.get(), start, 0, POSIX_FADV_SEQUENTIAL);
    }
}

std::optional<zelqFileIdentity> zelqLogInput::identityOf(const std::string& name) {
    return name == kStandardInput ? zelqFileIdentity::ofDescriptor(STDIN_FILENO)
                                  : zelqFileIdentity::of(name);
}

void zelqLogInput::fail(const char* what, int error) {
    status_ = zelqStatus::systemFailure(
        what + std::string(" past offset ") + std::to_string(position_), error);
}

std::ptrdiff_t zelqLogInput::readNext(std::span<std::byte> to) {
    if (!isSized_ && !isRewound_) {
        if (options_.waiting && !file_.isReady()) {
            options_.waiting();
        }
        return file_.readNext(to);
    }
    to = to.first(std::min<std::uint64_t>(to.size(), size_ - position_));
    if (isSized_) {
        return file_.readAt(start_ + position_, to);
    }
    return static_cast<std::ptrdiff_t>(spool_.readAt(position_, to));
}

std::size_t zelqLogInput::read(std::span<std::byte> to) {
    if (!status_.ok()) {
        return 0;
    }
    const std::ptrdiff_t got = readNext(to);
    if (got < 0) {
        fail("cannot be read", errno);
        return 0;
    }
    const auto size = static_cast<std::size_t>(got);
    if (options_.again && !isSized_ && !isRewound_ && size != 0) {
        status_ = spool_.append(to.first(size));
    }
    position_ += size;
    return size;
}

void zelqLogInput::rewind() noexcept {
    size_ = position_;
    position_ = 0;
    isRewound_ = true;
    status_ = {};
}

std::size_t zelqLogInput::readAt(std::uint64_t offset, std::span<std::byte> to) {
    to = to.first(offset < size_ ? std::min<std::uint64_t>(to.size(), size_ - offset) : 0);
    if (!isSized_) {
        return spool_.readAt(offset, to);
    }
    const std::ptrdiff_t got = file_.readAt(start_ + offset, to);
    if (got < 0) {
        fail("cannot be read again", errno);
    }
    return got < 0 ? 0 : static_cast<std::size_t>(got);
}
