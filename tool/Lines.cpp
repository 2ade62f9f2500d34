#include "tool/Lines.h"

#include <algorithm>

namespace QELModels::tool {

std::uint64_t lineFeedsIn(std::string_view text) noexcept {
    std::uint64_t count = 0;
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        ++count;
    return count;
}

bool TextLines::next() noexcept {
    constexpr std::string_view kWhiteSpace = " \t\r";
    while (!rest_.empty()) {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        line_ = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        ++nextNumber_;
        if (line_.find_first_not_of(kWhiteSpace) != std::string_view::npos) return true;
    }
    return false;
}

bool LinePieces::next(std::string& text, std::size_t leastBytes) {
    text.swap(begun_);
    std::size_t end = 0;  // of the whole lines
    while (!isAtEnd_ && (end == 0 || text.size() < leastBytes)) {
        const std::size_t searched = text.size();
        isAtEnd_ = !input_.readMore(text);
        const std::size_t found = std::string_view(text).substr(searched).rfind('\n');
        if (found != std::string_view::npos) end = searched + found + 1;
    }
    if (isAtEnd_) end = text.size();
    begun_.assign(text, end);
    text.resize(end);
    return end != 0;
}

bool LineReader::next() {
    while (!lines_.next()) {
        beforeWaiting_();
        if (!pieces_.next(text_, 1)) return false;
        lines_ = TextLines(text_, lines_.nextNumber());
    }
    return true;
}

std::string_view LineReader::line() const noexcept {
    const std::string_view line = lines_.line();
    return line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
}

}  // namespace QELModels::tool
