#include <nlohmann/json.hpp>

#include "Digest.h"
#include "Filler.h"
#include "Rivals.h"

namespace QELModels::bench {

namespace {

/// A sub-tree that nobody looks into, as the parser made it.
struct RawTree {
    nlohmann::json tree;
};

std::size_t countElements(const RawTree& raw) {
    return raw.tree.size();
}

struct NlohmannReader {
    using Node = nlohmann::json;
    using Raw = RawTree;

    template <class F>
    static bool members(Node& node, F f) {
        auto* const object = node.get_ptr<nlohmann::json::object_t*>();
        if (object == nullptr) return false;
        for (auto& [key, value] : *object)
            f(std::string_view(key), value);
        return true;
    }

    template <class F>
    static bool elements(Node& node, F f) {
        auto* const array = node.get_ptr<nlohmann::json::array_t*>();
        if (array == nullptr) return false;
        for (auto& element : *array)
            f(element);
        return true;
    }

    static std::optional<std::string_view> text(Node& node) {
        const auto* const text = node.get_ptr<const std::string*>();
        if (text == nullptr) return std::nullopt;
        return *text;
    }

    static std::optional<Number> number(Node& node) {
        switch (node.type()) {
            case Node::value_t::number_integer:
                return Number(node.get<std::int64_t>());
            case Node::value_t::number_unsigned:
                return Number(node.get<std::uint64_t>());
            case Node::value_t::number_float:
                return Number(node.get<double>());
            case Node::value_t::boolean:
                return Number(node.get<bool>());
            default:
                return std::nullopt;
        }
    }

    static bool flag(Node& node) {
        const auto value = number(node);
        return value && value->boolValue();
    }

    // The tree is not used afterwards, so its sub-trees are moved out of it.
    static std::optional<Raw> rawArray(Node& node) {
        if (!node.is_array()) return std::nullopt;
        return Raw{std::move(node)};
    }
    static std::optional<Raw> rawDictionary(Node& node) {
        if (!node.is_object()) return std::nullopt;
        return Raw{std::move(node)};
    }
};

struct NlohmannWay {
    using Result = Assets<RawTree>;
    using Fill = Filler<NlohmannReader>;

    static Result read(const Document& source) {
        Result result;
        auto root = nlohmann::json::parse(source.text);
        if (!source.isPage) {
            Fill::asset(root, result.single.emplace());
            return result;
        }
        auto& list = root["_embedded"]["assets"];
        result.page.reserve(list.size());
        Fill::assets(list, result.page);
        return result;
    }

    static std::uint64_t digest(const Result& result) { return digestOf(result); }

    static void forgetBuffers() {}
};

}  // namespace

constinit const Rival kNlohmann = rivalOf<NlohmannWay>("nlohmann-json");

}  // namespace QELModels::bench
