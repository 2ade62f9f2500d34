#include <cstring>
#include <stdexcept>
#include <vector>

#include "Digest.h"
#include "Filler.h"
#include "RawText.h"
#include "Rivals.h"

#ifdef __SSE2__
#define RAPIDJSON_SSE2  // makes this parser read several bytes a step
#endif
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace QELModels::bench {

namespace {

struct RapidJSONReader {
    using Node = rapidjson::Value;
    using Raw = RawText;

    template <class F>
    static bool members(Node& node, F f) {
        if (!node.IsObject()) return false;
        auto member = node.MemberBegin();
        for (auto left = node.MemberCount(); left > 0; --left, ++member)
            f(std::string_view(member->name.GetString(), member->name.GetStringLength()), member->value);
        return true;
    }

    template <class F>
    static bool elements(Node& node, F f) {
        if (!node.IsArray()) return false;
        for (auto element = node.Begin(); element != node.End(); ++element)
            f(*element);
        return true;
    }

    static std::optional<std::string_view> text(Node& node) {
        if (!node.IsString()) return std::nullopt;
        return std::string_view(node.GetString(), node.GetStringLength());
    }

    static std::optional<Number> number(Node& node) {
        if (node.IsInt64()) return Number(node.GetInt64());
        if (node.IsUint64()) return Number(node.GetUint64());
        if (node.IsDouble()) return Number(node.GetDouble());
        if (node.IsBool()) return Number(node.GetBool());
        return std::nullopt;
    }

    static bool flag(Node& node) {
        const auto value = number(node);
        return value && value->boolValue();
    }

    static std::optional<Raw> rawArray(Node& node) {
        if (!node.IsArray()) return std::nullopt;
        return raw(node);
    }
    static std::optional<Raw> rawDictionary(Node& node) {
        if (!node.IsObject()) return std::nullopt;
        return raw(node);
    }

private:
    // The memory of the values is reused for the next document, so a sub-tree is written to a text.
    static Raw raw(Node& node) {
        static rapidjson::StringBuffer buffer;
        buffer.Clear();
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        node.Accept(writer);
        return Raw{std::string(buffer.GetString(), buffer.GetSize())};
    }
};

struct RapidJSONWay {
    using Result = Assets<RawText>;
    using Fill = Filler<RapidJSONReader>;

    static Result read(const Document& source) {
        // As strict as the other parsers: exact numbers, valid UTF-8, nothing after the document. Texts are
        // unescaped in a copy of the document, which is cheaper than a copy of each text.
        constexpr unsigned kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseFullPrecisionFlag |
                                    rapidjson::kParseValidateEncodingFlag;
        Buffers& memory = buffers();
        memory.fit(source.text.size());
        std::memcpy(memory.text.data(), source.text.c_str(), source.text.size() + 1);

        using Pool = rapidjson::MemoryPoolAllocator<>;
        Pool values(memory.values.data(), memory.values.size());
        Pool stack(memory.stack.data(), memory.stack.size());
        rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, Pool> root(&values, kStackBytes / 2, &stack);
        root.ParseInsitu<kFlags>(memory.text.data());
        if (root.HasParseError()) throw std::runtime_error("RapidJSON refuses the document");

        Result result;
        if (!source.isPage) {
            Fill::asset(root, result.single.emplace());
            return result;
        }
        auto& list = root["_embedded"]["assets"];
        result.page.reserve(list.Size());
        Fill::assets(list, result.page);
        return result;
    }

    static std::uint64_t digest(const Result& result) { return digestOf(result); }

    static void forgetBuffers() { buffers() = {}; }

private:
    static constexpr std::size_t kStackBytes = 64 * 1024;

    struct Buffers {
        std::vector<char> text;
        std::vector<char> values;
        std::vector<char> stack;

        void fit(std::size_t documentBytes) {
            // The documents here need a little more than twice their size for their values.
            constexpr std::size_t kValueBytesForEachByte = 3;
            if (text.size() > documentBytes) return;
            text.resize(documentBytes + 1);
            values.resize(documentBytes * kValueBytesForEachByte);
            stack.resize(kStackBytes + documentBytes);
        }
    };
    static Buffers& buffers() {
        static Buffers buffers;
        return buffers;
    }
};

}  // namespace

constinit const Rival kRapidJSON = rivalOf<RapidJSONWay>("RapidJSON DOM");

}  // namespace QELModels::bench
