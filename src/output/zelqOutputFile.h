#pragma once

#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>

#include "log/zelqFileIdentity.h"
#include "log/zelqStatus.h"
#include "output/zelqSignalRemoval.h"

struct stat;

/// How an output file is opened.
struct zelqOutputOptions {
    /// Files that are read and so must not be written. Only looked at while the file is opened.
    std::span<const zelqFileIdentity> inputs{};
    /// A request ends a write that waits for a pipe's reader.
    std::stop_token stop{};
    /// False: give the new file a name from the start, as on file systems that cannot do otherwise.
    bool unnamed = true;
};

/// A file that a program writes once, from its start to its end. For a regular file, or one that
/// does not exist yet, a new file is written in the same folder and renamed over it when it is
/// complete. The new file has the rights of the one it replaces. Anything else, such as a device or
/// a pipe, is written directly. So is a file that cannot be replaced; its old text is then lost at
/// once.
///
/// All operations return the status so far; after a failure they do nothing. A reader that closed
/// the pipe is std::errc::broken_pipe (the program must ignore SIGPIPE), a requested stop is
/// std::errc::operation_canceled, and a file that is one of the inputs std::errc::text_file_busy.
/// An object is used by one thread at a time.
class zelqOutputFile {
public:
    /// Opens the file. The name is a file's name even if it is "-".
    explicit zelqOutputFile(const std::string& name, const zelqOutputOptions& options = {});
    [[nodiscard]] static zelqOutputFile standardOutput(
        std::span<const zelqFileIdentity> inputs = {});
    /// Removes what was written and not completed.
    ~zelqOutputFile();
    zelqOutputFile(const zelqOutputFile&) = delete;
    zelqOutputFile& operator=(const zelqOutputFile&) = delete;

    /// To be called once at the start of a program: signals that end it then remove what is not
    /// completed.
    static void removeOnSignals() noexcept { zelqSignalRemoval::install(); }

    [[nodiscard]] const zelqStatus& status() const noexcept { return status_; }
    /// True if what is written is shown at once by a device that obeys control characters.
    [[nodiscard]] bool isTerminal() const noexcept;
    const zelqStatus& write(std::string_view bytes);
    /// Puts the new file in the place of the old one. After a failure of power the name belongs to
    /// one of the two, whole. To be called when all is written.
    const zelqStatus& complete();

private:
    explicit zelqOutputFile(std::stop_token stop) noexcept : stop_(std::move(stop)) {}
    zelqOutputFile(int descriptor, std::span<const zelqFileIdentity> inputs);
    void replace(const std::string& name, const struct stat& old, const zelqOutputOptions& options);
    void openDirectly(const std::string& name, int flags, std::span<const zelqFileIdentity> inputs);
    [[nodiscard]] int openBeside(const std::string& target, unsigned mode, bool unnamed);
    bool refuseInput(const struct stat& file, std::span<const zelqFileIdentity> inputs);
    [[nodiscard]] std::string descriptorName() const;
    void chooseTemporary();
    void waitForReader();
    [[nodiscard]] bool sync() const;
    [[nodiscard]] bool putInPlace();
    const zelqStatus& fail(const std::string& what, int error);

    int descriptor_ = -1;
    std::stop_token stop_;
    std::string target_;     ///< of the new file; empty when the output is written directly
    std::string temporary_;  ///< the new file's name while it is not complete; empty: it has none
    std::optional<zelqSignalRemoval> removal_;
    zelqStatus status_;
};
