#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "log/zelqLogFormat.h"
#include "log/zelqStatus.h"
#include "sample/zelqEntryBuffer.h"
#include "sample/zelqRandom.h"
#include "sample/zelqSampleTexts.h"
#include "sample/zelqSampleTime.h"

class zelqOutputFile;

/// Makes the entries of a valid log: every entry type, times that advance with a few out of order,
/// blocks of text, counters and noise. Equal arguments give equal bytes on every machine. The demo
/// log is made by: raslog sample -n 300 --seed 7 -o samples/demo.log
class zelqSampleLog {
public:
    /// `log` is the number of this log among those with the same seed, 0 to 99. They all begin at
    /// `start` and advance at about the same pace. The years must stay within four digits.
    /// `data`: the bytes of data in each entry, up to kMostData, beside the blocks' headers;
    /// without it their number differs from entry to entry.
    zelqSampleLog(std::uint64_t seed, unsigned log, zelqSampleTime::Time start,
                  std::optional<std::size_t> data = {});

    static constexpr std::size_t kMostData = 64'000;

    /// The next entry, about 200 bytes on average without a number of data bytes; valid until the
    /// next call.
    [[nodiscard]] std::span<const std::byte> next();

    /// Writes the next `count` entries. Does not complete the output.
    zelqStatus write(zelqOutputFile& output, std::uint64_t count);

private:
    struct Thread {
        std::uint32_t pid;
        std::uint32_t tid;
    };

    /// What an entry shows as its date and time.
    struct Moment {
        std::uint16_t year;
        std::uint8_t month;
        std::uint8_t day;
        std::uint8_t hour;
        std::uint8_t minute;
        std::uint8_t second;
        std::uint8_t fraction;  ///< hundredths of a second
    };

    void makeThreads();
    [[nodiscard]] Moment advance();
    [[nodiscard]] std::uint16_t pickType();

    void putHeader(const zelqFormat::EntryLayout& layout, const Moment& moment);
    void putDated(const zelqFormat::EntryLayout& layout, const Moment& moment);
    void putErrorCodes();
    void putDetectPoint(std::uint32_t function);
    void putName(const zelqFormat::EntryLayout& layout, const zelqSampleFunction& function);
    void putNumbers(unsigned count, const Moment& moment);
    void putUnconverted(const Moment& moment);
    void putBlocks();
    void putBlock(unsigned number, std::size_t size);
    void putData(std::size_t size);

    zelqRandom random_;
    std::vector<zelqSampleFunction> functions_;
    zelqSampleTexts texts_;
    std::vector<Thread> threads_;
    zelqSampleTime::Time start_;
    zelqSampleTime::Time clock_;
    std::optional<std::size_t> data_;
    Thread thread_{};
    std::uint16_t sequence_ = 0;
    std::uint32_t counter_ = 0;
    zelqEntryBuffer entry_;
};
