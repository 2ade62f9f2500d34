#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "KeyTable.h"
#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Categories/UIColor+QELUtils.h"
#include "Records.h"

namespace QELModels::bench {

/// Fills the records in one pass over the members of each dictionary. A `Reader` is how a parser's values are
/// read. Each of its functions is small enough to be inlined, so that the code for each parser is what one
/// would have written for that parser alone:
///
///     using Node = ...; using Raw = ...;
///     static bool members(Node&, f);                     // f(key, value&) for each; false: not a dictionary
///     static bool elements(Node&, f);                    // f(value&) for each; false: not an array
///     static std::optional<std::string_view> text(Node&);
///     static std::optional<Number> number(Node&);        // booleans included
///     static bool flag(Node&);
///     static std::optional<Raw> rawArray(Node&);
///     static std::optional<Raw> rawDictionary(Node&);
template <class Reader>
class Filler {
    using Node = typename Reader::Node;
    using Raw = typename Reader::Raw;

public:
    static void asset(Node& node, Asset<Raw>& to) {
        Reader::members(node, [&](std::string_view key, Node& value) { take(to, key, value); });
    }

    /// Appends an asset for each element; nothing is appended for a value that is not a list.
    static void assets(Node& list, std::vector<Asset<Raw>>& to) {
        Reader::elements(list, [&](Node& element) { asset(element, to.emplace_back()); });
    }

private:
    // What a value becomes.

    static std::optional<std::string> text(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return std::string(*value);
    }

    static std::optional<std::string> cleaned(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return HTMLRemoval::withoutHTMLTags(*value);
    }

    static std::optional<URL> url(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        const auto view = URLView::parse(*value);
        if (!view) return std::nullopt;
        return URL(*view);
    }

    static std::optional<Date> date(Node& node) {
        const auto value = Reader::number(node);
        if (!value) return std::nullopt;
        return dateFromSecondsSince1970(value->doubleValue());
    }

    static std::optional<Color> color(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return QELUtils::colorFromRGBHexString(*value);
    }

    static QELAssetType assetType(Node& node) {
        return Reader::text(node) == "audio" ? QELAssetTypeAudio : QELAssetTypeVideo;
    }

    static QELStreamType streamType(Node& node) {
        const auto value = Reader::text(node);
        if (value == "live") return QELStreamTypeLive;
        return value == "wasLive" ? QELStreamTypeWasLive : QELStreamTypeVod;
    }

    template <class Record>
    static void one(std::optional<Record>& field, Node& node) {
        Record& record = field.emplace();
        const bool isDictionary =
            Reader::members(node, [&](std::string_view key, Node& value) { take(record, key, value); });
        if (!isDictionary) field.reset();
    }

    template <class Record>
    static void many(std::optional<std::vector<Record>>& field, Node& node) {
        constexpr std::size_t kUsualCount = 4;
        std::vector<Record>& records = field.emplace();
        const bool isArray = Reader::elements(node, [&](Node& element) {
            if (records.empty()) records.reserve(kUsualCount);
            Record& record = records.emplace_back();
            Reader::members(element, [&](std::string_view key, Node& value) { take(record, key, value); });
        });
        if (!isArray) field.reset();
    }

    // What a record takes from a dictionary.

    // A record with fewer keys compares with each of them, which is as quick as a table.
    static constexpr std::size_t kFewestKeysOfATable = 4;

    template <class Record>
    static constexpr auto kKeys = []<std::size_t... I>(std::index_sequence<I...>) {
        return keyTable(std::get<I>(kMembersOf<Record>).key...);
    }
    (std::make_index_sequence<kMemberCount<Record>>());

    // A chain of comparisons. The compiler turns those of numbers into a switch.
    template <class Record>
    static void take(Record& record, std::string_view key, Node& value) {
        if constexpr (kMemberCount<Record> < kFewestKeysOfATable) {
            anyMember<Record>([&]<std::size_t I>() {
                if (key != std::get<I>(kMembersOf<Record>).key) return false;
                fill<I>(record, value);
                return true;
            });
        } else {
            const std::size_t number = kKeys<Record>.find(key);
            anyMember<Record>([&]<std::size_t I>() {
                if (number != kKeys<Record>.at(std::get<I>(kMembersOf<Record>).key)) return false;
                fill<I>(record, value);
                return true;
            });
        }
    }

    template <std::size_t I, class Record>
    static void fill(Record& record, Node& node) {
        constexpr auto& each = std::get<I>(kMembersOf<Record>);
        using Value = typename std::remove_cvref_t<decltype(each)>::Value;
        using Type = Present<Value>;
        auto& field = record.*each.field;
        if constexpr (each.form == Form::cleaned)
            field = cleaned(node);
        else if constexpr (each.form == Form::array)
            field = Reader::rawArray(node);
        else if constexpr (each.form == Form::dictionary)
            field = Reader::rawDictionary(node);
        else if constexpr (RecordByHand<Type>)
            one(field.place(), node);
        else if constexpr (ListByHand<Type>)
            many(field.place(), node);
        else if constexpr (std::is_same_v<Type, bool>)
            field = Reader::flag(node);
        else if constexpr (std::is_same_v<Type, Number>)
            field = Reader::number(node);
        else if constexpr (std::is_same_v<Type, std::string>)
            field = text(node);
        else if constexpr (std::is_same_v<Type, URL>)
            field = url(node);
        else if constexpr (std::is_same_v<Type, Date>)
            field = date(node);
        else if constexpr (std::is_same_v<Type, Color>)
            field = color(node);
        else if constexpr (std::is_same_v<Type, QELAssetType>)
            field = assetType(node);
        else
            field = streamType(node);
    }
};

}  // namespace QELModels::bench
