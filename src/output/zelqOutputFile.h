#pragma once

#include <stop_token>
#include <string>
#include <string_view>

/// Where a listing is written to. Beside a regular file, or one that does not exist yet, a new file
/// is written that replaces it only when it is complete; anything else is written directly.
class zelqOutputFile {
public:
    /// Opens the file. See problem(). A request to stop ends a write that waits for a pipe's
    /// reader.
    explicit zelqOutputFile(const std::string& name, std::stop_token stop = {});
    [[nodiscard]] static zelqOutputFile standardOutput();
    /// Removes what was written and not completed.
    ~zelqOutputFile();
    zelqOutputFile(const zelqOutputFile&) = delete;
    zelqOutputFile& operator=(const zelqOutputFile&) = delete;

    /// Empty, or what went wrong first.
    [[nodiscard]] const std::string& problem() const noexcept { return problem_; }
    /// True if whoever read the output has closed it.
    [[nodiscard]] bool readerIsGone() const noexcept { return readerIsGone_; }

    /// False once something went wrong.
    bool write(std::string_view bytes);
    /// Puts the new file in the place of the old one. False if that or a write before failed.
    bool complete();

private:
    explicit zelqOutputFile(int descriptor) noexcept : descriptor_(descriptor) {}
    void openDirectly(const std::string& name, int flags);
    [[nodiscard]] int openBeside(const std::string& target);
    void waitForReader();
    void fail(const std::string& what, int error);

    int descriptor_ = -1;
    std::stop_token stop_;
    std::string target_;     ///< of the new file; empty when the output is written directly
    std::string temporary_;  ///< the new file, until it is complete
    std::string problem_;
    bool readerIsGone_ = false;
};
