#ifdef _WIN32
#include "platform/ChildProcess.h"

#include "platform/OwnedHandle.h"
#include "platform/TailText.h"
#include "platform/systemError.h"
#include "platform/wideText.h"
#include "platform/windowsCommandLine.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <thread>

#include <windows.h>

namespace platform {
namespace {

constexpr std::size_t kErrorTextBytes = std::size_t{1} << 20;
constexpr DWORD kFirstExceptionCode =
    0xc0000000;                              // from here on the system itself ended the process
constexpr UINT kTerminatedCode = 0xc000013a; // the code of a console program that was broken off

/// A pipe whose write end alone is inherited.
struct Pipe {
    OwnedHandle readEnd;
    OwnedHandle writeEnd;

    [[nodiscard]] bool open()
    {
        SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
        HANDLE readHandle = nullptr;
        HANDLE writeHandle = nullptr;
        if (CreatePipe(&readHandle, &writeHandle, &inheritable, 0) == 0) {
            return false;
        }
        readEnd = OwnedHandle(readHandle);
        writeEnd = OwnedHandle(writeHandle);
        return SetHandleInformation(readHandle, HANDLE_FLAG_INHERIT, 0) != 0;
    }
};

/// The part of "NAME=value" before the sign; a name may begin with one ("=C:=C:\folder").
std::wstring_view nameOf(std::wstring_view entry)
{
    return entry.substr(0, entry.find(L'=', 1));
}

int compareNames(std::wstring_view left, std::wstring_view right)
{
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) -
           CSTR_EQUAL;
}

std::vector<std::wstring> currentEnvironment()
{
    std::vector<std::wstring> entries;
    wchar_t* const block = GetEnvironmentStringsW();
    if (block == nullptr) {
        return entries;
    }
    for (const wchar_t* entry = block; *entry != L'\0'; entry += entries.back().size() + 1) {
        entries.emplace_back(entry);
    }
    FreeEnvironmentStringsW(block);
    return entries;
}

/// Our environment with the settings' variables, in the form and order that CreateProcessW asks
/// for.
std::wstring environmentBlock(const ChildProcessSettings& settings)
{
    std::vector<std::wstring> entries = currentEnvironment();
    for (const auto& [name, value] : settings.environment) {
        const std::wstring wideName = toWide(name);
        const auto isSame = [&](const std::wstring& entry) {
            return compareNames(nameOf(entry), wideName) == 0;
        };
        entries.erase(std::remove_if(entries.begin(), entries.end(), isSame), entries.end());
        entries.push_back(wideName + L"=" + toWide(value));
    }
    const auto isBefore = [](const std::wstring& left, const std::wstring& right) {
        return compareNames(nameOf(left), nameOf(right)) < 0;
    };
    std::stable_sort(entries.begin(), entries.end(), isBefore);
    std::wstring block;
    for (const std::wstring& entry : entries) {
        block.append(entry).push_back(L'\0');
    }
    block.push_back(L'\0');
    return block;
}

/// Starts the program with these standard streams; `errorOutput` null means ours.
OwnedHandle spawn(const ChildProcessSettings& settings, HANDLE output, HANDLE errorOutput)
{
    std::wstring commandLine = toWide(windowsCommandLine(settings.program, settings.arguments));
    std::wstring environment = environmentBlock(settings);
    STARTUPINFOW streams = {};
    streams.cb = sizeof streams;
    streams.dwFlags = STARTF_USESTDHANDLES;
    streams.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    streams.hStdOutput = output;
    streams.hStdError = errorOutput != nullptr ? errorOutput : GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started = {};
    if (CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE,
                       CREATE_UNICODE_ENVIRONMENT, environment.data(), nullptr, &streams,
                       &started) == 0) {
        return {};
    }
    CloseHandle(started.hThread);
    return OwnedHandle(started.hProcess);
}

/// Result: bytes stored, 0 at the end, no value on failure.
std::optional<std::size_t> readSome(HANDLE handle, char* buffer, std::size_t size)
{
    constexpr std::size_t kMostBytes = std::size_t{1} << 30;
    DWORD count = 0;
    do {
        if (ReadFile(handle, buffer, static_cast<DWORD>(std::min(size, kMostBytes)), &count,
                     nullptr) == 0) {
            if (GetLastError() == ERROR_BROKEN_PIPE) { // the way a pipe ends here
                return 0;
            }
            return std::nullopt;
        }
    } while (count == 0 && size > 0); // somebody wrote nothing: that is not the end
    return count;
}

} // namespace

struct ChildProcess::Process {
    OwnedHandle handle;
    bool isWaitedFor = false;
    ExitStatus status;
    OwnedHandle output;
    OwnedHandle errorOutput;
    TailText errorText{kErrorTextBytes};
    std::thread errorReader; // alone touches errorText until it is joined

    Process(OwnedHandle process, OwnedHandle outputEnd, OwnedHandle errorEnd)
        : handle(std::move(process)), output(std::move(outputEnd)), errorOutput(std::move(errorEnd))
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
            TerminateProcess(handle.get(), kTerminatedCode);
        }
    }

    void drainErrors()
    {
        char buffer[4096];
        for (;;) {
            const std::optional<std::size_t> count =
                readSome(errorOutput.get(), buffer, sizeof buffer);
            if (count.value_or(0) == 0) {
                return;
            }
            errorText.append({buffer, *count});
        }
    }

    ExitStatus wait()
    {
        if (isWaitedFor) {
            return status;
        }
        output.close();
        WaitForSingleObject(handle.get(), INFINITE);
        DWORD code = 0;
        if (GetExitCodeProcess(handle.get(), &code) != 0) {
            status.exited = code < kFirstExceptionCode;
            status.code = static_cast<int>(code);
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
    char text[32];
    std::snprintf(text, sizeof text, "exception 0x%08x", static_cast<unsigned>(code));
    return text;
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
    OwnedHandle process = spawn(settings, output.writeEnd.get(), errors.writeEnd.get());
    if (!process.isOpen()) {
        error = cannotText("start", settings.program, lastSystemError());
        return std::nullopt;
    }
    // our copies of the write ends would keep the pipes from ending
    output.writeEnd.close();
    errors.writeEnd.close();
    return ChildProcess(std::make_unique<Process>(std::move(process), std::move(output.readEnd),
                                                  std::move(errors.readEnd)));
}

ChildProcess::ChildProcess(std::unique_ptr<Process> process) : m_process(std::move(process)) {}
ChildProcess::ChildProcess(ChildProcess&& other) noexcept = default;
ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept = default;
ChildProcess::~ChildProcess() = default;

std::optional<std::size_t> ChildProcess::read(char* buffer, std::size_t size)
{
    return readSome(m_process->output.get(), buffer, size);
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
