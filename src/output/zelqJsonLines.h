#pragma once

#include <memory>

#include "output/zelqEntryWriter.h"

/// Writes entries as JSON Lines: one object a line, the fields always the same and in the same
/// order. What an entry has not is null or an empty text, never left out.
class zelqJsonLines : public zelqEntryWriter {
public:
    struct Options {
        bool data = false;   ///< with the blocks of expansion data
        bool ascii = false;  ///< escape all characters beyond ASCII, as a terminal needs it
    };

    explicit zelqJsonLines(const Options& options);
    ~zelqJsonLines() override;

    void append(const zelqWrittenEntry& entry, std::string& text) override;

private:
    struct Form;
    template <typename Encoding>
    struct FormOf;

    std::unique_ptr<Form> form_;
};
