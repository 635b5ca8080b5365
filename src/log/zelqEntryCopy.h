#pragma once

#include <string>

#include "log/zelqEntry.h"

/// Copies entries into a new log, where each is to be read as it was read in its own.
///
/// An entry that says all of itself is copied byte for byte. One that does not is written anew: one
/// whose header is so short that it shows what the entries before left in the header buffer, one
/// that ends inside its header, and one that its file ends in.
namespace zelqEntryCopy {

enum class Form {
    AsItStands,
    Whole,    ///< written anew, with the header that the reader had for it
    TooLong,  ///< as it stands: with a whole header it would be longer than an entry can be
};

/// Appends an entry to the text of a log.
Form append(const zelqEntry& entry, std::string& log);

}  // namespace zelqEntryCopy
