#include "tool/Input.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <system_error>
#include <utility>

#include "tool/ExitStatus.h"
#include "tool/System.h"

namespace QELModels::tool {

namespace {

constexpr std::size_t kReadBytes = std::size_t{1} << 16;

BadInput cannotRead(std::string_view name, int error) {
    return BadInput(fmt::format("{}: cannot be read: {}", name, std::generic_category().message(error)));
}

}  // namespace

void requireReadable(const std::string& file) {
    if (file == kStandardInput) return;
    const std::optional<system::FileStatus> status = system::statusOf(file);
    if (!status || !system::isReadable(file)) throw cannotRead(file, errno);
    if (status->isFolder) throw cannotRead(file, EISDIR);
}

Input::Input(std::string name)
    : name_(std::move(name)),
      file_(name_ == kStandardInput ? system::kInput : system::openForReading(name_)) {
    if (file_ < 0) throw cannotRead(name_, errno);
}

Input::~Input() {
    if (file_ != system::kInput) system::close(file_);
}

bool Input::readMore(std::string& text) {
    const std::size_t size = text.size();
    text.resize(size + kReadBytes);
    const std::ptrdiff_t count = system::read(file_, text.data() + size, kReadBytes);
    if (count < 0) throw cannotRead(name_, errno);
    text.resize(size + static_cast<std::size_t>(count));
    return count != 0;
}

std::string Input::readAll() {
    std::string text;
    const std::optional<system::FileStatus> status = system::statusOf(file_);
    if (status && status->size) text.reserve(static_cast<std::size_t>(*status->size) + kReadBytes);
    while (readMore(text)) {
    }
    return text;
}

}  // namespace QELModels::tool
