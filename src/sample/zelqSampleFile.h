#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

class zelqSampleLog;

/// A file that is written from its start to its end and does not stay when that fails. Every
/// operation throws std::system_error with the file's name and the reason.
class zelqSampleFile {
public:
    /// Empties the file if it is there. The name "-" stands for standard output.
    explicit zelqSampleFile(std::string name);
    /// Removes the file unless it was finished; devices and pipes are left alone.
    ~zelqSampleFile();
    zelqSampleFile(const zelqSampleFile&) = delete;
    zelqSampleFile& operator=(const zelqSampleFile&) = delete;

    void write(std::span<const std::byte> bytes);
    /// To be called when all is written.
    void finish();

private:
    void flush();
    [[noreturn]] void fail() const;

    std::string name_;
    int descriptor_ = -1;
    std::vector<std::byte> buffer_;
    bool removable_ = false;  ///< a regular file that is not finished
};

/// Writes the next `count` entries of a sample log to a file. Throws as zelqSampleFile does.
void writeSampleLog(const std::string& fileName, zelqSampleLog& log, std::uint64_t count);
