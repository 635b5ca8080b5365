#include "sample/zelqSampleFile.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "sample/zelqSampleLog.h"

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20;

}  // namespace

zelqSampleFile::zelqSampleFile(std::string name) : name_(std::move(name)) {
    buffer_.reserve(kBufferSize);
    if (name_ == "-") {
        name_ = "standard output";
        descriptor_ = STDOUT_FILENO;
        return;
    }
    descriptor_ = ::open(name_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor_ < 0) {
        fail();
    }
    struct stat status {};
    removable_ = ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
}

zelqSampleFile::~zelqSampleFile() {
    if (removable_) {
        ::unlink(name_.c_str());
    }
    if (descriptor_ > STDOUT_FILENO) {
        ::close(descriptor_);
    }
}

void zelqSampleFile::write(std::span<const std::byte> bytes) {
    if (buffer_.size() + bytes.size() > kBufferSize) {
        flush();
    }
    buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

void zelqSampleFile::finish() {
    flush();
    // Some file systems tell only here that there was no room.
    if (descriptor_ != STDOUT_FILENO && ::close(std::exchange(descriptor_, -1)) != 0) {
        fail();
    }
    removable_ = false;
}

void zelqSampleFile::flush() {
    std::span<const std::byte> left = buffer_;
    while (!left.empty()) {
        const ssize_t written = ::write(descriptor_, left.data(), left.size());
        if (written >= 0) {
            left = left.subspan(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            fail();
        }
    }
    buffer_.clear();
}

void zelqSampleFile::fail() const {
    throw std::system_error(errno, std::generic_category(), name_);
}

void writeSampleLog(const std::string& fileName, zelqSampleLog& log, std::uint64_t count) {
    zelqSampleFile file(fileName);
    for (std::uint64_t i = 0; i < count; ++i) {
        file.write(log.next());
    }
    file.finish();
}
