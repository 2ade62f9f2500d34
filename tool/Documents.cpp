#include "tool/Documents.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

#include "JSON/JSONReader.h"
#include "tool/Display.h"

namespace QELModels::tool {

namespace {

constexpr std::size_t kReadBytes = std::size_t{1} << 16;
constexpr std::string_view kWhiteSpace = " \t\r";

BadInput cannotRead(std::string_view name, int error) {
    return BadInput(fmt::format("{}: cannot be read: {}", name, std::generic_category().message(error)));
}

}  // namespace

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

bool LineReader::nextOfAny() {
    for (;;) {
        const std::size_t end = buffer_.find('\n', searched_);
        if (end != std::string::npos || (isAtEnd_ && at_ < buffer_.size())) {
            const std::size_t next = end == std::string::npos ? buffer_.size() : end + 1;
            line_ = std::string_view(buffer_).substr(at_, std::min(end, buffer_.size()) - at_);
            if (line_.ends_with('\r')) line_.remove_suffix(1);
            at_ = searched_ = next;
            ++number_;
            return true;
        }
        if (isAtEnd_) return false;
        buffer_.erase(0, at_);
        at_ = 0;
        searched_ = buffer_.size();
        beforeWaiting_();
        isAtEnd_ = !input_.readMore(buffer_);
    }
}

bool LineReader::next() {
    while (nextOfAny())
        if (line_.find_first_not_of(kWhiteSpace) != std::string_view::npos) return true;
    return false;
}

std::string messageAt(std::string_view name,
                      std::size_t line,
                      std::size_t column,
                      std::string_view reason,
                      std::string_view text,
                      std::size_t offset) {
    return fmt::format("{}:{}:{}: {}\n{}", name, line, column, reason, excerpt(text, offset));
}

std::string faultMessage(std::string_view place, const MappingFault& fault) {
    return fmt::format("{}: {}: {}", place, fault.pointer(), fault.what());
}

Representation readDocument(const std::string& file) {
    Input input(file);
    const std::string text = input.readAll();
    JSONError error;
    std::optional<Representation> document = representationFromJSON(text, &error);
    if (!document)
        throw BadInput(messageAt(input.name(), error.line, error.column, error.reason, text, error.offset));
    return *std::move(document);
}

ExitStatus answerDocument(const std::string& file,
                          JSONWriter::Layout layout,
                          Output& output,
                          const Answer& answer) {
    const Representation document = readDocument(file);
    std::string text;
    JSONWriter writer(text, layout);
    try {
        answer(document, writer);
    } catch (const MappingFault& fault) {
        throw BadInput(faultMessage(file, fault));
    }
    text += '\n';
    output.write(text);
    return ExitStatus::success;
}

ExitStatus answerLines(const std::string& file, Output& output, const Answer& answer) {
    Input input(file);
    LineReader lines(input, [&output] { output.flush(); });
    JSONReader reader;
    auto status = ExitStatus::success;
    std::string text;
    while (lines.next()) {
        text.clear();
        std::string problem;
        JSONError error;
        if (const auto document = reader.read(lines.line(), &error)) {
            try {
                JSONWriter writer(text);
                answer(*document, writer);
            } catch (const MappingFault& fault) {
                problem = faultMessage(fmt::format("{}:{}", input.name(), lines.number()), fault);
            }
        } else {
            problem = messageAt(
                input.name(), lines.number(), error.column, error.reason, lines.line(), error.offset);
        }
        if (!problem.empty()) {
            text = "null";
            status = ExitStatus::badInput;
            output.flush();  // what came before the problem stands before it on a terminal
            report(std::move(problem));
        }
        text += '\n';
        output.write(text);
    }
    return status;
}

}  // namespace QELModels::tool
