#include "output/zelqTextPipeline.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "output/zelqTerminalText.h"

zelqTextPipeline::zelqTextPipeline(zelqOutputFile& output, Render render, Written written)
    : output_(output),
      render_(std::move(render)),
      onWritten_(std::move(written)),
      isTerminal_(output.isTerminal()),
      slots_(2 + std::max(1U, std::thread::hardware_concurrency())),
      status_(output.status()) {
    threads_.reserve(slots_.size());
}

zelqTextPipeline::~zelqTextPipeline() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
        taken_ = submitted_;
    }
    isSubmitted_.notify_all();
}

std::optional<std::size_t> zelqTextPipeline::nextSlot() {
    while (status_.ok() && submitted_ - written_ == slots_.size()) {
        writeNext();
    }
    return status_.ok() ? std::optional(submitted_ % slots_.size()) : std::nullopt;
}

const zelqStatus& zelqTextPipeline::flush() {
    while (status_.ok() && written_ < submitted_) {
        writeNext();
    }
    return status_;
}

void zelqTextPipeline::submit() {
    // The first piece is often the only one.
    if (submitted_ > threads_.size() && threads_.size() + 1 < std::thread::hardware_concurrency()) {
        startThread();
    }
    {
        const std::lock_guard lock(mutex_);
        ++submitted_;
    }
    isSubmitted_.notify_one();
}

void zelqTextPipeline::startThread() {
    try {
        threads_.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // The system has none to give; this one does the work.
    }
}

void zelqTextPipeline::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        isSubmitted_.wait(lock, [this] { return ends_ || taken_ < submitted_; });
        if (ends_) {
            return;
        }
        renderNext(lock);
    }
}

void zelqTextPipeline::renderNext(std::unique_lock<std::mutex>& lock) {
    const std::size_t number = taken_++ % slots_.size();
    Slot& slot = slots_[number];
    lock.unlock();
    std::exception_ptr failure;
    try {
        render_(number, slot.text);
    } catch (...) {
        failure = std::current_exception();
    }
    lock.lock();
    slot.failure = std::move(failure);
    slot.isDone = true;
    isDone_.notify_one();
}

void zelqTextPipeline::writeNext() {
    const std::size_t number = written_ % slots_.size();
    Slot& slot = slots_[number];
    std::unique_lock lock(mutex_);
    // Renders instead of waiting, so that there are as many threads as processors.
    while (!slot.isDone && taken_ < submitted_) {
        renderNext(lock);
    }
    isDone_.wait(lock, [&slot] { return slot.isDone; });
    slot.isDone = false;
    lock.unlock();
    if (slot.failure != nullptr) {
        std::rethrow_exception(slot.failure);
    }
    status_ = isTerminal_ ? output_.write(zelqTerminalText::escapedListing(slot.text.text()))
                          : output_.write(slot.text.text());
    slot.text.clear();
    ++written_;
    if (status_.ok() && onWritten_ && !onWritten_(number)) {
        status_ = zelqStatus::failure(std::errc::operation_canceled, "was not written to its end");
    }
}
