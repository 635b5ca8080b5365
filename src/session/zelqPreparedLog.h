#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "log/zelqLogReader.h"
#include "log/zelqStatus.h"
#include "session/zelqRecordList.h"

/// A log that a worker has made ready to be shown, so that the GUI thread has little left to do.
struct zelqPreparedLog {
    /// Reads a log. With `firstNumber` its records are numbered from there on and sorted, too. One
    /// that does not fit into the memory gives none of its records. The log keeps its findings,
    /// which request.findings is told all the same.
    [[nodiscard]] static zelqPreparedLog read(const zelqReadRequest& request,
                                              std::optional<std::int32_t> firstNumber);

    std::unique_ptr<zelqLog> log;      ///< null when the reading was stopped
    zelqStatus status{};               ///< as zelqReadResult has it
    bool firstEntryIsDamaged = false;  ///< as zelqReadResult has it
    /// All records of the log in order, as they come into a container that no filter narrows; empty
    /// if that was not asked for.
    zelqRecordList shown{zelqBCnrObject::InContainer};
};
