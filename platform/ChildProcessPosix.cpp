#ifndef _WIN32
#include "platform/ChildProcess.h"

#include "platform/OwnedHandle.h"
#include "platform/TailText.h"
#include "platform/systemError.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace platform {
namespace {

constexpr std::size_t kErrorTextBytes = std::size_t{1} << 20;

struct Pipe {
    OwnedHandle readEnd;
    OwnedHandle writeEnd;

    [[nodiscard]] bool open()
    {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0) {
            return false;
        }
        readEnd = OwnedHandle(ends[0]);
        writeEnd = OwnedHandle(ends[1]);
        // a process without standard streams gets their numbers, which the child then overwrites
        if (writeEnd.get() <= STDERR_FILENO) {
            writeEnd = OwnedHandle(fcntl(writeEnd.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
        }
        return writeEnd.isOpen();
    }
};

std::vector<std::string> mergedEnvironment(const ChildProcessSettings& settings)
{
    std::vector<std::string> merged;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = text.substr(0, text.find('='));
        bool isReplaced = false;
        for (const auto& [ourName, value] : settings.environment) {
            isReplaced = isReplaced || ourName == name;
        }
        if (!isReplaced) {
            merged.emplace_back(text);
        }
    }
    for (const auto& [name, value] : settings.environment) {
        merged.push_back(name + "=" + value);
    }
    return merged;
}

/// The texts as the null-terminated array that the system's calls take; valid as long as `texts`.
std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

ssize_t readSome(int descriptor, char* buffer, std::size_t size)
{
    ssize_t count = 0;
    do {
        count = ::read(descriptor, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Starts the program; the descriptors become its standard output and, if not negative, error.
/// Result: 0 or the number of the system's error.
int spawn(const ChildProcessSettings& settings, int output, int errorOutput, pid_t& id)
{
    std::vector<std::string> arguments = settings.arguments;
    arguments.insert(arguments.begin(), settings.program);
    std::vector<std::string> environment = mergedEnvironment(settings);
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> environmentPointers = pointersTo(environment);

    posix_spawn_file_actions_t actions;
    int status = posix_spawn_file_actions_init(&actions);
    if (status != 0) {
        return status;
    }
    status = posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    if (status == 0 && errorOutput >= 0) {
        status = posix_spawn_file_actions_adddup2(&actions, errorOutput, STDERR_FILENO);
    }
    if (status == 0) {
        status = posix_spawnp(&id, settings.program.c_str(), &actions, nullptr,
                              argumentPointers.data(), environmentPointers.data());
    }
    posix_spawn_file_actions_destroy(&actions);
    return status;
}

} // namespace

struct ChildProcess::Process {
    pid_t id;
    bool isWaitedFor = false;
    ExitStatus status;
    OwnedHandle output;
    OwnedHandle errorOutput;
    TailText errorText{kErrorTextBytes};
    std::thread errorReader; // alone touches errorText until it is joined

    Process(pid_t startedId, OwnedHandle outputEnd, OwnedHandle errorEnd)
        : id(startedId), output(std::move(outputEnd)), errorOutput(std::move(errorEnd))
    {
        if (errorOutput.isOpen()) {
            errorReader = std::thread([this] { drainErrors(); });
        }
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process()
    {
        end();
        wait();
    }

    void end() const
    {
        if (!isWaitedFor) {
            kill(id, SIGKILL);
        }
    }

    void drainErrors()
    {
        char buffer[4096];
        ssize_t count = 0;
        while ((count = readSome(errorOutput.get(), buffer, sizeof buffer)) > 0) {
            errorText.append({buffer, static_cast<std::size_t>(count)});
        }
    }

    ExitStatus wait()
    {
        if (isWaitedFor) {
            return status;
        }
        output.close();
        int raw = 0;
        pid_t found = 0;
        do {
            found = waitpid(id, &raw, 0);
        } while (found < 0 && errno == EINTR);
        if (found == id) {
            status.exited = WIFEXITED(raw);
            status.code = status.exited ? WEXITSTATUS(raw) : WTERMSIG(raw);
        }
        isWaitedFor = true;
        if (errorReader.joinable()) {
            errorReader.join();
        }
        return status;
    }
};

std::string ExitStatus::text() const
{
    if (exited) {
        return "exit status " + std::to_string(code);
    }
    const char* name = code > 0 ? strsignal(code) : nullptr;
    return "signal " + std::to_string(code) + " (" + (name != nullptr ? name : "unknown") + ")";
}

std::optional<ChildProcess> ChildProcess::start(const ChildProcessSettings& settings,
                                                std::string& error)
{
    const bool collects = settings.standardError == ChildProcessSettings::StandardError::Collect;
    Pipe output;
    Pipe errors;
    if (!output.open() || (collects && !errors.open())) {
        error = cannotText("make a pipe for", settings.program, lastSystemError());
        return std::nullopt;
    }
    pid_t id = -1;
    const int failure = spawn(settings, output.writeEnd.get(), errors.writeEnd.get(), id);
    if (failure != 0) {
        error = cannotText("start", settings.program, failure);
        return std::nullopt;
    }
    return ChildProcess(
        std::make_unique<Process>(id, std::move(output.readEnd), std::move(errors.readEnd)));
}

ChildProcess::ChildProcess(std::unique_ptr<Process> process) : m_process(std::move(process)) {}
ChildProcess::ChildProcess(ChildProcess&& other) noexcept = default;
ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept = default;
ChildProcess::~ChildProcess() = default;

std::optional<std::size_t> ChildProcess::read(char* buffer, std::size_t size)
{
    const ssize_t count = readSome(m_process->output.get(), buffer, size);
    if (count < 0) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(count);
}

ExitStatus ChildProcess::wait()
{
    return m_process->wait();
}

void ChildProcess::terminate()
{
    m_process->end();
}

std::string ChildProcess::errorText() const
{
    return m_process->isWaitedFor ? m_process->errorText.text() : std::string();
}

} // namespace platform

#endif
