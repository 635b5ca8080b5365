#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "log/zelqBCnrObject.h"
#include "output/zelqFrequencies.h"
#include "output/zelqTimeProfile.h"

/// What is in a log, or in several: counts that entries are added to one by one, in memory that has
/// a bound (some 20 MB).
class zelqLogSummary {
public:
    /// The types in the order in which they are shown, by the texts of the table.
    static constexpr std::array<zelqRecordIcon, 4> kTypes{
        zelqRecordIcon::Error, zelqRecordIcon::Trace, zelqRecordIcon::Message,
        zelqRecordIcon::Unknown};

    /// `bytes`: the entry's length.
    void add(const zelqBCnrObject& record, std::uint64_t bytes);
    void addFindings(std::uint64_t count) noexcept { findings_ += count; }
    void merge(const zelqLogSummary& other);

    [[nodiscard]] std::uint64_t entries() const noexcept { return entries_; }
    [[nodiscard]] std::uint64_t bytes() const noexcept { return bytes_; }
    [[nodiscard]] std::uint64_t findings() const noexcept { return findings_; }
    [[nodiscard]] std::uint64_t entriesOf(zelqRecordIcon type) const noexcept {
        return types_[static_cast<std::size_t>(type)];
    }
    /// Entries whose date no calendar has; they are not in times().
    [[nodiscard]] std::uint64_t entriesWithoutDate() const noexcept { return withoutDate_; }

    [[nodiscard]] const zelqTimeProfile& times() const noexcept { return times_; }
    /// Names of functions in Latin-1, as far as entries have one.
    [[nodiscard]] const zelqFrequencies<std::string>& functions() const noexcept {
        return functions_;
    }
    [[nodiscard]] const zelqFrequencies<std::uint32_t>& pids() const noexcept { return pids_; }
    /// Of entries of the type Error.
    [[nodiscard]] const zelqFrequencies<std::uint32_t>& majorErrors() const noexcept {
        return majorErrors_;
    }
    [[nodiscard]] const zelqFrequencies<std::uint32_t>& minorErrors() const noexcept {
        return minorErrors_;
    }

private:
    std::uint64_t entries_ = 0;
    std::uint64_t bytes_ = 0;
    std::uint64_t findings_ = 0;
    std::uint64_t withoutDate_ = 0;
    std::array<std::uint64_t, 7> types_{};  ///< by zelqRecordIcon
    zelqTimeProfile times_;
    zelqFrequencies<std::string> functions_;
    zelqFrequencies<std::uint32_t> pids_;
    zelqFrequencies<std::uint32_t> majorErrors_;
    zelqFrequencies<std::uint32_t> minorErrors_;
    std::string function_;  ///< used again and again
};
