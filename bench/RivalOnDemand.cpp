#include "RivalOnDemand.h"

#include <simdjson.h>

#include <cstring>
#include <stdexcept>

#include "Digest.h"
#include "Filler.h"

namespace QELModels::bench {

namespace {

namespace ondemand = simdjson::ondemand;

void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS) throw std::runtime_error(simdjson::error_message(error));
}

struct OnDemandReader {
    using Node = ondemand::value;
    using Raw = RawText;

    template <class F>
    static bool members(Node& node, F f) {
        ondemand::object object;
        if (node.get_object().get(object) != simdjson::SUCCESS) return false;
        for (auto member : object) {
            ondemand::field field;
            check(std::move(member).get(field));
            const std::string_view key = keyOf(field);
            f(key, field.value());
        }
        return true;
    }

    template <class F>
    static bool elements(Node& node, F f) {
        ondemand::array array;
        if (node.get_array().get(array) != simdjson::SUCCESS) return false;
        for (auto element : array) {
            ondemand::value value;
            check(std::move(element).get(value));
            f(value);
        }
        return true;
    }

    static std::optional<std::string_view> text(Node& node) {
        std::string_view text;
        if (node.get_string().get(text) != simdjson::SUCCESS) return std::nullopt;
        return text;
    }

    static std::optional<Number> number(Node& node) {
        ondemand::number number;
        if (node.get_number().get(number) == simdjson::SUCCESS) {
            if (number.is_int64()) return Number(number.get_int64());
            if (number.is_uint64()) return Number(number.get_uint64());
            return Number(number.get_double());
        }
        bool flag;
        if (node.get_bool().get(flag) == simdjson::SUCCESS) return Number(flag);
        return std::nullopt;
    }

    static bool flag(Node& node) {
        bool flag;
        if (node.get_bool().get(flag) == simdjson::SUCCESS) return flag;
        const auto value = number(node);
        return value && value->boolValue();
    }

    static std::optional<Raw> rawArray(Node& node) {
        ondemand::array array;
        if (node.get_array().get(array) != simdjson::SUCCESS) return std::nullopt;
        return raw(array);
    }

    static std::optional<Raw> rawDictionary(Node& node) {
        ondemand::object object;
        if (node.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;
        return raw(object);
    }

private:
    /// The bytes between the key's quotes, with escapes as they are. That is quicker than the parser's own
    /// functions: one compares with a single key, the other copies. No key that a record reads has escapes or
    /// is longer than the limit.
    static std::string_view keyOf(const ondemand::field& field) {
        constexpr std::size_t kLongestKey = 64;
        const char* const begin = field.key().raw();
        const void* const end = std::memchr(begin, '"', kLongestKey);
        if (end == nullptr) return {};
        return {begin, static_cast<std::size_t>(static_cast<const char*>(end) - begin)};
    }

    template <class Container>
    static Raw raw(Container& container) {
        std::string_view text;
        check(container.raw_json().get(text));
        return Raw{std::string(text)};
    }
};

struct OnDemandWay {
    using Result = Assets<RawText>;
    using Fill = Filler<OnDemandReader>;

    static Result read(const Document& source) {
        Result result;
        ondemand::document document;
        check(parser()
                  .iterate(source.text.data(), source.text.size(), source.text.size() + Document::kPadding)
                  .get(document));
        if (!source.isPage) {
            ondemand::value root;
            check(document.get_value().get(root));
            Fill::asset(root, result.single.emplace());
            return result;
        }
        // An asset has more than four kilobytes of text, so the list is never reallocated.
        constexpr std::size_t kLeastAssetBytes = 4096;
        result.page.reserve(source.text.size() / kLeastAssetBytes + 1);
        ondemand::value list;
        check(document["_embedded"]["assets"].get(list));
        Fill::assets(list, result.page);
        return result;
    }

    static std::uint64_t digest(const Result& result) { return digestOf(result); }

    static void forgetBuffers() { parser() = ondemand::parser(); }

private:
    static ondemand::parser& parser() {
        static ondemand::parser parser;
        return parser;
    }
};

}  // namespace

Assets<RawText> assetsByHand(const Document& document) {
    return OnDemandWay::read(document);
}

constinit const Rival kOnDemand = rivalOf<OnDemandWay>("simdjson On-Demand, by hand");

}  // namespace QELModels::bench
