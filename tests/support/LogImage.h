#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "log/zelqDataReader.h"
#include "log/zelqLog.h"
#include "log/zelqLogDecoder.h"
#include "log/zelqLogReader.h"

/// Log files for tests and benchmarks, built byte by byte from what an entry should hold.

inline void appendBig(std::string& image, std::size_t value, unsigned size) {
    for (unsigned i = size; i-- > 0;) {
        image.push_back(static_cast<char>(value >> (8 * i)));
    }
}

struct TestBlock {
    std::uint32_t address = 0;
    std::string data{};
};

struct TestEntry {
    std::uint16_t type = 0x0013;
    zelqDate date{.year = 2026, .month = 11, .day = 21};
    std::uint8_t hour = 12, minute = 0, second = 0, fraction = 0;
    std::uint32_t pid = 0, tid = 0, majorError = 0, minorError = 0, detectPoint = 0,
                  detectPointCode = 0;
    std::string name{};
    /// If there are any, they are the header from offset 8 on, in place of all of the above.
    std::vector<std::uint32_t> numbers{};
    /// The header is cut or filled up with NULs to this length.
    std::optional<std::uint16_t> headerLength{};
    /// Written in place of the true length; from 8 on, bytes after it are left out.
    std::optional<std::uint16_t> entryLength{};
    std::vector<TestBlock> blocks{};
    std::string data{};  ///< bytes after the blocks
};

/// The header of an entry from offset 8 on, as its type lays it out.
inline std::string headerOf(const TestEntry& entry) {
    const bool error = entry.type == 0x0003 || entry.type == 0x0013;
    const bool trace = entry.type == 0x0005 || entry.type == 0x0015;
    std::vector<std::uint32_t> numbers = entry.numbers;
    if (numbers.empty()) {
        const auto join = [](unsigned a, unsigned b, unsigned c) { return a << 24 | b << 16 | c; };
        numbers = {join(entry.date.day, entry.date.month, entry.date.year),
                   join(entry.hour, entry.minute, 256U * entry.second + entry.fraction), entry.pid,
                   entry.tid};
        if (error) {
            numbers.insert(numbers.end(), {entry.majorError, entry.minorError});
        }
        if (error || trace) {
            numbers.insert(numbers.end(), {entry.detectPoint, entry.detectPointCode});
        }
    }
    std::string header;
    for (const std::uint32_t number : numbers) {
        appendBig(header, number, 4);
    }
    if (entry.numbers.empty() && (error || trace || entry.type == 0x2002)) {
        header.append(entry.name).push_back('\0');
    }
    return header;
}

inline void appendEntry(std::string& image, const TestEntry& entry) {
    std::string rest = headerOf(entry);
    if (entry.headerLength.has_value()) {
        rest.resize(*entry.headerLength < 4U ? 0U : *entry.headerLength - 4U);
    }
    const std::size_t headerLength = entry.headerLength.value_or(4 + rest.size());
    for (const TestBlock& block : entry.blocks) {
        appendBig(rest, 8 + block.data.size(), 2);
        appendBig(rest, 0, 2);
        appendBig(rest, block.address, 4);
        rest += block.data;
    }
    rest += entry.data;
    const std::size_t length = entry.entryLength.value_or(8 + rest.size());
    appendBig(image, length, 2);
    appendBig(image, 0, 2);
    appendBig(image, headerLength, 2);
    appendBig(image, entry.type, 2);
    image.append(rest, 0, length < 8 ? rest.size() : length - 8);
}

inline std::string logImage(const std::vector<TestEntry>& entries) {
    std::string image;
    for (const TestEntry& entry : entries) {
        appendEntry(image, entry);
    }
    return image;
}

/// What the columns show of a record, but for its type and mark.
using TestColumns = std::tuple<zelqTimestamp, std::uint32_t, std::uint32_t, std::uint32_t,
                               std::uint32_t, std::uint32_t, std::string_view, std::string>;

inline TestColumns columnsOf(const zelqBCnrObject& record) {
    return {record.timestamp(),
            record.pid(),
            record.tid(),
            record.majorError(),
            record.minorError(),
            record.detectPoint(),
            record.detectPointType(),
            record.function().string()};
}

/// GoogleTest shows a finding by its text.
inline void PrintTo(const zelqFinding& finding, std::ostream* stream) {  // NOLINT(*-naming)
    *stream << finding.text();
}

/// An image decoded in one go. Its bytes end where their memory ends, so that a sanitizer notices a
/// read past them.
struct DecodedLog {
    explicit DecodedLog(std::string_view image, int slot = 0) : bytes(image.size()) {
        image.copy(reinterpret_cast<char*>(bytes.data()), image.size());
        zelqLogDecoder decoder(static_cast<std::uint16_t>(slot),
                               [this](const zelqFinding& finding) { findings.push_back(finding); });
        log->append(decoder, bytes, true);
    }

    [[nodiscard]] std::size_t size() const { return log->size(); }
    [[nodiscard]] zelqBCnrObject& operator[](std::size_t index) const { return (*log)[index]; }

    std::vector<std::byte> bytes;
    std::unique_ptr<zelqLog> log = std::make_unique<zelqLog>("");
    std::vector<zelqFinding> findings;
};

/// An image that was read as the file of a log whose bytes are not kept, and may have changed
/// since.
struct DemandedLog {
    explicit DemandedLog(const std::string& image, int slot = 0) {
        put(image);
        log = zelqLogReader::read(
                  {.fileName = "/proc/self/fd/" + std::to_string(file.get()),
                   .logSlot = static_cast<std::uint16_t>(slot),
                   .findings = [this](const zelqFinding& found) { findings.push_back(found); },
                   .mostKept = 0})
                  .log;
    }
    /// Changes the file.
    void put(const std::string& image) const {
        std::ofstream stream("/proc/self/fd/" + std::to_string(file.get()), std::ios::binary);
        stream.exceptions(std::ios::failbit | std::ios::badbit);
        stream << image << std::flush;
    }

    zelqDescriptor file{::memfd_create("log", MFD_CLOEXEC)};
    std::vector<zelqFinding> findings;
    std::unique_ptr<zelqLog> log;
};

/// The data of a record that are in memory.
inline std::span<const std::byte> dataOf(const zelqBCnrObject& record) {
    return zelqDataReader().dataOf(record).bytes;
}

/// All attributes of each record; of its data, the offset in the file.
inline auto contentsOf(const zelqLog& log, const std::byte* file) {
    std::vector<std::tuple<TestColumns, int, int, bool, std::ptrdiff_t, std::size_t>> contents;
    log.forEach([&](const zelqBCnrObject& record) {
        const zelqDataPlace& data = record.dataPlace();
        const std::ptrdiff_t offset =
            data.isInFile() ? static_cast<std::ptrdiff_t>(data.offset()) : data.address() - file;
        contents.emplace_back(columnsOf(record), record.entryIndex(), record.blockCount(),
                              record.hasExpansion(), record.dataSize() == 0 ? 0 : offset,
                              record.dataSize());
    });
    return contents;
}

/// A file's content; empty if there is no file.
inline std::string contentOf(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A new folder for a test's files, removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "zelq-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), pattern);
        }
        path_ = pattern;
    }
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }
    TemporaryFolder(TemporaryFolder&&) = delete;

    /// The path of a file in the folder, whether or not there is one.
    [[nodiscard]] std::string file(const std::string& name) const { return path_ / name; }
    /// Writes a file and returns its path.
    [[nodiscard]] std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream stream(file(name), std::ios::binary);
        stream.exceptions(std::ios::failbit | std::ios::badbit);
        stream << bytes << std::flush;
        return file(name);
    }

private:
    std::filesystem::path path_;
};
