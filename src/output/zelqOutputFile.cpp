#include "output/zelqOutputFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Names for a new file that are tried before giving up.
constexpr unsigned kMostAttempts = 100;

}  // namespace

zelqOutputFile::zelqOutputFile(const std::string& name, std::stop_token stop)
    : stop_(std::move(stop)) {
    struct stat status {};
    const bool exists = ::stat(name.c_str(), &status) == 0;
    std::error_code error;
    if (exists ? !S_ISREG(status.st_mode) : std::filesystem::is_symlink(name, error)) {
        openDirectly(name, 0);
        return;
    }
    if (exists && ::access(name.c_str(), W_OK) != 0) {
        fail("cannot be written", errno);
        return;
    }
    // The target of a link is replaced, not the link.
    const std::filesystem::path target =
        exists ? std::filesystem::canonical(name, error) : std::filesystem::path(name);
    const int problem = openBeside(error ? name : target.string());
    if (exists && (problem == EACCES || problem == EPERM || problem == EROFS)) {
        openDirectly(name, O_TRUNC);  // its folder takes no new file, so the old text goes first
    } else if (problem != 0) {
        fail("cannot be written", problem);
    } else if (exists) {
        ::fchmod(descriptor_, status.st_mode & 07777U);
    }
}

zelqOutputFile::~zelqOutputFile() {
    if (descriptor_ >= 0 && descriptor_ != STDOUT_FILENO) {
        ::close(descriptor_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

zelqOutputFile zelqOutputFile::standardOutput() {
    return zelqOutputFile(STDOUT_FILENO);
}

/// A device, a pipe, or a link to a file that does not exist yet. `flags`: for open(), if any.
void zelqOutputFile::openDirectly(const std::string& name, int flags) {
    // Without O_NONBLOCK, opening a pipe that nobody reads would wait for ever.
    descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC | flags, 0666);
    if (descriptor_ < 0) {
        fail("cannot be opened", errno);
    }
}

/// The new file's name is short, so that it fits wherever the target's own fits, and never that of
/// a file which is there. Returns 0, or why there is none.
int zelqOutputFile::openBeside(const std::string& target) {
    const std::filesystem::path folder = std::filesystem::path(target).parent_path();
    const std::string prefix = ".listing-" + std::to_string(::getpid()) + "-";
    std::string name;
    for (unsigned attempt = 0; attempt < kMostAttempts; ++attempt) {
        name = (folder / (prefix + std::to_string(attempt))).string();
        descriptor_ =
            ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (descriptor_ >= 0 || errno != EEXIST) {
            break;
        }
    }
    if (descriptor_ < 0) {
        return errno;
    }
    target_ = target;
    temporary_ = name;
    return 0;
}

void zelqOutputFile::fail(const std::string& what, int error) {
    readerIsGone_ = error == EPIPE;
    problem_ = what + ": " + std::generic_category().message(error);
}

void zelqOutputFile::waitForReader() {
    constexpr int kMilliseconds = 100;
    pollfd output{.fd = descriptor_, .events = POLLOUT, .revents = 0};
    if (stop_.stop_requested()) {
        fail("was not written to its end", ECANCELED);
    } else {
        ::poll(&output, 1, kMilliseconds);
    }
}

bool zelqOutputFile::write(std::string_view bytes) {
    while (problem_.empty() && !bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            waitForReader();
        } else if (errno != EINTR) {
            fail("cannot be written", errno);
        }
    }
    return problem_.empty();
}

bool zelqOutputFile::complete() {
    if (!problem_.empty() || temporary_.empty()) {
        return problem_.empty();
    }
    // A disk that is full may tell so only here.
    const int closed = ::close(std::exchange(descriptor_, -1));
    if (closed != 0 || ::rename(temporary_.c_str(), target_.c_str()) != 0) {
        fail("cannot be written", errno);
        return false;
    }
    temporary_.clear();
    return true;
}
