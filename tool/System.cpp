#include "tool/System.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#ifdef _WIN32
#include <io.h>
#include <windows.h>

#include <string_view>

#include "QELModels/Values/Text.h"
#else
#include <unistd.h>

#include <csignal>
#endif

namespace QELModels::tool::system {

namespace {

// No system takes more in one call.
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

#ifdef _WIN32
using Status = struct ::_stat64;
#else
using Status = struct ::stat;
#endif

// What the system's `look` says of a file; nothing when it fails.
template <class Look>
std::optional<FileStatus> statusBy(const Look& look) {
    Status status{};
    if (look(&status) != 0) return std::nullopt;
    FileStatus description;
    description.isFolder = (status.st_mode & S_IFMT) == S_IFDIR;
    if ((status.st_mode & S_IFMT) == S_IFREG) description.size = static_cast<std::uint64_t>(status.st_size);
    return description;
}

}  // namespace

// --- Windows ----------------------------------------------------------------------------------------------

#ifdef _WIN32

namespace {

std::wstring wide(const std::string& text) {
    const std::u16string units = Text::toUTF16(text);
    return {units.begin(), units.end()};
}

std::string narrow(std::wstring_view text) {
    return Text::fromUTF16(std::u16string(text.begin(), text.end()));
}

void skipBlanks(std::wstring_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(L" \t"), line.size()));
}

// Takes the first argument away from a command line. Quotes keep blanks; within them, two are one of the
// text. Backslashes before a quote are halved, and an odd one makes the quote one of the text.
std::wstring takeArgument(std::wstring_view& line) {
    std::wstring text;
    bool isQuoted = false;
    while (!line.empty() && (isQuoted || (line.front() != L' ' && line.front() != L'\t'))) {
        const std::size_t backslashes = std::min(line.find_first_not_of(L'\\'), line.size());
        line.remove_prefix(backslashes);
        if (line.empty() || line.front() != L'"') {
            text.append(backslashes, L'\\');
            if (backslashes != 0) continue;
            text += line.front();
        } else {
            text.append(backslashes / 2, L'\\');
            const bool isDouble = isQuoted && line.substr(0, 2) == L"\"\"";
            if (backslashes % 2 != 0 || isDouble)
                text += L'"';
            else
                isQuoted = !isQuoted;
            if (backslashes % 2 == 0 && isDouble) line.remove_prefix(1);
        }
        line.remove_prefix(1);
    }
    return text;
}

int opened(const std::string& name, int flags) {
    return ::_wopen(wide(name).c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}

}  // namespace

std::vector<std::string> programArguments(int, char*[]) {
    // What main() is given has lost all that the system's code page lacks. The system's own function for this
    // lies in a library of windows and fonts, which take longer to load than most documents to map.
    std::wstring_view line = ::GetCommandLineW();
    takeArgument(line);  // the program's name
    std::vector<std::string> arguments;
    for (skipBlanks(line); !line.empty(); skipBlanks(line))
        arguments.push_back(narrow(takeArgument(line)));
    return arguments;
}

void prepareFiles() {
    for (const int file : {kInput, kOutput, kErrors})
        ::_setmode(file, _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
}

std::optional<FileStatus> statusOf(const std::string& name) {
    return statusBy([&](Status* status) { return ::_wstat64(wide(name).c_str(), status); });
}

std::optional<FileStatus> statusOf(int file) {
    return statusBy([&](Status* status) { return ::_fstat64(file, status); });
}

bool isReadable(const std::string& name) {
    constexpr int kRead = 4;
    return ::_waccess(wide(name).c_str(), kRead) == 0;
}

int openForReading(const std::string& name) {
    const int file = opened(name, _O_RDONLY);
    if (file >= 0 || errno != EACCES) return file;
    const std::optional<FileStatus> status = statusOf(name);
    errno = status && status->isFolder ? EISDIR : EACCES;
    return file;
}

int openForWriting(const std::string& name) {
    return opened(name, _O_WRONLY | _O_CREAT);
}

void close(int file) {
    ::_close(file);
}

std::ptrdiff_t read(int file, char* bytes, std::size_t size) {
    return ::_read(file, bytes, static_cast<unsigned>(std::min(size, kMostBytes)));
}

std::ptrdiff_t write(int file, const char* bytes, std::size_t size) {
    const int count = ::_write(file, bytes, static_cast<unsigned>(std::min(size, kMostBytes)));
    // Some of the system's C libraries have no name for it.
    if (count < 0 && ::GetLastError() == ERROR_NO_DATA) errno = EPIPE;
    return count;
}

bool empty(int file) {
    return ::_chsize(file, 0) == 0 || errno == EINVAL;
}

bool isTerminal(int file) {
    // Other devices count as terminals for _isatty.
    DWORD mode = 0;
    return ::GetConsoleMode(reinterpret_cast<HANDLE>(::_get_osfhandle(file)), &mode) != 0;
}

// --- POSIX ------------------------------------------------------------------------------------------------

#else

namespace {

template <class Call>
std::ptrdiff_t uninterrupted(Call call) {
    std::ptrdiff_t count = 0;
    do
        count = call();
    while (count < 0 && errno == EINTR);
    return count;
}

}  // namespace

std::vector<std::string> programArguments(int count, char* arguments[]) {
    // Without a program's name, as some callers start programs, there are no arguments either.
    char** first = count > 0 ? arguments + 1 : arguments;
    return {first, arguments + count};
}

void prepareFiles() {
    std::signal(SIGPIPE, SIG_IGN);
}

std::optional<FileStatus> statusOf(const std::string& name) {
    return statusBy([&](Status* status) { return ::stat(name.c_str(), status); });
}

std::optional<FileStatus> statusOf(int file) {
    return statusBy([&](Status* status) { return ::fstat(file, status); });
}

bool isReadable(const std::string& name) {
    return ::access(name.c_str(), R_OK) == 0;
}

int openForReading(const std::string& name) {
    return ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
}

int openForWriting(const std::string& name) {
    return ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
}

void close(int file) {
    ::close(file);
}

std::ptrdiff_t read(int file, char* bytes, std::size_t size) {
    return uninterrupted([&] { return ::read(file, bytes, std::min(size, kMostBytes)); });
}

std::ptrdiff_t write(int file, const char* bytes, std::size_t size) {
    return uninterrupted([&] { return ::write(file, bytes, std::min(size, kMostBytes)); });
}

bool empty(int file) {
    return ::ftruncate(file, 0) == 0 || errno == EINVAL;
}

bool isTerminal(int file) {
    return ::isatty(file) == 1;
}

#endif

}  // namespace QELModels::tool::system
