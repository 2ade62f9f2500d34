#include "JSON/JSONReader.h"

#include <utility>

#include "JSON/detail/ByteOrderMark.h"
#include "JSON/detail/DocumentWindow.h"
#include "JSON/detail/ElementsReader.h"
#include "JSON/detail/JSONErrorLocator.h"
#include "JSON/detail/JSONWalker.h"
#include "JSON/detail/ReaderMemory.h"
#include "JSON/detail/StructuralIndex.h"
#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Representation/detail/RepresentationNodes.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

using detail::kPadding;
using detail::kUsualDepth;
using detail::nodesNeeded;
using detail::Outcome;
using detail::ReaderMemory;
using detail::RepresentationNodes;
using detail::Walker;
using detail::WalkerPlace;

namespace {

// Up to this size, the texts of a document have a block of their own.
constexpr std::size_t kMostBytesApart = std::size_t{16} << 10;

// Reading calls static objects of simdjson. They are used before the static objects of applications are
// constructed, so that the destructors of these may read JSON.
#if defined(__GNUC__) && (defined(__ELF__) || defined(_WIN32))
[[gnu::constructor(101)]] void useImplementations() {
    detail::StructuralIndex::useImplementations();
}
#endif

// How many nodes the document takes whose structural characters are found; 0 when it is not well formed.
std::size_t walk(ReaderMemory& memory, char* text, std::size_t size, std::size_t maxDepth,
                 RepresentationNodes& nodes) {
    const WalkerPlace start{memory.index.first(), text};
    Walker walker(text, text + size, start, memory.containers, maxDepth, nodes);
    const std::size_t count = walker.walk();
    return walker.place().structural == memory.index.end() ? count : 0;
}

}  // namespace

struct JSONReader::Memory : ReaderMemory {};

JSONReader::JSONReader(std::size_t maxDepth, Zone* zone) noexcept : maxDepth_(maxDepth), zone_(zone) {}

JSONReader::~JSONReader() = default;
JSONReader::JSONReader(JSONReader&&) noexcept = default;
JSONReader& JSONReader::operator=(JSONReader&&) noexcept = default;

template <class Read>
bool JSONReader::attempt(std::string_view bytes, JSONError* error, const Read& read) {
    if (memory_ == nullptr) memory_ = std::make_unique<Memory>();
    memory_->shrink();
    Outcome outcome = Outcome::tooLarge;
    if (bytes.size() <= detail::kMostBytes) outcome = read(bytes.substr(detail::byteOrderMarkBytes(bytes)));
    if (outcome == Outcome::done || error == nullptr) return outcome == Outcome::done;
    if (outcome == Outcome::malformed)
        *error = detail::locateError(bytes, maxDepth_);
    else
        *error = {.reason = "a document of 4 GB or more"};
    return false;
}

// The texts of a representation lie in a copy of the document, in which they are unescaped, and the
// structural characters are found in that copy, so that the document is read from memory once.
std::optional<Representation> JSONReader::read(std::string_view bytes, JSONError* error) {
    std::optional<Representation> result;
    attempt(bytes, error, [&](std::string_view document) {
        const auto finish = [&](char* text, RepresentationNodes& nodes) {
            const std::size_t count = walk(*memory_, text, document.size(), maxDepth_, nodes);
            if (count == 0) return Outcome::malformed;
            result = nodes.finish(count);
            return Outcome::done;
        };
        const std::size_t textBytes = document.size() + kPadding;
        if (document.size() <= kMostBytesApart) {
            // Of a small document, the copy has a block of its own, which a record may keep instead of
            // copying texts.
            detail::BlockWriter texts(textBytes, zone_);
            char* const text = texts.allocate<char>(textBytes);
            const Outcome outcome = memory_->index.find(document, 0, text);
            if (outcome != Outcome::done) return outcome;
            RepresentationNodes nodes(nodesNeeded(memory_->index.size(), kUsualDepth), 0, zone_);
            nodes.writer().keeper().takeTexts(texts);
            return finish(text, nodes);
        }
        // Of a large one, the nodes lie after the copy, so that the system's memory is kept for the next one.
        RepresentationNodes nodes(0, textBytes, zone_);
        char* const text = nodes.writer().allocate<char>(textBytes);
        const Outcome outcome = memory_->index.find(document, 0, text);
        if (outcome != Outcome::done) return outcome;
        char* const moved = nodes.extendAfter(text, nodesNeeded(memory_->index.size(), kUsualDepth));
        return finish(moved, nodes);
    });
    return result;
}

std::optional<RepresentationView> JSONReader::lend(std::string_view bytes, JSONError* error) {
    std::optional<RepresentationView> result;
    attempt(bytes, error, [&](std::string_view document) {
        const Outcome outcome = memory_->take(document, 0, kUsualWindow, zone_);
        if (outcome != Outcome::done) return outcome;
        RepresentationNodes& nodes = memory_->lending->nodes;
        if (walk(*memory_, memory_->lending->text, document.size(), maxDepth_, nodes) == 0)
            return Outcome::malformed;
        result = nodes.lend();
        return Outcome::done;
    });
    return result;
}

bool JSONReader::readElements(std::string_view bytes, std::string_view keyPath, JSONElementHandler& handler,
                              JSONError* error) {
    return attempt(bytes, error, [&](std::string_view document) {
        detail::DocumentWindow window(*memory_, zone_, document, kUsualWindow);
        return detail::ElementsReader(window, maxDepth_, keyPath, handler).read();
    });
}

std::optional<Representation> representationFromJSON(std::string_view bytes, JSONError* error) {
    return JSONReader().read(bytes, error);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
