#include "log/zelqSpool.h"

#include <cerrno>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::size_t kMostPending = std::size_t{64} << 10;

int openIn(const std::string& folder) {
    const int unnamed = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (unnamed >= 0) {
        return unnamed;
    }
    std::string name = folder + "/ras-spool-XXXXXX";
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) {
        ::unlink(name.c_str());
    }
    return named;
}

}  // namespace

void zelqSpool::open() {
    const char* const asked = std::getenv("TMPDIR");  // NOLINT(concurrency-mt-unsafe)
    const std::string first = asked != nullptr && *asked != '\0' ? asked : "/var/tmp";
    file_ = zelqDescriptor(openIn(first));
    if (!file_.isOpen()) {
        file_ = zelqDescriptor(openIn("/tmp"));
    }
    if (!file_.isOpen()) {
        status_ = zelqStatus::systemFailure("cannot be put aside in " + first, errno);
    }
}

const zelqStatus& zelqSpool::append(std::span<const std::byte> bytes) {
    if (size_ == 0 && status_.ok()) {
        open();
    }
    if (status_.ok()) {
        pending_.insert(pending_.end(), bytes.begin(), bytes.end());
        size_ += bytes.size();
        if (pending_.size() >= kMostPending) {
            flush();
        }
    }
    return status_;
}

bool zelqSpool::flush() {
    std::size_t done = 0;
    while (done < pending_.size() && status_.ok()) {
        const ssize_t written =
            ::write(file_.get(), pending_.data() + done, pending_.size() - done);
        if (written >= 0) {
            done += static_cast<std::size_t>(written);
        } else if (errno != EINTR) {
            status_ = zelqStatus::systemFailure("cannot be put aside", errno);
        }
    }
    pending_.clear();
    return status_.ok();
}

std::size_t zelqSpool::readAt(std::uint64_t offset, std::span<std::byte> to) {
    if (!file_.isOpen() || !flush()) {
        return 0;
    }
    const std::ptrdiff_t got = file_.readAt(offset, to);
    if (got < 0) {
        status_ = zelqStatus::systemFailure("cannot be read again", errno);
        return 0;
    }
    return static_cast<std::size_t>(got);
}
