#include "output/zelqListing.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <future>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "output/zelqRecordFormatter.h"

namespace {

/// Text that is rendered in one piece, more or less; a record's text is not divided.
constexpr std::size_t kBatchText = std::size_t{1} << 20;

/// Names for a new file that are tried before giving up.
constexpr unsigned kMostAttempts = 100;

struct Batch {
    const zelqLog* log;
    std::size_t first;
    std::size_t end;
};

std::string render(const Batch& batch, const zelqLocaleText& locale) {
    zelqRecordFormatter formatter(locale);
    std::string text;
    for (std::size_t i = batch.first; i < batch.end; ++i) {
        zelqBCnrObject& record = (*batch.log)[i];
        formatter.appendListing(record, record.nextAddressForm(), text);
    }
    return text;
}

/// At least what the record's text takes, and not much more.
std::size_t textSize(const zelqBCnrObject& record) {
    constexpr std::size_t kAroundDump = 400;
    constexpr std::size_t kLine = 97;
    return kAroundDump + record.blockCount() * 2 * kLine +
           record.expansionData().size() / 16 * kLine;
}

/// Divides the records into batches, in their order.
class Batches {
public:
    explicit Batches(const zelqLogCollection& records) : logs_(records.logs()) {}

    std::optional<Batch> next() {
        while (log_ < logs_.size() && record_ == logs_[log_].log->size()) {
            ++log_;
            record_ = 0;
        }
        if (log_ == logs_.size()) {
            return std::nullopt;
        }
        const zelqLog& log = *logs_[log_].log;
        const std::size_t first = record_;
        for (std::size_t text = 0; record_ < log.size() && text < kBatchText; ++record_) {
            text += textSize(log[record_]);
        }
        return Batch{.log = &log, .first = first, .end = record_};
    }

private:
    const std::vector<zelqLogCollection::Entry>& logs_;
    std::size_t log_ = 0;
    std::size_t record_ = 0;
};

}  // namespace

zelqListingFile::zelqListingFile(const std::string& name, std::stop_token stop)
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

zelqListingFile::~zelqListingFile() {
    if (descriptor_ >= 0 && descriptor_ != STDOUT_FILENO) {
        ::close(descriptor_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

zelqListingFile zelqListingFile::standardOutput() {
    return zelqListingFile(STDOUT_FILENO);
}

/// A device, a pipe, or a link to a file that does not exist yet. `flags`: for open(), if any.
void zelqListingFile::openDirectly(const std::string& name, int flags) {
    // Without O_NONBLOCK, opening a pipe that nobody reads would wait for ever.
    descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC | flags, 0666);
    if (descriptor_ < 0) {
        fail("cannot be opened", errno);
    }
}

/// The new file's name is short, so that it fits wherever the target's own fits, and never that of
/// a file which is there. Returns 0, or why there is none.
int zelqListingFile::openBeside(const std::string& target) {
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

void zelqListingFile::fail(const std::string& what, int error) {
    readerIsGone_ = error == EPIPE;
    problem_ = what + ": " + std::generic_category().message(error);
}

void zelqListingFile::waitForReader() {
    constexpr int kMilliseconds = 100;
    pollfd output{.fd = descriptor_, .events = POLLOUT, .revents = 0};
    if (stop_.stop_requested()) {
        fail("was not written to its end", ECANCELED);
    } else {
        ::poll(&output, 1, kMilliseconds);
    }
}

bool zelqListingFile::write(std::string_view bytes) {
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

bool zelqListingFile::complete() {
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

bool writeListing(const zelqLogCollection& records, const zelqLocaleText& locale,
                  zelqListingFile& output,
                  const std::function<bool(std::uint64_t done, std::uint64_t total)>& progress) {
    struct Rendered {
        std::size_t records;
        std::future<std::string> text;
    };
    const std::size_t inFlight = std::max(2U, std::thread::hardware_concurrency());
    Batches batches(records);
    std::deque<Rendered> rendered;
    std::uint64_t done = 0;
    for (;;) {
        while (rendered.size() < inFlight) {
            const std::optional<Batch> batch = batches.next();
            if (!batch.has_value()) {
                break;
            }
            rendered.push_back(
                {.records = batch->end - batch->first,
                 .text = std::async(std::launch::async, render, *batch, std::cref(locale))});
        }
        if (rendered.empty()) {
            return true;
        }
        done += rendered.front().records;
        const std::string text = rendered.front().text.get();
        rendered.pop_front();
        if (!output.write(text) || (progress && !progress(done, records.size()))) {
            return false;
        }
    }
}
