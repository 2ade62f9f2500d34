#pragma once

// Processes and files of the tests, where systems differ. Texts are UTF-8.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace QELModels::test {

/// The path of a name. (Made of the name itself it would be one of the system's code page.)
inline std::filesystem::path pathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

/// The descriptors that a process has for its standard input, output and error.
struct Files {
    int in, out, err;
};

/// Starts a program, and waits for its end: the exit status, or -1 when it did not come to one.
using Process = std::intptr_t;
Process startProgram(const std::vector<std::string>& programAndArguments, const Files& files);
int exitStatus(Process process);

/// The descriptors of a pipe's ends, which no started process inherits: what is written into the one comes
/// out of the other.
struct Pipe {
    int in, out;
};
Pipe openPipe();

/// A nameless file that is gone when it is closed, and a new folder.
std::FILE* openScratchFile();
std::string makeFolder();

/// What a line for a POSIX shell prints, messages included; `$Q` in it is `program`. Where there is no such
/// shell, as on Windows, no line can be asked.
struct ShellAnswer {
    int status;
    std::string text;
};
bool hasShell();
ShellAnswer askShell(const std::string& program, const std::string& line);

/// All that is left to read.
std::string readAll(std::FILE* file);

}  // namespace QELModels::test
