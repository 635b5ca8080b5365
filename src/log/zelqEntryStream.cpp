#include "log/zelqEntryStream.h"

#include <algorithm>
#include <new>
#include <utility>

zelqEntryStream::zelqEntryStream(Read read, std::size_t number, zelqFindingSink findings,
                                 std::size_t bufferSize)
    : read_(std::move(read)),
      buffer_(static_cast<std::byte*>(std::malloc(bufferSize))),
      size_(bufferSize),
      decoder_(number, std::move(findings)) {
    if (buffer_ == nullptr) {
        throw std::bad_alloc();
    }
}

bool zelqEntryStream::next() {
    while (!decoder_.decode(rest(), complete_)) {
        if (complete_ || decoder_.ended()) {
            return false;
        }
        fill();
    }
    return true;
}

/// The bytes that follow the current entry.
std::span<std::byte> zelqEntryStream::rest() noexcept {
    const std::uint64_t start = decoder_.position() - bufferOffset_;
    return start < end_ ? std::span(buffer_.get() + start, end_ - start) : std::span<std::byte>{};
}

/// Reads on. What is not decoded yet is less than an entry can reach, and moves to the front when
/// the room after it gets small.
void zelqEntryStream::fill() {
    const std::span<std::byte> left = rest();
    if (left.empty() || size_ - end_ < zelqFormat::kEntryReach) {
        std::copy(left.begin(), left.end(), buffer_.get());
        bufferOffset_ = decoder_.position();
        end_ = left.size();
    }
    const std::optional<std::size_t> got = read_(std::span(buffer_.get() + end_, size_ - end_));
    if (!got.has_value()) {
        decoder_.breakOff();
    }
    end_ += got.value_or(0);
    complete_ = got.value_or(0) == 0;
}
