// The child that is started here is this program once more: a variable tells it what to play.
#include "platform/ChildProcess.h"

#include "platform/wideText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>
#else
#include <csignal>
#include <fstream>
#include <iterator>
#endif

namespace {

using platform::ChildProcess;
using platform::ChildProcessSettings;
using platform::ExitStatus;

constexpr char kRole[] = "VISTREL_TEST_ROLE";
constexpr char kSample[] = "VISTREL_TEST_SAMPLE";
constexpr std::size_t kFloodBytes = std::size_t{3} << 20;

#ifdef _WIN32

std::string ownPath()
{
    wchar_t path[1024] = L"";
    return platform::toUtf8({path, GetModuleFileNameW(nullptr, path, 1024)});
}

std::vector<std::string> ownArguments()
{
    int count = 0;
    wchar_t** texts = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(platform::toUtf8(texts[i]));
    }
    LocalFree(texts);
    return arguments;
}

std::string variable(const char* name)
{
    const wchar_t* value = _wgetenv(platform::toWide(name).c_str());
    return value != nullptr ? platform::toUtf8(value) : std::string();
}

void dieHard()
{
    RaiseException(0xc0000005, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

#else

std::string ownPath()
{
    return "/proc/self/exe";
}

std::vector<std::string> ownArguments()
{
    std::ifstream stream("/proc/self/cmdline", std::ios::binary);
    const std::string line{std::istreambuf_iterator<char>(stream), {}};
    std::vector<std::string> arguments;
    for (std::size_t i = line.find('\0') + 1; i < line.size();) {
        arguments.emplace_back(line.c_str() + i);
        i += arguments.back().size() + 1;
    }
    return arguments;
}

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

void dieHard()
{
    raise(SIGKILL);
}

#endif

void playRole(const std::string& role)
{
#ifdef _WIN32
    _setmode(1, _O_BINARY);
    _setmode(2, _O_BINARY);
#endif
    if (role == "echo") {
        for (const std::string& argument : ownArguments()) {
            std::printf("%zu:%s;", argument.size(), argument.c_str());
        }
        std::printf("%s=%s", kSample, variable(kSample).c_str());
        std::fprintf(stderr, "a word aside");
    } else if (role == "flood") {
        const std::string block(std::size_t{1} << 16, 'x');
        for (std::size_t sent = 0; sent < kFloodBytes; sent += block.size()) {
            std::fwrite(block.data(), 1, block.size(), stderr);
            std::fwrite(block.data(), 1, block.size(), stdout);
        }
        std::fprintf(stderr, "end");
    } else if (role == "die") {
        dieHard();
    } else if (role == "sleep") {
        std::printf("ready");
        std::fflush(stdout);
        for (;;) {
            std::getchar();
        }
    }
    std::fflush(stdout);
    std::_Exit(role == "seven" ? 7 : 0);
}

[[maybe_unused]] const bool kIsParent = [] {
    const std::string role = variable(kRole);
    if (!role.empty()) {
        playRole(role);
    }
    return true;
}();

ChildProcessSettings settingsOf(const char* role)
{
    ChildProcessSettings settings;
    settings.program = ownPath();
    settings.environment = {{kRole, role}};
    settings.standardError = ChildProcessSettings::StandardError::Collect;
    return settings;
}

std::string readAll(ChildProcess& child)
{
    std::string text;
    char buffer[1000];
    for (;;) {
        const std::optional<std::size_t> count = child.read(buffer, sizeof buffer);
        EXPECT_TRUE(count);
        if (count.value_or(0) == 0) {
            return text;
        }
        text.append(buffer, *count);
    }
}

TEST(ChildProcess, HandsArgumentsOverUnchanged)
{
    ChildProcessSettings settings = settingsOf("echo");
    settings.arguments = {
        "MTIgLQ==", "", "a b", "q\"uo\\\"te", "end\\", "b l\\", "\xc3\xa9\xe6\xbc\xa2"};
    std::string error;
    auto child = ChildProcess::start(settings, error);
    ASSERT_TRUE(child) << error;
    EXPECT_EQ(readAll(*child), "8:MTIgLQ==;0:;3:a b;8:q\"uo\\\"te;4:end\\;4:b l\\;"
                               "5:\xc3\xa9\xe6\xbc\xa2;VISTREL_TEST_SAMPLE=");
    EXPECT_TRUE(child->wait().isSuccess());
    EXPECT_EQ(child->errorText(), "a word aside");
}

TEST(ChildProcess, AddsVariablesToTheEnvironment)
{
    ChildProcessSettings settings = settingsOf("echo");
    settings.environment.emplace_back(kSample, "one=two \xc3\xa9");
    std::string error;
    auto child = ChildProcess::start(settings, error);
    ASSERT_TRUE(child) << error;
    EXPECT_EQ(readAll(*child), "VISTREL_TEST_SAMPLE=one=two \xc3\xa9");
    EXPECT_TRUE(child->wait().isSuccess());
}

TEST(ChildProcess, ReportsTheExitStatusAgainAndAgain)
{
    std::string error;
    auto child = ChildProcess::start(settingsOf("seven"), error);
    ASSERT_TRUE(child) << error;
    for (int i = 0; i < 2; ++i) {
        const ExitStatus status = child->wait();
        EXPECT_TRUE(status.exited);
        EXPECT_EQ(status.code, 7);
        EXPECT_FALSE(status.isSuccess());
        EXPECT_EQ(status.text(), "exit status 7");
    }
}

TEST(ChildProcess, DoesNotBlockWhenBothStreamsAreFlooded)
{
    std::string error;
    auto child = ChildProcess::start(settingsOf("flood"), error);
    ASSERT_TRUE(child) << error;
    EXPECT_EQ(readAll(*child).size(), kFloodBytes);
    EXPECT_TRUE(child->wait().isSuccess());
    const std::string errors = child->errorText();
    EXPECT_EQ(errors.size(), std::size_t{1} << 20); // the last MiB is kept
    EXPECT_EQ(errors.substr(errors.size() - 4), "xend");
}

TEST(ChildProcess, TellsADeathFromAnExit)
{
    std::string error;
    auto child = ChildProcess::start(settingsOf("die"), error);
    ASSERT_TRUE(child) << error;
    const ExitStatus status = child->wait();
    EXPECT_FALSE(status.exited);
    EXPECT_FALSE(status.isSuccess());
#ifdef _WIN32
    EXPECT_EQ(status.text(), "exception 0xc0000005");
#else
    EXPECT_EQ(status.text(), "signal 9 (Killed)");
#endif
}

TEST(ChildProcess, EndsAChildByForce)
{
    std::string error;
    auto child = ChildProcess::start(settingsOf("sleep"), error);
    ASSERT_TRUE(child) << error;
    char buffer[8];
    EXPECT_TRUE(child->read(buffer, sizeof buffer));
    child->terminate();
    EXPECT_FALSE(child->wait().exited);
}

TEST(ChildProcess, EndsAChildThatNobodyWaitedFor)
{
    std::string error;
    auto child = ChildProcess::start(settingsOf("sleep"), error);
    ASSERT_TRUE(child) << error;
    child.reset(); // returns only because the child is ended
}

TEST(ChildProcess, SaysWhyAProgramCannotBeStarted)
{
    ChildProcessSettings settings;
    settings.program = "no/such/program";
    std::string error;
    EXPECT_FALSE(ChildProcess::start(settings, error));
    EXPECT_EQ(error.find("cannot start \"no/such/program\": "), 0U) << error;
}

} // namespace
