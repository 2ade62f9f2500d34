#include "tool/Input.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>

#include "tool/ExitStatus.h"

namespace QELModels::tool {

namespace {

constexpr std::size_t kReadBytes = std::size_t{1} << 16;

BadInput cannotRead(std::string_view name, int error) {
    return BadInput(fmt::format("{}: cannot be read: {}", name, std::generic_category().message(error)));
}

}  // namespace

void requireReadable(const std::string& file) {
    if (file == kStandardInput) return;
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || ::access(file.c_str(), R_OK) != 0)
        throw cannotRead(file, errno);
    if (S_ISDIR(status.st_mode)) throw cannotRead(file, EISDIR);
}

Input::Input(std::string name)
    : name_(std::move(name)),
      file_(name_ == kStandardInput ? STDIN_FILENO : ::open(name_.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (file_ < 0) throw cannotRead(name_, errno);
}

Input::~Input() {
    if (file_ != STDIN_FILENO) ::close(file_);
}

bool Input::readMore(std::string& text) {
    const std::size_t size = text.size();
    text.resize(size + kReadBytes);
    ssize_t count = 0;
    do
        count = ::read(file_, text.data() + size, kReadBytes);
    while (count < 0 && errno == EINTR);
    if (count < 0) throw cannotRead(name_, errno);
    text.resize(size + static_cast<std::size_t>(count));
    return count != 0;
}

std::string Input::readAll() {
    std::string text;
    struct stat status {};
    if (::fstat(file_, &status) == 0 && S_ISREG(status.st_mode))
        text.reserve(static_cast<std::size_t>(status.st_size) + kReadBytes);
    while (readMore(text)) {
    }
    return text;
}

}  // namespace QELModels::tool
