#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "log/zelqDataSources.h"
#include "log/zelqLog.h"

/// All loaded logs in the order in which they were read, and the table of 100 log names. A log that
/// could not be read has its slot and name all the same. One thread at a time. A copy has the same
/// logs, which are freed with the last collection that has them.
class zelqLogCollection {
public:
    static constexpr int kSlots = static_cast<int>(zelqDataSources::kSlots);
    /// Stands for all logs where a slot is asked for, and for none where one is returned.
    static constexpr int kAllLogs = -1;
    static constexpr int kNoSlot = -1;

    zelqLogCollection() : zelqLogCollection(std::make_shared<zelqPieceCache>()) {}
    /// `cache`: for the data of logs that are not kept in memory.
    explicit zelqLogCollection(std::shared_ptr<zelqPieceCache> cache) noexcept
        : dataSources_(std::move(cache)) {}

    /// The name in a slot, 0 to 99; empty for a free one and for a slot out of range.
    [[nodiscard]] const std::string& logName(int slot) const noexcept;
    /// False if some slot holds exactly this name.
    [[nodiscard]] bool isNotLoaded(std::string_view name) const noexcept;
    /// The lowest free slot, or kNoSlot if the name is empty or has a slot already, or all are
    /// taken.
    [[nodiscard]] int slotFor(std::string_view name) const noexcept;
    /// slotFor(), and gives the slot to the name.
    int assignLogSlot(std::string name);
    /// Empties a slot's name, or all with kAllLogs. False for any other number, which changes
    /// nothing.
    bool clearLogSlot(int slot);

    /// Adds a log that was read for a slot, and gives the slot the name.
    void append(std::shared_ptr<zelqLog> log, std::string name, int slot);
    /// Takes out the log of a slot, or all logs, and clears their names.
    void remove(int slot) noexcept;

    /// Where the data of the logs are read that are not kept in memory.
    [[nodiscard]] const zelqDataSources& dataSources() const noexcept { return dataSources_; }
    /// The bytes of files that the logs keep in memory.
    [[nodiscard]] std::size_t bytesKept() const noexcept;

    /// The number of records in all logs.
    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    /// What the columns of all records need at most. Refers to texts of the logs.
    [[nodiscard]] zelqColumnExtremes extremes() const noexcept;
    /// Whether a record is of one of the logs. Looks at no record.
    [[nodiscard]] bool has(const zelqBCnrObject& record) const noexcept {
        return std::ranges::any_of(logs_, [&record](const Entry& entry) {
            return entry.log->indexOf(record).has_value();
        });
    }
    /// The number of slots in use.
    [[nodiscard]] int logCount() const noexcept;

    struct Entry {
        int slot;
        std::shared_ptr<zelqLog> log;
    };
    [[nodiscard]] const std::vector<Entry>& logs() const noexcept { return logs_; }
    /// Calls `visit(zelqBCnrObject&)` for each record in the order of reading.
    template <typename Visit>
    void forEach(const Visit& visit) const {
        for (const Entry& entry : logs_) {
            entry.log->forEach(visit);
        }
    }

    /// The same for those from number `first` to before `end`, counted in that order.
    template <typename Visit>
    void forEach(std::size_t first, std::size_t end, const Visit& visit) const {
        std::size_t start = 0;
        for (const Entry& entry : logs_) {
            const std::size_t stop = std::min(end, start + entry.log->size());
            for (std::size_t number = std::max(first, start); number < stop; ++number) {
                visit((*entry.log)[number - start]);
            }
            start += entry.log->size();
        }
    }

private:
    std::array<std::string, kSlots> logNames_;
    std::vector<Entry> logs_;
    std::size_t size_ = 0;
    zelqDataSources dataSources_;
};
