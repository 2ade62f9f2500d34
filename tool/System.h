#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QELModels/Platform/Export.h"

/// What the command asks of the operating system. All in which systems differ is here: names of files are
/// UTF-8 where the system lets them be, and bytes are read and written as they are. A function that fails
/// sets `errno`.
namespace QELModels::tool::system {

/// The files that every process has.
inline constexpr int kInput = 0, kOutput = 1, kErrors = 2;

/// The arguments of the program, without its name.
std::vector<std::string> programArguments(int count, char* arguments[]);

/// Has the files that every process has carry bytes as they are, and a closed pipe fail the write alone.
void prepareFiles();

/// What is known of a file without reading it.
struct FileStatus {
    bool isFolder = false;
    std::optional<std::uint64_t> size;  ///< of a regular file
};
std::optional<FileStatus> statusOf(const std::string& name);
std::optional<FileStatus> statusOf(int file);
bool isReadable(const std::string& name);

/// The number of an opened file, or -1. One that is opened for writing is made if there is none, and else
/// keeps what it holds.
int openForReading(const std::string& name);
int openForWriting(const std::string& name);
void close(int file);

/// How many bytes were read or written, at least one where there are any; -1 for a failure. Neither is given
/// up because a signal came.
std::ptrdiff_t read(int file, char* bytes, std::size_t size);
std::ptrdiff_t write(int file, const char* bytes, std::size_t size);

/// Takes away all that a file holds; false for a failure. What has nothing to take away, such as a pipe, is
/// left.
bool empty(int file);

/// Whether a person looks at what is written.
bool isTerminal(int file);

}  // namespace QELModels::tool::system
