#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "log/zelqStatus.h"
#include "output/zelqOutputFile.h"
#include "output/zelqTextBuffer.h"

/// Renders the pieces of a long text on all processors and writes them in their order. What a piece
/// is made of lies in one of a few slots, which belong to the caller and are used in turn, so that
/// memory does not grow with the text. All operations are for one thread; it renders, too, where
/// the system gives no other.
class zelqTextPipeline {
public:
    /// A piece of about this size stays in the processor's cache until it is written.
    static constexpr std::size_t kPieceSize = std::size_t{512} << 10;

    /// Renders what is in a slot. Called on any thread, for several slots at a time.
    using Render = std::function<void(std::size_t slot, zelqTextBuffer& text)>;

    /// Told of each slot whose piece is written; false stops. May be empty.
    using Written = std::function<bool(std::size_t slot)>;

    /// `output` must outlive the object. On a terminal, bytes that could be commands to it are
    /// escaped.
    zelqTextPipeline(zelqOutputFile& output, Render render, Written written = {});
    /// Drops what is not written.
    ~zelqTextPipeline();
    zelqTextPipeline(const zelqTextPipeline&) = delete;
    zelqTextPipeline& operator=(const zelqTextPipeline&) = delete;

    [[nodiscard]] std::size_t slotCount() const noexcept { return slots_.size(); }
    /// The slot of the next piece; waits until it is free. None when status() is a failure. Throws
    /// what rendering throws.
    [[nodiscard]] std::optional<std::size_t> nextSlot();
    /// The slot is filled.
    void submit();
    /// Writes all that was submitted. Throws what rendering throws.
    const zelqStatus& flush();
    /// The output's, or std::errc::operation_canceled.
    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }

private:
    struct Slot {
        zelqTextBuffer text;
        bool isDone = false;
        std::exception_ptr failure;
    };

    void writeNext();
    void startThread();
    void work();
    void renderNext(std::unique_lock<std::mutex>& lock);

    zelqOutputFile& output_;
    Render render_;
    Written onWritten_;
    bool isTerminal_;
    std::vector<Slot> slots_;
    zelqStatus status_;
    std::uint64_t written_ = 0;

    std::mutex mutex_;  ///< for what follows, and isDone and failure of the slots
    std::condition_variable isSubmitted_;
    std::condition_variable isDone_;
    std::uint64_t submitted_ = 0;
    std::uint64_t taken_ = 0;  ///< of these, by threads that render
    bool ends_ = false;
    std::vector<std::jthread> threads_;  // last: they use the rest
};
