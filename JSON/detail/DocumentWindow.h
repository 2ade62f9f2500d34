#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "JSON/detail/JSONWalker.h"
#include "JSON/detail/ReaderMemory.h"
#include "JSON/detail/StructuralIndex.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"

// Part of the reader's source alone.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

/// A long beginning of a text that ends after a comma; 0 if none does. A comma after the end of a text or of
/// a container is preferred, since it is hardly ever inside a text, but not at the price of half the length.
inline std::size_t endAfterComma(std::string_view text) noexcept {
    const std::size_t last = text.rfind(',');
    if (last == std::string_view::npos) return 0;
    for (std::size_t comma = last; comma != std::string_view::npos && comma > text.size() / 2;
         comma = text.rfind(',', comma - 1)) {
        const char before = text[comma - 1];
        if (before == '"' || before == '}' || before == ']') return comma + 1;
    }
    return last + 1;
}

/// The part of a document that is looked at together, and a place in it. A window ends after a comma that is
/// outside of all texts, or with the document. What reads a part of it answers whether it is well formed.
class DocumentWindow {
public:
    /// The document's first window is looked at by `moveOn`.
    DocumentWindow(ReaderMemory& memory, Zone* zone, std::string_view document, std::size_t usualLength)
        : memory_(memory), zone_(zone), document_(document), usualLength_(usualLength) {}

    /// Looks at what comes after this window.
    bool moveOn() { return look(begin_ + size_, usualLength_); }
    bool isAtEnd() const noexcept { return place_.structural == memory_.index.end(); }
    bool isLast() const noexcept { return isLast_; }
    Outcome failure() const noexcept { return failure_; }

    /// The structural character at the place, which `take` passes.
    char peek() const noexcept { return memory_.lending->text[*place_.structural]; }
    char take() noexcept { return memory_.lending->text[*place_.structural++]; }

    /// Reads a dictionary's key and the colon after it. Requires: the window holds them.
    bool readKey(std::string_view& key) {
        Walker walker = this->walker(0);
        if (!walker.keyText(key)) return false;
        place_ = walker.place();
        return true;
    }

    /// Reads the next value, of up to `maxDepth` containers, which is `value()` then.
    bool readValue(std::size_t maxDepth) {
        for (;;) {
            std::size_t from = *place_.structural;
            // One that the window hardly holds is better looked at from its start at once. That is worth it
            // where half of the window is done with.
            if (!isLast_ && from > size_ / 2 && size_ - from < longest_) {
                if (!look(begin_ + from, usualLength_)) return false;
                from = *place_.structural;
            }
            Walker walker = this->walker(maxDepth);
            if (walker.walk() != 0) {
                place_ = walker.place();
                longest_ = std::max(longest_, *place_.structural - from);
                return true;
            }
            // A value that goes on after the window is looked at from its start, in a larger one if need be.
            if (isLast_ || walker.place().structural <= memory_.index.end()) return false;
            if (!look(begin_ + from, from == 0 ? 2 * allowedLength_ : usualLength_)) return false;
        }
    }
    RepresentationView value() const noexcept { return memory_.lending->nodes.lend(); }
    bool isValueKept() const noexcept { return memory_.lending->nodes.isKept(); }

    /// Forgets how long values were so far: those that follow are of another kind.
    void forgetLengths() noexcept { longest_ = 0; }

    /// Goes on in other memory, in windows of a few values and at most `most` bytes. Whoever keeps one value
    /// may keep many, and each the memory around it.
    bool leaveMemory(std::size_t most) {
        constexpr std::size_t kLeast = 128;
        usualLength_ = std::clamp(2 * longest_, kLeast, most);
        return look(begin_ + *place_.structural, usualLength_);
    }

private:
    Walker walker(std::size_t maxDepth) const noexcept {
        char* const text = memory_.lending->text;
        return {text, text + size_, place_, memory_.containers, maxDepth, memory_.lending->nodes};
    }

    // Looks at the document from there on, for no more than `length` bytes if a window can end there.
    bool look(std::size_t from, std::size_t length) {
        const std::string_view rest = document_.substr(from);
        for (;; length *= 2) {
            isLast_ = length >= rest.size();
            size_ = isLast_ ? rest.size() : endAfterComma(rest.substr(0, length));
            if (size_ == 0 && !isLast_) continue;
            const Outcome outcome =
                memory_.take(rest.substr(0, size_), rest.size() - size_, usualLength_, zone_);
            if (outcome == Outcome::done) break;
            // It may be that the comma was inside a text.
            if (isLast_ || !memory_.index.endsInText()) {
                failure_ = outcome;
                return false;
            }
        }
        begin_ = from;
        allowedLength_ = length;
        place_ = {memory_.index.first(), memory_.lending->text};
        return true;
    }

    ReaderMemory& memory_;
    Zone* zone_;
    std::string_view document_;
    std::size_t usualLength_;

    std::size_t begin_ = 0;  // in the document
    std::size_t size_ = 0;
    std::size_t allowedLength_ = 0;
    bool isLast_ = false;
    WalkerPlace place_{};
    std::size_t longest_ = 0;  // of the values read so far
    Outcome failure_ = Outcome::malformed;
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
