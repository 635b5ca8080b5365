#include "log/zelqLogFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "log/zelqLogFormat.h"

namespace {

constexpr std::size_t kFirstSegment = std::size_t{1} << 20;

}  // namespace

// Without O_NONBLOCK, opening a FIFO that nobody writes to would wait for ever.
zelqLogFile::zelqLogFile(const std::string& name)
    : file_(::open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
    struct stat file {};
    if (!file_.isOpen() || ::fstat(file_.get(), &file) != 0) {
        status_ = zelqStatus::systemFailure("cannot be opened", errno);
        return;
    }
    identity_ = {.device = file.st_dev, .inode = file.st_ino};
    if (!S_ISREG(file.st_mode)) {
        status_ = zelqStatus::failure(
            S_ISDIR(file.st_mode) ? std::errc::is_a_directory : std::errc::not_supported,
            "is not a regular file");
        return;
    }
    size_ = static_cast<std::size_t>(file.st_size);
}

bool zelqLogFile::readMore(std::size_t size) {
    const std::size_t done = read_.load(std::memory_order_relaxed);
    if (!status_.ok() || !file_.isOpen() || (size_ != 0 && done == size_)) {
        return false;
    }
    if ((segmentCount_ == 0 || done == segments_[segmentCount_ - 1].end()) && !addSegment()) {
        failForMemory();
        return false;
    }
    const Segment& segment = segments_[segmentCount_ - 1];
    const std::size_t wanted = std::min(size, segment.end() - done);
    ssize_t got = 0;
    do {
        got = ::read(file_.get(), segment.bytes.get() + (done - segment.start), wanted);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        status_ =
            zelqStatus::systemFailure("cannot be read past offset " + std::to_string(done), errno);
        return false;
    }
    read_.store(done + static_cast<std::size_t>(got), std::memory_order_release);
    return got > 0;
}

bool zelqLogFile::addSegment() {
    if (segmentCount_ == segments_.size()) {
        return false;
    }
    Segment& segment = segments_[segmentCount_];
    if (segmentCount_ == 0) {
        segment.size = size_ == 0 ? kFirstSegment : std::min(size_, 2 * kFirstSegment);
        segment.bytes = zelqHeap::allocate(segment.size);
    } else {
        const Segment& before = segments_[segmentCount_ - 1];
        const std::size_t repeated = std::min(before.size, zelqFormat::kEntryReach);
        const std::size_t left =
            size_ == 0 ? std::numeric_limits<std::size_t>::max() : size_ - before.end() + repeated;
        segment.start = before.end() - repeated;
        segment.size = std::min(2 * before.size, left);
        if (!zelqHeap::has(size_ == 0 ? segment.size : left)) {
            return false;
        }
        segment.bytes = zelqHeap::allocate(segment.size);
        if (segment.bytes != nullptr) {
            std::memcpy(segment.bytes.get(), before.bytes.get() + (before.size - repeated),
                        repeated);
        }
    }
    segmentCount_ += segment.bytes != nullptr ? 1 : 0;
    return segment.bytes != nullptr;
}

void zelqLogFile::failForMemory() {
    const std::size_t size = size_ == 0 ? bytesRead() : size_;
    status_ = zelqStatus::failure(std::errc::not_enough_memory,
                                  "is too large for the memory: " + std::to_string(size) +
                                      " bytes" + (size_ == 0 ? " and more" : ""));
}

std::span<std::byte> zelqLogFile::bytesFrom(std::size_t offset) const noexcept {
    const std::size_t read = bytesRead();
    if (offset >= read) {
        return {};
    }
    const Segment* segment = segments_.data();
    while (read > segment->end() && offset + zelqFormat::kEntryReach >= segment->end()) {
        ++segment;
    }
    return {segment->bytes.get() + (offset - segment->start),
            std::min(read, segment->end()) - offset};
}

std::optional<std::size_t> zelqLogFile::offsetOf(const std::byte* byte) const noexcept {
    const std::less<> before;  // orders addresses in different segments, too
    for (const Segment& segment : std::span(segments_).first(segmentCount_)) {
        const std::byte* const start = segment.bytes.get();
        if (!before(byte, start) && before(byte, start + segment.size)) {
            return segment.start + static_cast<std::size_t>(byte - start);
        }
    }
    return {};
}

zelqDescriptor zelqLogFile::release() noexcept {
    zelqDescriptor file = std::move(file_);
    clear();
    return file;
}

void zelqLogFile::clear() noexcept {
    close();
    read_ = 0;
    segmentCount_ = 0;
    segments_ = {};
}
