#include "output/zelqListing.h"

#include <algorithm>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "output/zelqRecordFormatter.h"

namespace {

/// Records that are rendered in one piece: a megabyte of text, more or less.
constexpr std::size_t kBatch = 1024;

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
        formatter.appendListing(record, nextAddressForm(record), text);
    }
    return text;
}

std::vector<Batch> batchesOf(const zelqLogCollection& records) {
    std::vector<Batch> batches;
    for (const auto& [slot, log] : records.logs()) {
        for (std::size_t first = 0; first < log->size(); first += kBatch) {
            batches.push_back({log.get(), first, std::min(first + kBatch, log->size())});
        }
    }
    return batches;
}

}  // namespace

zelqListingFile::zelqListingFile(const std::string& name) {
    struct stat status {};
    const bool exists = ::stat(name.c_str(), &status) == 0;
    std::error_code error;
    if (exists ? !S_ISREG(status.st_mode) : std::filesystem::is_symlink(name, error)) {
        openDirectly(name);
        return;
    }
    if (exists && ::access(name.c_str(), W_OK) != 0) {
        fail("cannot be written", errno);
        return;
    }
    // The target of a link is replaced, not the link.
    const std::filesystem::path target =
        exists ? std::filesystem::canonical(name, error) : std::filesystem::path(name);
    openBeside(error ? name : target.string());
    if (exists && descriptor_ >= 0) {
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

/// A device, a pipe, or a link to a file that does not exist yet.
void zelqListingFile::openDirectly(const std::string& name) {
    // Without O_NONBLOCK, opening a pipe that nobody reads would wait for ever.
    descriptor_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
    if (descriptor_ < 0 || ::fcntl(descriptor_, F_SETFL, 0) != 0) {
        fail("cannot be opened", errno);
    }
}

/// The new file's name is short, so that it fits wherever the target's own fits, and never that of
/// a file which is there.
void zelqListingFile::openBeside(const std::string& target) {
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
        fail("cannot be written", errno);
        return;
    }
    target_ = target;
    temporary_ = name;
}

void zelqListingFile::fail(const std::string& what, int error) {
    readerIsGone_ = error == EPIPE;
    problem_ = what + ": " + std::generic_category().message(error);
}

bool zelqListingFile::write(std::string_view bytes) {
    while (problem_.empty() && !bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
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
    const std::vector<Batch> batches = batchesOf(records);
    const std::size_t inFlight = std::max(2U, std::thread::hardware_concurrency());
    std::deque<std::future<std::string>> rendered;
    std::size_t next = 0;
    std::uint64_t done = 0;
    for (const Batch& batch : batches) {
        for (; next < batches.size() && rendered.size() < inFlight; ++next) {
            rendered.push_back(
                std::async(std::launch::async, render, batches[next], std::cref(locale)));
        }
        const std::string text = rendered.front().get();
        rendered.pop_front();
        done += batch.end - batch.first;
        if (!output.write(text) || (progress && !progress(done, records.size()))) {
            return false;
        }
    }
    return true;
}
