#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "session/zelqLogCollection.h"

/// What was wrong with the files of the loaded logs as a table: a row a finding, in the order of
/// reading, and at the end of a log why its file was not read to its end.
class zelqFindingsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { File, Entry, Offset, What, kColumns };
    /// A record: its log's slot, and where it stands in its log.
    struct Place {
        int slot;
        std::uint64_t entry;
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Takes the findings over as they are now. The rows stay, and the result is false, unless a
    /// log came or went.
    bool refresh(const zelqLogCollection& logs);

    /// The record that a row tells of; nothing for a row about a file, or out of range.
    [[nodiscard]] std::optional<Place> placeAt(const QModelIndex& index) const;
    /// How many findings have no row.
    [[nodiscard]] std::uint64_t notListed() const noexcept { return notListed_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    struct Log {
        int slot;
        std::string name;
        std::shared_ptr<const zelqLogFindings> findings;
        std::size_t firstRow;

        friend bool operator==(const Log&, const Log&) = default;
    };

    [[nodiscard]] const Log& logOf(int row) const;
    /// The finding of a row; null for the row about the file.
    [[nodiscard]] const zelqFinding* findingOf(const Log& log, int row) const;

    std::vector<Log> logs_;  ///< those with findings
    std::size_t rows_ = 0;
    std::uint64_t notListed_ = 0;
};
