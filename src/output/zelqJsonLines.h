#pragma once

#include "output/zelqEntryWriter.h"

/// Writes entries as JSON Lines: one object a line, the fields always the same and in the same
/// order. What an entry has not is null or an empty text, never left out.
class zelqJsonLines : public zelqEntryWriter {
public:
    struct Options {
        bool data = false;   ///< with the blocks of expansion data
        bool ascii = false;  ///< see zelqJsonText
    };

    explicit zelqJsonLines(const Options& options) : options_(options) {}

    void append(const zelqWrittenEntry& entry, std::string& text) override;

private:
    void appendFunction(const zelqText& name, std::string& text);
    static void appendData(const zelqWrittenEntry& entry, std::string& text);

    Options options_;
    std::string givenLog_;
    std::string log_;       ///< the start of an object of that log; empty at first
    std::string function_;  ///< used again and again
};
