// The log file of the importer: one line a record, flushed at once, for the process may end inside
// a call of Maya.
#pragma once

#include <cstdint>
#include <cstdio>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

// Headers of Windows define some of these words as macros.
#undef DEBUG
#undef ERROR

/// How much a record matters; a record is written when its level is at most the reporting level.
/// NONE is the highest level, not silence: as reporting level it lets everything through.
enum LogLevel : std::int32_t {
    ERROR = 0,
    WARNING = 1,
    INFO = 2,
    DEBUG = 3,
    DEBUG1 = 4,
    DEBUG2 = 5,
    DEBUG3 = 6,
    DEBUG4 = 7,
    NONE = 8,
};

/// From this size on the log file is started afresh instead of being appended to.
inline constexpr std::uint64_t LOG_FILE_SIZE_LIMIT = 0x1400000; // 20 MiB

/// The name of `level`; "?" for a number that is none.
const char* levelName(LogLevel level);

/// The level of that name (whole, case-sensitive), if there is one.
std::optional<LogLevel> levelNamed(const std::string& name);

/// Time of day, and after the point the milliseconds part of the time since the first call:
/// "14:03:27.415".
std::string NowTime();

/// The text of NowTime for a time of day and the milliseconds elapsed; the error text without one.
std::string timeStampText(const std::optional<std::string>& timeOfDay,
                          std::uint32_t elapsedMilliseconds);

/// Where the log lies: in the renderer's resource folder, which the registry names, else in the
/// user's temporary folder. That one ends in a separator already; the second one is meant to be
/// there.
std::wstring logFilePath();

/// The text after the last separator of either kind.
std::string baseName(const std::string& path);

/// Writes records to the log file. All members are shared by the whole process.
class Output2FILE {
public:
    /// The log's stream. While it is null, each call tries to open the file, and reports a failure
    /// on standard error.
    static std::FILE*& Stream();
    /// Writes and flushes a finished record; nothing when the log cannot be opened.
    static void Output(const std::string& text);

private:
    static std::FILE* s_stream;
};

/// One record: made for one statement, filled through Get, written when it is destroyed.
template<typename OutputPolicy>
class Log {
public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log()
    {
        m_stream << '\n';
        OutputPolicy::Output(m_stream.str());
    }

    /// Writes the prefix (base name of the source file, line, time, level) and returns the stream
    /// that takes the message.
    std::ostream& Get(LogLevel level, const std::string& sourceFile, int line)
    {
        m_stream.imbue(std::locale::classic());
        m_stream << baseName(sourceFile) << ':' << line << " - " << NowTime() << ' '
                 << ToString(level) << ":  ";
        return m_stream;
    }

    /// The level up to which records are written, DEBUG4 at first.
    static LogLevel& ReportingLevel()
    {
        static constinit LogLevel level = DEBUG4;
        return level;
    }

    static std::string ToString(LogLevel level) { return levelName(level); }

    /// The level of that name. An unknown name gives INFO and a warning, which is written whatever
    /// the reporting level.
    static LogLevel FromString(const std::string& name)
    {
        const std::optional<LogLevel> level = levelNamed(name);
        if (!level) {
            Log().Get(WARNING, "", 0)
                << "Unknown logging level '" << name << "'. Using INFO level as default.";
        }
        return level.value_or(INFO);
    }

private:
    std::ostringstream m_stream;
};

using FILELog = Log<Output2FILE>;

/// Turns the stream of a record into nothing, so that both branches of FILE_LOG agree.
struct LogStatement {
    void operator&(std::ostream&) const {}
};

/// FILE_LOG at a place in the source that is not this one.
#define FILE_LOG_AT(level, sourceFile, line)                                                       \
    !((level) <= FILELog::ReportingLevel() && Output2FILE::Stream() != nullptr)                    \
        ? (void)0                                                                                  \
        : LogStatement() & FILELog().Get((level), (sourceFile), (line))

/// FILE_LOG(level) << message: a record, if `level` is reported. Otherwise nothing of the message
/// is evaluated, and the log file is not opened.
#define FILE_LOG(level) FILE_LOG_AT(level, __FILE__, __LINE__)
