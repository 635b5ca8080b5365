#pragma once

#include <cstddef>
#include <vector>

#include "log/zelqEntry.h"
#include "log/zelqMemory.h"
#include "output/zelqLocaleText.h"
#include "output/zelqTextPipeline.h"

/// Writes the listing of entries that pass by: the text that zelqListing writes of their records,
/// each as the first dump of its record. Renders on all processors. Memory does not grow with the
/// listing. One thread.
class zelqListingWriter {
public:
    /// `locale` and `output` must outlive the object.
    zelqListingWriter(const zelqLocaleText& locale, zelqOutputFile& output);

    /// Adds an entry, whose bytes are copied. False after a failure of the output. Throws
    /// std::bad_alloc.
    bool add(const zelqEntry& entry);
    /// Writes all that was added so far.
    const zelqStatus& flush();

private:
    /// Entries that are rendered as one piece.
    struct Batch {
        std::vector<zelqBCnrObject> records;
        zelqMemory bytes;  ///< their data and texts
        std::size_t used = 0;
        std::size_t textSize = 0;  ///< of their listing, at most
    };

    bool begin();
    void submit();

    const zelqLocaleText& locale_;
    std::vector<Batch> batches_;  ///< one for each slot
    Batch* batch_ = nullptr;      ///< the one that is being filled
    zelqTextPipeline pipeline_;   // last: its threads use the rest
};
