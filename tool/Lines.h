#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "tool/Input.h"

namespace QELModels::tool {

/// How many line feeds a text has.
std::uint64_t lineFeedsIn(std::string_view text) noexcept;

/// The lines of a text in memory, one after the other. Lines with nothing but white space are passed over.
class TextLines {
public:
    /// The text outlives its lines. Its first line has the number `first`.
    explicit TextLines(std::string_view text = {}, std::uint64_t first = 1) noexcept
        : rest_(text), nextNumber_(first) {}

    /// Goes to the next line; false at the end.
    bool next() noexcept;
    /// The line without its line feed; a carriage return before that is part of it.
    std::string_view line() const noexcept { return line_; }
    /// Its number; the lines passed over count.
    std::uint64_t number() const noexcept { return nextNumber_ - 1; }
    /// The number of the line that follows.
    std::uint64_t nextNumber() const noexcept { return nextNumber_; }

private:
    std::string_view rest_;
    std::string_view line_;
    std::uint64_t nextNumber_;
};

/// Cuts an input into pieces between lines. It holds one piece, and the line that was only begun in it.
class LinePieces {
public:
    /// The input outlives its pieces.
    explicit LinePieces(Input& input) noexcept : input_(input) {}

    /// Puts the next whole lines in place of `text`: one at least, and `leastBytes` unless the input ends
    /// before; false at the end. Throws `BadInput`.
    bool next(std::string& text, std::size_t leastBytes);

private:
    Input& input_;
    std::string begun_;  // a line whose end has not been read yet
    bool isAtEnd_ = false;
};

/// The lines of an input as they come. Lines with nothing but white space are passed over. It holds one line
/// in memory, and what was read after it.
class LineReader {
public:
    /// `beforeWaiting` is called each time before more is read, which may take as long as the writer at the
    /// other end wants.
    LineReader(Input& input, std::function<void()> beforeWaiting)
        : pieces_(input), beforeWaiting_(std::move(beforeWaiting)) {}

    /// Goes to the next line; false at the end. Throws `BadInput`.
    bool next();
    /// The line, without what ends it.
    std::string_view line() const noexcept;
    /// Its number, from 1; the lines passed over count.
    std::uint64_t number() const noexcept { return lines_.number(); }

private:
    LinePieces pieces_;
    std::function<void()> beforeWaiting_;
    std::string text_;
    TextLines lines_;
};

}  // namespace QELModels::tool
