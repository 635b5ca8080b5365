#include "output/zelqOutputFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include "output/zelqFileRights.h"

namespace {

constexpr mode_t kNewFile = 0666;  ///< less what the user's mask takes
constexpr mode_t kOwnerOnly = 0600;

std::string folderOf(const std::string& name) {
    const std::string folder = std::filesystem::path(name).parent_path().string();
    return folder.empty() ? "." : folder;
}

/// False if the system would refuse to put another file in this one's place. That is a mount point,
/// a protected file, or a file of somebody else in a folder where users may replace only their own.
bool isReplaceable(const std::string& name, const struct stat& file) {
    constexpr std::uint64_t kFixed =
        STATX_ATTR_MOUNT_ROOT | STATX_ATTR_APPEND | STATX_ATTR_IMMUTABLE;
    struct statx extended {};
    if (::statx(AT_FDCWD, name.c_str(), 0, 0, &extended) == 0 &&
        (extended.stx_attributes & kFixed) != 0) {
        return false;
    }
    struct stat folder {};
    const uid_t user = ::geteuid();
    return ::stat(folderOf(name).c_str(), &folder) != 0 || (folder.st_mode & S_ISVTX) == 0 ||
           user == 0 || user == folder.st_uid || user == file.st_uid;
}

/// Pipes, terminals and some file systems have nothing to sync, which is no failure.
bool syncDescriptor(int descriptor) {
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

/// Makes a change of names in a folder survive a failure of power. A folder that may be written but
/// not read cannot be synced.
bool syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return true;
    }
    const bool synced = syncDescriptor(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return synced;
}

}  // namespace

// The object is complete before its file is opened: if memory runs out then, it is destroyed and
// leaves neither a descriptor nor a file.
zelqOutputFile::zelqOutputFile(const std::string& name, const zelqOutputOptions& options)
    : zelqOutputFile(options.stop) {
    if (name.empty()) {  // it would be taken for one that is written directly
        fail("cannot be opened", ENOENT);
        return;
    }
    struct stat old {};
    const bool exists = ::stat(name.c_str(), &old) == 0;
    std::error_code error;
    if (exists && S_ISREG(old.st_mode)) {
        replace(name, old, options);
    } else if (exists) {
        openDirectly(name, 0, options.inputs);
    } else if (std::filesystem::is_symlink(name, error)) {
        openDirectly(name, O_CREAT, options.inputs);
    } else if (const int problem = openBeside(name, kNewFile, options.unnamed); problem != 0) {
        fail("cannot be written", problem);
    }
}

zelqOutputFile::zelqOutputFile(int descriptor, std::span<const zelqFileIdentity> inputs)
    : descriptor_(descriptor) {
    struct stat opened {};
    if (::fstat(descriptor_, &opened) != 0) {
        fail("cannot be written", errno);
    } else {
        refuseInput(opened, inputs);
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

zelqOutputFile zelqOutputFile::standardOutput(std::span<const zelqFileIdentity> inputs) {
    return {STDOUT_FILENO, inputs};
}

/// Opens a regular file that exists.
void zelqOutputFile::replace(const std::string& name, const struct stat& old,
                             const zelqOutputOptions& options) {
    if (refuseInput(old, options.inputs)) {
        return;
    }
    // A file that is protected from writing stays, even where its folder would let it be replaced.
    if (::faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0) {
        fail("cannot be written", errno);
        return;
    }
    // The target of a link is replaced, not the link.
    std::error_code error;
    const std::string target = std::filesystem::canonical(name, error).string();
    const int problem = error ? error.value()
                        : isReplaceable(target, old)
                            ? openBeside(target, kOwnerOnly, options.unnamed)
                            : EPERM;
    if (problem == EACCES || problem == EPERM || problem == EROFS) {
        openDirectly(name, 0, options.inputs);
    } else if (problem != 0) {
        fail("cannot be written", problem);
    } else {
        zelqFileRights::copy(target, old, descriptor_);
    }
}

/// `flags`: for open(). O_CREAT only for a link to a file that does not exist: in a folder that
/// everybody may write to, the system refuses it for files of other users.
void zelqOutputFile::openDirectly(const std::string& name, int flags,
                                  std::span<const zelqFileIdentity> inputs) {
    // Without O_NONBLOCK, opening a pipe would wait until somebody reads it.
    descriptor_ =
        ::open(name.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | flags, kNewFile);
    struct stat opened {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &opened) != 0) {
        fail("cannot be opened", errno);
    } else if (!refuseInput(opened, inputs) && S_ISREG(opened.st_mode) &&
               ::ftruncate(descriptor_, 0) != 0) {
        fail("cannot be written", errno);
    }
}

/// Opens a new file in the target's folder. It has no name if the file system allows that: then
/// nothing is left of it however the program ends. Returns 0 or the system's error number.
int zelqOutputFile::openBeside(const std::string& target, unsigned mode, bool unnamed) {
    target_ = target;
    if (unnamed) {
        descriptor_ =
            ::open(folderOf(target).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode_t{mode});
        // Without /proc it could not be given a name later.
        if (descriptor_ >= 0 && ::access(descriptorName().c_str(), F_OK) != 0) {
            ::close(std::exchange(descriptor_, -1));
        }
    }
    if (descriptor_ < 0) {
        chooseTemporary();
        descriptor_ = ::open(temporary_.c_str(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode_t{mode});
    }
    if (descriptor_ >= 0) {
        return 0;
    }
    const int problem = errno;
    target_.clear();
    temporary_.clear();
    removal_.reset();
    return problem;
}

/// True if the file is one of the inputs. A terminal or a pipe may be input and output at a time:
/// writing destroys nothing that is still to be read.
bool zelqOutputFile::refuseInput(const struct stat& file,
                                 std::span<const zelqFileIdentity> inputs) {
    const zelqFileIdentity identity{.device = file.st_dev, .inode = file.st_ino};
    if ((!S_ISREG(file.st_mode) && !S_ISBLK(file.st_mode)) ||
        std::ranges::find(inputs, identity) == inputs.end()) {
        return false;
    }
    status_ = zelqStatus::failure(std::errc::text_file_busy, "is one of the logs that are read");
    return true;
}

std::string zelqOutputFile::descriptorName() const {
    return "/proc/self/fd/" + std::to_string(descriptor_);
}

/// The name is short, so that it fits wherever the target's own fits. It is random, so that nobody
/// else has a file of that name: it can be registered for removal before the file exists.
void zelqOutputFile::chooseTemporary() {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof number, 0) < 0) {
        number = static_cast<std::uint64_t>(::getpid());  // opening fails if there is such a file
    }
    std::array<char, 16> digits{};
    char* const end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
    temporary_ = folderOf(target_) + "/.ras-output-" + std::string(digits.data(), end);
    removal_.emplace(temporary_);
}

const zelqStatus& zelqOutputFile::fail(const std::string& what, int error) {
    status_ = zelqStatus::systemFailure(what, error);
    return status_;
}

bool zelqOutputFile::isTerminal() const noexcept {
    return descriptor_ >= 0 && ::isatty(descriptor_) == 1;
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

const zelqStatus& zelqOutputFile::write(std::string_view bytes) {
    while (status_.ok() && !bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            waitForReader();
        } else if (errno != EINTR) {
            fail("cannot be written", errno);
        }
    }
    return status_;
}

/// Some file systems say only when a descriptor is closed that there was no room. The file is
/// needed until it has its name, so a copy of the descriptor is closed.
bool zelqOutputFile::sync() const {
    const int copy = syncDescriptor(descriptor_) ? ::dup(descriptor_) : -1;
    return copy >= 0 && ::close(copy) == 0;
}

/// A file without a name can be given a new one, but not that of a file that exists.
bool zelqOutputFile::putInPlace() {
    if (temporary_.empty()) {
        chooseTemporary();
        if (::linkat(AT_FDCWD, descriptorName().c_str(), AT_FDCWD, temporary_.c_str(),
                     AT_SYMLINK_FOLLOW) != 0) {
            return false;
        }
    }
    return ::rename(temporary_.c_str(), target_.c_str()) == 0;
}

const zelqStatus& zelqOutputFile::complete() {
    if (!status_.ok()) {
        return status_;
    }
    if (!sync() || (!target_.empty() && !putInPlace())) {
        return fail("cannot be written", errno);
    }
    if (!target_.empty()) {
        temporary_.clear();
        removal_.reset();
        if (!syncFolder(folderOf(std::exchange(target_, {})))) {
            return fail("is written, but may not survive a failure of power", errno);
        }
    }
    return status_;
}
