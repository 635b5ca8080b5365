#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "output/zelqRecordFormatter.h"
#include "session/zelqSearchPattern.h"

/// Finds a pattern in the lines that a record has in the expanded-data window. Text is looked for
/// in the summary lines, in addresses and hexadecimal digits line by line, and in the data as ASCII
/// and as EBCDIC; bytes in the data. The data of a block are one text, whatever lines it has. Only
/// reads the records. One object serves one thread.
class zelqLineSearch {
public:
    /// `pattern` is not null; `locale` must outlive the object. Nothing is found in data that
    /// `data` does not give.
    zelqLineSearch(std::shared_ptr<const zelqSearchPattern> pattern, const zelqLocaleText& locale,
                   zelqDataReader data);

    /// Characters of one line that belong to a place.
    struct Piece {
        std::size_t line;  ///< of the record
        std::size_t column;
        std::size_t size;

        // NOLINTNEXTLINE(clang-diagnostic-zero-as-null-pointer-constant): clang's own code
        friend auto operator<=>(const Piece&, const Piece&) = default;
    };
    /// One place, in a piece for each line that it reaches into; not empty.
    using Place = std::vector<Piece>;

    [[nodiscard]] bool isIn(const zelqBCnrObject& record, zelqAddressForm form);
    /// All places, from top to bottom.
    [[nodiscard]] std::vector<Place> placesIn(const zelqBCnrObject& record, zelqAddressForm form);

private:
    template <typename Visit>
    bool visitTexts(const zelqBCnrObject& record, zelqAddressForm form, const Visit& visit);

    std::shared_ptr<const zelqSearchPattern> pattern_;
    zelqRecordFormatter formatter_;
    bool matchesDigits_;  ///< the pattern can be in addresses and digits
    std::string line_;
};
