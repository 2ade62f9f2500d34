#include "JSON/JSONReader.h"

#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "JSON/JSONErrorLocator.h"
#include "JSON/JSONWalker.h"
#include "QELModels/Representation/detail/RepresentationNodes.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using detail::Containers;
using detail::kUsualDepth;
using detail::nodesNeeded;
using detail::RepresentationNodes;
using detail::Walker;
using detail::WalkerPlace;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kMostBytes = simdjson::SIMDJSON_MAXSIZE_BYTES;
// Every node has a structural character of its own, and nodes are counted in 32 bits with room for indexes.
constexpr std::size_t kMostStructurals = std::size_t{1} << 31;
// Up to here a document's texts lie apart from its nodes.
constexpr std::size_t kMostBytesApart = std::size_t{16} << 10;
// The least that is looked at together, where all that is lent is kept.
constexpr std::size_t kLeastWindow = 128;
// How much memory for what is lent is kept from one document to the next.
constexpr std::size_t kMostBytesKept = std::size_t{512} << 10;
// For how many bytes of a document there is one structural character, to begin with.
constexpr std::size_t kBytesPerStructural = 8;

// A long beginning of a text that ends behind a comma; 0 if none does. A comma behind the end of a text or of
// a container is preferred, since it hardly ever stands in a text, but not at the price of half the length.
std::size_t endBehindComma(std::string_view text) noexcept {
    const std::size_t last = text.rfind(',');
    if (last == std::string_view::npos) return 0;
    for (std::size_t comma = last; comma != std::string_view::npos && comma > text.size() / 2;
         comma = text.rfind(',', comma - 1)) {
        const char before = text[comma - 1];
        if (before == '"' || before == '}' || before == ']') return comma + 1;
    }
    return last + 1;
}

std::vector<std::string_view> keysOf(std::string_view keyPath) {
    std::vector<std::string_view> keys;
    for (;;) {
        const std::size_t dot = keyPath.find('.');
        keys.push_back(keyPath.substr(0, dot));
        if (dot == std::string_view::npos) return keys;
        keyPath.remove_prefix(dot + 1);
    }
}

}  // namespace

// The structural characters of a document, or of a part of it that begins and ends outside of all texts:
// simdjson finds them, and sees on the way that it is UTF-8, that every text ends, and that no control
// character stands in one.
class JSONReader::StructuralIndex {
public:
    // Finds those of a text and, when it is well formed, copies it, and behind it the padding that simdjson
    // asks for. Where as much of the document is `behind` the text, simdjson looks at the text itself:
    // reading it from memory takes no time of its own beside that, and copying it afterwards takes little.
    Outcome find(std::string_view text, std::size_t behind, char* copy) {
        if (parser_ == nullptr || parser_->capacity() < text.size()) grow(text.size());
        const bool isPadded = behind >= simdjson::SIMDJSON_PADDING;
        if (!isPadded) copyPadded(text, copy);
        const simdjson::error_code error =
            parser_->stage1(reinterpret_cast<const std::uint8_t*>(isPadded ? text.data() : copy),
                            text.size(),
                            simdjson::stage1_mode::regular);
        endsInText_ = error == simdjson::UNCLOSED_STRING;
        if (error != simdjson::SUCCESS) return Outcome::malformed;
        if (isPadded) copyPadded(text, copy);
        return size() < kMostStructurals ? Outcome::done : Outcome::tooLarge;
    }
    // Whether the last text was malformed because a string in it does not end.
    bool endsInText() const noexcept { return endsInText_; }
    std::size_t size() const noexcept { return parser_->n_structural_indexes; }
    const std::uint32_t* first() const noexcept { return parser_->structural_indexes.get(); }
    const std::uint32_t* end() const noexcept { return first() + size(); }

private:
    static void copyPadded(std::string_view text, char* copy) noexcept {
        text.copy(copy, text.size());
        std::memset(copy + text.size(), ' ', simdjson::SIMDJSON_PADDING);
    }

    void grow(std::size_t size) {
        constexpr std::size_t kStages = 1;  // the depth that only simdjson's second stage needs
        const std::size_t before = parser_ == nullptr ? 0 : parser_->capacity();
        const std::size_t capacity = std::min(std::max(size, before + before / 2), kMostBytes);
        const auto error = parser_ == nullptr
                               ? simdjson::get_active_implementation()->create_dom_parser_implementation(
                                     capacity, kStages, parser_)
                               : parser_->set_capacity(capacity);
        if (error != simdjson::SUCCESS) throw std::bad_alloc();
    }

    std::unique_ptr<simdjson::internal::dom_parser_implementation> parser_;
    bool endsInText_ = false;
};

// Memory for what is lent, one value after the other.
struct JSONReader::Scratch {
    Scratch(std::size_t bytes, Zone* zone)
        : nodes(nodesNeeded(bytes / kBytesPerStructural, kUsualDepth), bytes, zone),
          text(nodes.writer().allocate<char>(bytes)),
          textBytes(bytes) {}

    std::size_t bytes() const noexcept {
        return textBytes + nodes.capacity() * sizeof(detail::RepresentationNode);
    }
    RepresentationNodes nodes;
    char* text;
    std::size_t textBytes;
};

// What a reader keeps from document to document.
struct JSONReader::Memory {
    StructuralIndex index;
    Containers containers;
    std::unique_ptr<Scratch> scratch;

    // Finds the structural characters of a text and copies it to where what is read of it is lent. So many
    // bytes of the document are `behind` it, and other texts of `usual` bytes will follow.
    Outcome take(std::string_view text, std::size_t behind, std::size_t usual, Zone* zone) {
        const std::size_t bytes = text.size() + simdjson::SIMDJSON_PADDING;
        if (scratch == nullptr || scratch->textBytes < bytes || scratch->nodes.isKept())
            scratch = std::make_unique<Scratch>(std::max(bytes, usual + simdjson::SIMDJSON_PADDING), zone);
        const Outcome outcome = index.find(text, behind, scratch->text);
        if (outcome == Outcome::done) {
            // As deep as containers may nest before there is made more room for them.
            const std::size_t needed = nodesNeeded(index.size(), containers.size());
            if (scratch->nodes.capacity() < needed) scratch->nodes.grow(0, needed);
        }
        return outcome;
    }
};

// Goes through a document for the elements of one list. It is looked at a window at a time; a window ends
// behind a comma that stands outside of all texts, or with the document. What is around the list is gone
// through token by token here, everything else value by value by a `Walker`.
class JSONReader::ElementsWalk {
public:
    ElementsWalk(JSONReader& reader,
                 std::string_view document,
                 std::string_view keyPath,
                 JSONElementHandler& handler)
        : memory_(*reader.memory_),
          zone_(reader.zone_),
          depthLeft_(reader.maxDepth_),
          document_(document),
          keys_(keysOf(keyPath)),
          handler_(handler) {}

    Outcome walk() {
        if (!look(0, window_)) return failure_;
        bool isOnPath = true;
        do {
            if (!(isOnPath ? valueOnPath() : read())) return failure_;
        } while (nextMember(isOnPath));
        const bool isAtEnd = isLast_ && place_.structural == memory_.index.end();
        return level_ == 0 && isAtEnd ? Outcome::done : failure_;
    }

private:
    char* text() const noexcept { return memory_.scratch->text; }
    char peek() const noexcept { return text()[*place_.structural]; }
    char take() noexcept { return text()[*place_.structural++]; }
    Walker walker() const noexcept {
        return {text(), text() + size_, place_, memory_.containers, depthLeft_, memory_.scratch->nodes};
    }

    // Looks at the document from there on, for no more than `length` bytes if a window can end there.
    bool look(std::size_t from, std::size_t length) {
        const std::string_view rest = document_.substr(from);
        for (;; length *= 2) {
            isLast_ = length >= rest.size();
            size_ = isLast_ ? rest.size() : endBehindComma(rest.substr(0, length));
            if (size_ == 0 && !isLast_) continue;
            const Outcome outcome = memory_.take(rest.substr(0, size_), rest.size() - size_, window_, zone_);
            if (outcome == Outcome::done) break;
            // It may be that the comma stood in a text.
            if (isLast_ || !memory_.index.endsInText()) {
                failure_ = outcome;
                return false;
            }
        }
        begin_ = from;
        length_ = length;
        place_ = {memory_.index.first(), text()};
        return true;
    }

    // Reads the next value, unless it is not well formed.
    bool read() {
        for (;;) {
            std::size_t from = *place_.structural;
            // One that the window hardly holds is better looked at from its start at once. That is worth it
            // where half of the window is done with.
            if (!isLast_ && from > size_ / 2 && size_ - from < longest_) {
                if (!look(begin_ + from, window_)) return false;
                from = *place_.structural;
            }
            Walker walker = this->walker();
            if (walker.walk() != 0) {
                place_ = walker.place();
                longest_ = std::max(longest_, *place_.structural - from);
                return true;
            }
            // A value that goes on behind the window is looked at from its start, in a larger one if need be.
            if (isLast_ || walker.place().structural <= memory_.index.end()) return false;
            if (!look(begin_ + from, from == 0 ? 2 * length_ : window_)) return false;
        }
    }

    // Reads a value that all open dictionaries lead to; of a dictionary that leads on, no more than its
    // bracket.
    bool valueOnPath() {
        if (level_ == keys_.size() && peek() == '[') return elements();
        if (level_ == keys_.size() || peek() != '{') return read();
        if (depthLeft_ == 0) return false;
        take();
        --depthLeft_;
        ++level_;
        isOpened_ = true;
        return true;
    }

    // Goes to the value of the next member of an open dictionary, and closes those that end before.
    bool nextMember(bool& isOnPath) {
        while (level_ != 0) {
            if (!std::exchange(isOpened_, false) || peek() == '}') {
                const char token = take();
                if (token != ',' && token != '}') return false;
                if (token == '}') {
                    --level_;
                    ++depthLeft_;
                    continue;
                }
            }
            // A window ends behind a comma alone, so it holds the whole key and what its value begins with.
            if (!isLast_ && place_.structural == memory_.index.end() && !look(begin_ + size_, window_))
                return false;
            Walker walker = this->walker();
            std::string_view key;
            if (!walker.keyText(key)) return false;
            place_ = walker.place();
            isOnPath = key == keys_[level_ - 1];
            if (isOnPath) handler_.startOver();
            return true;
        }
        return false;
    }

    bool elements() {
        if (depthLeft_ == 0) return false;
        take();
        --depthLeft_;
        longest_ = 0;
        char token = peek() == ']' ? take() : ',';
        for (; token != ']'; token = take()) {
            if (token != ',' || !read()) return false;
            handler_.element(memory_.scratch->nodes.lend());
            if (memory_.scratch->nodes.isKept() && !leaveMemory()) return false;
        }
        ++depthLeft_;
        return true;
    }

    // Goes on in other memory. Whoever keeps one element may keep many, and each the memory around it, so
    // that holds no more than a few of them from now on.
    bool leaveMemory() {
        window_ = std::clamp(2 * longest_, kLeastWindow, kUsualWindow);
        return look(begin_ + *place_.structural, window_);
    }

    Memory& memory_;
    Zone* zone_;
    std::size_t depthLeft_;
    std::string_view document_;
    std::vector<std::string_view> keys_;
    JSONElementHandler& handler_;
    Outcome failure_ = Outcome::malformed;

    // The window, how long windows usually are, and where in it the walk is.
    std::size_t window_ = kUsualWindow;
    std::size_t begin_ = 0;
    std::size_t size_ = 0;
    std::size_t length_ = 0;  // what it was allowed to be
    bool isLast_ = false;
    WalkerPlace place_{};
    std::size_t longest_ = 0;  // of the values read so far, or of the elements

    std::size_t level_ = 0;  // how many dictionaries are open
    bool isOpened_ = false;  // the innermost one, and no member of it is read yet
};

JSONReader::JSONReader(std::size_t maxDepth, Zone* zone)
    : maxDepth_(maxDepth), zone_(zone), memory_(std::make_unique<Memory>()) {}

JSONReader::~JSONReader() = default;
JSONReader::JSONReader(JSONReader&&) noexcept = default;
JSONReader& JSONReader::operator=(JSONReader&&) noexcept = default;

template <class Read>
bool JSONReader::attempt(std::string_view bytes, JSONError* error, const Read& read) {
    // One deep or large document must not make all that follow larger.
    memory_->containers.resize(kUsualDepth);
    if (memory_->scratch != nullptr && memory_->scratch->bytes() > kMostBytesKept) memory_->scratch.reset();
    Outcome outcome = Outcome::tooLarge;
    if (bytes.size() <= kMostBytes)
        outcome = read(bytes.substr(bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0));
    if (outcome == Outcome::done || error == nullptr) return outcome == Outcome::done;
    if (outcome == Outcome::malformed)
        *error = detail::locateError(bytes, maxDepth_);
    else
        *error = {.reason = "a document of 4 GB or more"};
    return false;
}

std::optional<Representation> JSONReader::read(std::string_view bytes, JSONError* error) {
    std::optional<Representation> result;
    attempt(bytes, error, [&](std::string_view document) {
        return document.size() <= kMostBytesApart ? readApart(document, result)
                                                  : readInOnePiece(document, result);
    });
    return result;
}

std::optional<RepresentationView> JSONReader::lend(std::string_view bytes, JSONError* error) {
    std::optional<RepresentationView> result;
    attempt(bytes, error, [&](std::string_view document) {
        const Outcome outcome = memory_->take(document, 0, kUsualWindow, zone_);
        if (outcome != Outcome::done) return outcome;
        RepresentationNodes& nodes = memory_->scratch->nodes;
        if (walk(memory_->scratch->text, document.size(), nodes) == 0) return Outcome::malformed;
        result = nodes.lend();
        return Outcome::done;
    });
    return result;
}

bool JSONReader::readElements(std::string_view bytes,
                              std::string_view keyPath,
                              JSONElementHandler& handler,
                              JSONError* error) {
    return attempt(bytes, error, [&](std::string_view document) {
        return ElementsWalk(*this, document, keyPath, handler).walk();
    });
}

// The texts of a representation lie in a copy of the document, unescaped where they stand, and the structural
// characters are found in that copy, so that the document is read from memory once. Of a small document, the
// copy has a block of its own, which a record may keep instead of copying texts.
JSONReader::Outcome JSONReader::readApart(std::string_view bytes, std::optional<Representation>& result) {
    detail::BlockWriter texts(bytes.size() + simdjson::SIMDJSON_PADDING, zone_);
    char* const text = texts.allocate<char>(bytes.size() + simdjson::SIMDJSON_PADDING);
    const Outcome outcome = memory_->index.find(bytes, 0, text);
    if (outcome != Outcome::done) return outcome;
    RepresentationNodes nodes(nodesNeeded(memory_->index.size(), kUsualDepth), 0, zone_);
    nodes.writer().keeper().takeTexts(texts);
    return finish(walk(text, bytes.size(), nodes), nodes, result);
}

// Of a large one, the nodes lie behind the copy, so that the system's memory is kept for the next one.
JSONReader::Outcome JSONReader::readInOnePiece(std::string_view bytes,
                                               std::optional<Representation>& result) {
    RepresentationNodes nodes(0, bytes.size() + simdjson::SIMDJSON_PADDING, zone_);
    char* const text = nodes.writer().allocate<char>(bytes.size() + simdjson::SIMDJSON_PADDING);
    const Outcome outcome = memory_->index.find(bytes, 0, text);
    if (outcome != Outcome::done) return outcome;
    char* const moved = nodes.extendAfter(text, nodesNeeded(memory_->index.size(), kUsualDepth));
    return finish(walk(moved, bytes.size(), nodes), nodes, result);
}

// How many nodes the document takes whose structural characters are found; 0 when it is not well formed.
std::size_t JSONReader::walk(char* text, std::size_t size, RepresentationNodes& nodes) {
    const WalkerPlace start{memory_->index.first(), text};
    Walker walker(text, text + size, start, memory_->containers, maxDepth_, nodes);
    const std::size_t count = walker.walk();
    return walker.place().structural == memory_->index.end() ? count : 0;
}

JSONReader::Outcome JSONReader::finish(std::size_t count,
                                       RepresentationNodes& nodes,
                                       std::optional<Representation>& result) {
    if (count == 0) return Outcome::malformed;
    result = nodes.finish(count);
    return Outcome::done;
}

std::optional<Representation> representationFromJSON(std::string_view bytes, JSONError* error) {
    return JSONReader().read(bytes, error);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
