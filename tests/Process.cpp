#include "tests/Process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>  // setenv and mkdtemp, which are not of the standard library

#include <array>
#include <cstddef>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;
#endif

namespace QELModels::test {

std::string readAll(std::FILE* file) {
    std::string text;
    std::array<char, 4096> piece{};
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), file))
        text.append(piece.data(), size);
    return text;
}

#ifdef _WIN32

namespace {

// An argument as programs take it apart again: in quotes, with backslashes doubled before a quote.
std::wstring quoted(const std::string& argument) {
    const std::wstring wide = pathOf(argument).native();
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : wide) {
        if (unit == L'"') text.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        text += unit;
    }
    return text.append(backslashes, L'\\') + L'"';
}

// Has a descriptor be another file while it lives.
class Redirected {
public:
    Redirected(int descriptor, int file) : descriptor_(descriptor), before_(::_dup(descriptor)) {
        ::_dup2(file, descriptor_);
    }
    Redirected(const Redirected&) = delete;
    Redirected& operator=(const Redirected&) = delete;
    ~Redirected() {
        ::_dup2(before_, descriptor_);
        ::_close(before_);
    }

private:
    int descriptor_, before_;
};

// A path below the folder for temporary files that no other test has.
std::string newPath() {
    static int count = 0;
    return testing::TempDir() + "qelmodels-" + std::to_string(::_getpid()) + "-" + std::to_string(count++);
}

}  // namespace

Process startProgram(const std::vector<std::string>& programAndArguments, const Files& files) {
    std::vector<std::wstring> texts;
    for (const std::string& text : programAndArguments)
        texts.push_back(quoted(text));
    std::vector<const wchar_t*> pointers;
    for (const std::wstring& text : texts)
        pointers.push_back(text.c_str());
    pointers.push_back(nullptr);
    const std::wstring program = pathOf(programAndArguments[0]).make_preferred().native();
    const Redirected in(0, files.in), out(1, files.out), err(2, files.err);
    return ::_wspawnv(_P_NOWAIT, program.c_str(), pointers.data());
}

int exitStatus(Process process) {
    int status = 0;
    return ::_cwait(&status, process, 0) == -1 ? -1 : status;
}

Pipe openPipe() {
    int ends[2];
    constexpr unsigned kBytes = 4096;
    EXPECT_EQ(::_pipe(ends, kBytes, _O_BINARY | _O_NOINHERIT), 0);
    return {ends[1], ends[0]};
}

std::FILE* openScratchFile() {
    return std::fopen(newPath().c_str(), "w+bDN");  // D: deleted when it is closed; N: not inherited
}

std::string makeFolder() {
    const std::string path = newPath();
    EXPECT_TRUE(std::filesystem::create_directory(path));
    return path;
}

bool hasShell() {
    return false;
}

ShellAnswer askShell(const std::string&, const std::string&) {
    return {-1, {}};
}

#else

Process startProgram(const std::vector<std::string>& programAndArguments, const Files& files) {
    std::vector<std::string> texts = programAndArguments;
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, files.in, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, files.out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, files.err, STDERR_FILENO);
    pid_t process = 0;
    EXPECT_EQ(posix_spawn(&process, pointers[0], &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

int exitStatus(Process process) {
    int status = 0;
    waitpid(static_cast<pid_t>(process), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Pipe openPipe() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    return {ends[1], ends[0]};
}

std::FILE* openScratchFile() {
    return std::tmpfile();
}

std::string makeFolder() {
    std::string name = testing::TempDir() + "qelmodelsXXXXXX";
    EXPECT_NE(::mkdtemp(name.data()), nullptr);
    return name;
}

bool hasShell() {
    return true;
}

ShellAnswer askShell(const std::string& program, const std::string& line) {
    setenv("Q", program.c_str(), 1);
    std::FILE* pipe = popen(("exec 2>&1; " + line).c_str(), "r");
    std::string text = readAll(pipe);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

#endif

}  // namespace QELModels::test
