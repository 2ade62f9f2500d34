#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSONReader.h"

/// libFuzzer's own mutation of bytes; null where inputs are only replayed.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize)
    __attribute__((weak));

/// Changes a document so that it stays one: bytes alone, changed at random, are hardly ever JSON.
class DocumentMutator {
public:
    explicit DocumentMutator(unsigned seed) : random_(seed) {}

    /// A document of at most `maxSize` bytes; the same one if none was found in a few attempts.
    std::string mutated(const std::string& document, std::size_t maxSize) {
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            std::string changed =
                below(2) == 0 ? withOtherValue(document) : withOtherBytes(document, maxSize);
            if (changed.size() <= maxSize && reader_.read(changed)) return changed;
        }
        return document;
    }

private:
    static constexpr int kAttempts = 16;
    static constexpr std::array<std::string_view, 20> kValues{
        "null",   "true",        "false",        "0",     "-1.5",   "1e300",     "18446744073709551615",
        "\"\"",   "\"#a0B1c2\"", "\"<b>&amp;\"", "\"%\"", "\"//\"", "\"live\"",  "\"category-7\"",
        "[null]", "[]",          "{}",           "[{}]",  "[[]]",   "{\"id\":1}"};

    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    std::size_t below(std::size_t limit) { return random_() % limit; }

    // Replaces one value by another, of the document or of `kValues`.
    std::string withOtherValue(const std::string& document) {
        const std::vector<Range> values = valuesOf(document);
        if (values.empty()) return document;
        const Range out = values[below(values.size())];
        const Range in = values[below(values.size())];
        const std::string_view value = below(2) == 0
                                           ? kValues[below(kValues.size())]
                                           : std::string_view(document).substr(in.begin, in.end - in.begin);
        std::string changed = document;
        // Now and then the value is repeated, which makes lists longer and gives keys a second value.
        if (below(4) == 0) return changed.insert(out.begin, std::string(value) + ",");
        return changed.replace(out.begin, out.end - out.begin, value);
    }

    std::string withOtherBytes(const std::string& document, std::size_t maxSize) {
        std::string changed = document;
        changed.resize(std::max(maxSize, document.size()));
        auto* bytes = reinterpret_cast<std::uint8_t*>(changed.data());
        changed.resize(LLVMFuzzerMutate(bytes, document.size(), maxSize));
        return changed;
    }

    // The places of values and of members: what follows a bracket, a colon or a comma.
    static std::vector<Range> valuesOf(std::string_view document) {
        std::vector<Range> values;
        for (std::size_t at = 0; at < document.size(); ++at) {
            if (at == 0 || std::strchr("[{:,", document[at - 1]) != nullptr) {
                const std::size_t begin = std::min(document.find_first_not_of(" \n", at), document.size());
                const std::size_t end = endOfValue(document, begin);
                if (end > begin) values.push_back({begin, end});
            }
            if (document[at] == '"') at = endOfString(document, at) - 1;
        }
        return values;
    }

    static std::size_t endOfString(std::string_view document, std::size_t at) {
        for (++at; at < document.size() && document[at] != '"'; ++at)
            if (document[at] == '\\') ++at;
        return std::min(at + 1, document.size());
    }

    static std::size_t endOfValue(std::string_view document, std::size_t at) {
        for (std::size_t depth = 0; at < document.size(); ++at) {
            const char c = document[at];
            if (c == '"') at = endOfString(document, at) - 1;
            if (c == '[' || c == '{') ++depth;
            if (depth == 0 && std::strchr("]},:", c) != nullptr) break;
            if (c == ']' || c == '}') --depth;
        }
        return at;
    }

    std::minstd_rand random_;
    QELModels::JSONReader reader_;
};
