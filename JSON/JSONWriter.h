#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Writes one JSON text, event by event, after what a string holds already. The events come in the order of
/// a well-formed document, each key directly before its value; whoever calls keeps to that.
///
/// Texts are exact: a lone surrogate becomes an escape (`\ud83d`), control characters, quotes and backslashes
/// are escaped, everything else is written as UTF-8.
class QELMODELS_EXPORT JSONWriter {
public:
    /// How the text is laid out.
    enum class Layout : bool {
        compact,   ///< no white space at all
        indented,  ///< one value a line, indented by two blanks a level; `[]` and `{}` when empty
    };

    /// `out` outlives the writer and is the writer's until the text is complete.
    explicit JSONWriter(std::string& out, Layout layout = Layout::compact) noexcept
        : out_(out), isIndented_(layout == Layout::indented) {}

    /// The brackets of a container; what is written between them is in it.
    void beginDictionary() { begin('{'); }
    void endDictionary() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    /// A key, and a string that is a value. Both are WTF-8; other bytes are written as they are.
    void key(std::string_view key);
    void string(std::string_view text);
    /// The shortest digits that read back as that double or integer, without ".0"; `true` or `false` for a
    /// number that came as a boolean. A double beyond 2^53 without a fraction may be read back as the integer
    /// that its digits name, which is that double only when it is made one. JSON has no NaN and no
    /// infinities: they are null.
    void number(Number number);
    void null() { literal("null"); }
    /// A value with all that is in it, its keys in the document's order. Nesting costs no stack.
    void representation(RepresentationView view);

private:
    void begin(char bracket);
    void end(char bracket);
    void beginValue();
    void newLine();
    void literal(std::string_view text);
    void quoted(std::string_view text);

    std::string& out_;
    bool isIndented_;
    bool isFirst_ = true;  // in its container
    bool isKeyGiven_ = false;
    std::size_t depth_ = 0;
};

/// A value as JSON text.
QELMODELS_EXPORT std::string jsonFromRepresentation(RepresentationView view,
                                                    JSONWriter::Layout layout = JSONWriter::Layout::compact);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
