// Another program started as a process of its own, its standard output read through a pipe.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// What to start and how. All texts are UTF-8.
struct ChildProcessSettings {
    enum class StandardError {
        Inherit, // goes where ours goes
        Collect, // is gathered, see ChildProcess::errorText
    };

    std::string program;                // a path; a bare name is looked up the way the system does
    std::vector<std::string> arguments; // without the program's name; any bytes but zero
    std::vector<std::pair<std::string, std::string>>
        environment; // added to ours, or replacing what is there
    StandardError standardError = StandardError::Inherit;
};

/// How a process ended.
struct ExitStatus {
    bool exited = false; // false: a signal or an unhandled exception of the system ended it
    int code =
        0; // exit status (0 to 255 on POSIX), else the signal's number or the exception's code

    [[nodiscard]] bool isSuccess() const { return exited && code == 0; }
    /// "exit status 3", "signal 11 (Segmentation fault)", "exception 0xc0000005".
    [[nodiscard]] std::string text() const;
};

/// A running program. One thread reads and waits; standard error, when collected, is drained beside
/// it, so that a child that writes much to both never blocks.
class ChildProcess {
public:
    /// Failure: no value, and `error` says why. On some systems a program that cannot be run is
    /// only seen by its exit status 127.
    [[nodiscard]] static std::optional<ChildProcess> start(const ChildProcessSettings& settings,
                                                           std::string& error);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&& other) noexcept;
    /// A child that was not waited for is ended.
    ~ChildProcess();

    /// Waits for the next bytes of the child's standard output.
    /// Result: how many were stored (1 to `size`), 0 at the end of the output (the child closed
    /// it), no value when reading failed.
    [[nodiscard]] std::optional<std::size_t> read(char* buffer, std::size_t size);

    /// Closes our end of the output (a child that still writes then fails to), and waits for the
    /// child's end. A second call returns the same again. Read to the end first if the output
    /// matters.
    ExitStatus wait();

    /// Ends the child by force. `wait` is still to be called.
    void terminate();

    /// What the child wrote to standard error, known after `wait`; of a very long text only the
    /// last MiB. Empty unless it was to be collected.
    [[nodiscard]] std::string errorText() const;

private:
    struct Process;
    explicit ChildProcess(std::unique_ptr<Process> process);

    std::unique_ptr<Process> m_process;
};

} // namespace platform
