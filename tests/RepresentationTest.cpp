// The promise: a representation keeps what was put into it, tells absent from null, finds every key of small
// and of large dictionaries, compares by value, lives as long as somebody holds a part of it, and can be
// nested a million deep.

#include <QELModels/Platform/detail/KeyHash.h>
#include <QELModels/Representation/Representation.h>
#include <QELModels/Representation/RepresentationBuilder.h>
#include <QELModels/Representation/detail/RepresentationNodes.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TestSupport.h"

namespace {

using QELModels::detail::RepresentationAccess;

using namespace QELModels;
using detail::keyHash;
using detail::quotedKeyHash;
using namespace std::string_view_literals;
using test::CountingZone;
using Builder = RepresentationBuilder;

const Representation kNull;

Representation array(std::initializer_list<Representation> elements) {
    return Representation::array(elements);
}
Representation dictionary(std::initializer_list<Representation::Member> members) {
    return Representation::dictionary(members);
}
Representation built(const std::function<void(Builder&)>& events) {
    Builder builder;
    events(builder);
    return builder.finish();
}

/// The members in their order, as "key=value ".
std::string shown(RepresentationView view) {
    std::string text;
    for (const auto [key, value] : view.members())
        text += std::string(key) + "=" + value.number()->toString() + " ";
    return text;
}

TEST(Representation, KindsAnswerForThemselvesOnly) {
    using Kind = RepresentationView::Kind;
    struct Row {
        Representation value;
        Kind kind;
        std::size_t size;
    };
    const Row rows[] = {
        {kNull, Kind::null, 0},
        {nullptr, Kind::null, 0},
        {5, Kind::number, 0},
        {true, Kind::number, 0},
        {2.5, Kind::number, 0},
        {"text", Kind::string, 0},
        {array({1, 2}), Kind::array, 2},
        {dictionary({{"a", 1}}), Kind::dictionary, 1},
        {array({}), Kind::array, 0},
        {dictionary({}), Kind::dictionary, 0},
    };
    for (const auto& [value, kind, size] : rows) {
        const RepresentationView view = value;
        EXPECT_EQ(view.kind(), kind);
        EXPECT_EQ(view.isNull(), kind == Kind::null);
        EXPECT_EQ(view.isNumber(), kind == Kind::number);
        EXPECT_EQ(view.isString(), kind == Kind::string);
        EXPECT_EQ(view.number().has_value(), kind == Kind::number);
        EXPECT_EQ(view.text().has_value(), kind == Kind::string);
        EXPECT_EQ(view.size(), size);
        EXPECT_EQ(view.elements().size(), view.isArray() ? size : 0);
        EXPECT_EQ(view.members().size(), view.isDictionary() ? size : 0);
        EXPECT_EQ(view.valueForKey("a").has_value(), kind == Kind::dictionary && size != 0);
    }
    EXPECT_TRUE(Representation(true).view().number()->isBoolean());
    EXPECT_EQ(Representation("a\0b"sv).view().text(), "a\0b"sv);
}

TEST(Representation, KeyPathsAndWhatIsAbsent) {
    const Representation value =
        dictionary({{"null", nullptr},
                    {"a", dictionary({{"b", dictionary({{"c", 3}, {"", 4}})}, {"n", nullptr}})},
                    {"list", array({dictionary({{"c", 5}})})},
                    {"", dictionary({{"c", 6}})},
                    {"a.b", 7}});
    constexpr std::pair<const char*, const char*> rows[] = {// "-": nothing is found
                                                            {"a.b.c", "3"},
                                                            {"a.b.", "4"},
                                                            {"a.b.d", "-"},
                                                            {"a.x.c", "-"},
                                                            {"a.b.c.d", "-"},
                                                            {"a..c", "-"},
                                                            {".c", "6"},
                                                            {"null", "null"},
                                                            {"null.c", "-"},
                                                            {"a.n", "null"},
                                                            {"a.n.c", "-"},
                                                            {"list.c", "-"},
                                                            {"x", "-"},
                                                            {"A", "-"},
                                                            {"a.b.c.", "-"}};
    for (const auto& [path, found] : rows) {
        const auto at = value.view().valueForKeyPath(path);
        const std::string text = !at ? "-" : at->isNull() ? "null" : at->number()->toString();
        EXPECT_EQ(text, found) << path;
    }
    EXPECT_EQ(value.view().valueForKey("a.b")->number(), Number(7));
    EXPECT_TRUE(value.view().valueForKey("")->isDictionary());
}

TEST(Representation, RepeatedKeysKeepTheirPlace) {
    EXPECT_EQ(shown(dictionary({{"a", 1}, {"b", 2}, {"a", 3}, {"c", 4}, {"b", 5}, {"a", 6}})),
              "a=6 b=5 c=4 ");
    const Representation nested = dictionary({{"x", array({1, array({2})})},
                                              {"y", 1},
                                              {"x", dictionary({{"k", 1}, {"l", 2}, {"k", array({3, 4})}})},
                                              {"y", array({5, 6})}});
    EXPECT_EQ(nested,
              dictionary({{"x", dictionary({{"k", array({3, 4})}, {"l", 2}})}, {"y", array({5, 6})}}));
    EXPECT_EQ(nested.view().size(), 2u);
}

// Sizes around the bound between the two ways of looking up; every third key is repeated; some keys share a
// hash.
TEST(Representation, FindsEveryKeyOfEverySize) {
    std::map<std::uint16_t, std::string> byHash;
    std::vector<std::string> keys = {"", "a", "ab", "identifier", "identifieR", "xdentifier", "aXc", "aYc"};
    for (int i = 0; keys.size() < 200; ++i) {
        const std::string key = "key" + std::to_string(i);
        const auto [other, isNew] = byHash.emplace(keyHash(key), key);
        if (isNew) continue;
        keys.insert(keys.begin(), key);
        if (std::find(keys.begin(), keys.end(), other->second) == keys.end())
            keys.insert(keys.begin(), other->second);
    }
    for (const std::size_t size : std::initializer_list<std::size_t>{1, 2, 7, 31, 32, 33, 34, 64, 150}) {
        Builder builder;
        builder.beginDictionary();
        std::string order;
        for (std::size_t i = 0; i < size; ++i) {
            builder.key(keys[i]);
            builder.number(i % 3 == 0 ? -1 : static_cast<int>(i));
            order += keys[i] + "=" + std::to_string(i) + " ";
        }
        for (std::size_t i = 0; i < size; i += 3) {
            builder.key(keys[i]);
            builder.number(static_cast<int>(i));
        }
        builder.endDictionary();
        const Representation value = builder.finish();
        ASSERT_EQ(shown(value), order);
        ASSERT_EQ(value.view().size(), size);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const auto found = value.view().valueForKey(keys[i]);
            ASSERT_EQ(found.has_value(), i < size) << keys[i];
            ASSERT_TRUE(!found || found->number() == Number(static_cast<int>(i)));
        }
    }
}

TEST(Representation, KeyHashIsTheSameOnEveryRoad) {
    constexpr std::array<std::string_view, 10> kKeys = {
        "", "i", "id", "url", "name", "title", "flight", "created", "category", "assetAdditional"};
    constexpr auto kHashes = [&] {
        std::array<std::uint16_t, kKeys.size()> hashes{};
        std::transform(kKeys.begin(), kKeys.end(), hashes.begin(), [](auto key) { return keyHash(key); });
        return hashes;
    }();
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        const std::string quoted = '"' + std::string(kKeys[i]) + "\":true,\"xyz";
        EXPECT_EQ(keyHash(std::string(kKeys[i])), kHashes[i]);
        EXPECT_EQ(quotedKeyHash(quoted.data() + 1, kKeys[i].size()), kHashes[i]);
        EXPECT_EQ(std::count(kHashes.begin(), kHashes.end(), kHashes[i]), 1);
    }
}

TEST(Representation, EqualityIsByValue) {
    constexpr std::int64_t kTwoTo53 = std::int64_t{1} << 53;
    const auto deep = [](Representation innermost) {
        return array({array({dictionary({{"a", array({innermost})}})})});
    };
    const std::vector<std::vector<Representation>> groups = {
        {kNull, nullptr},
        {1, 1.0, true},
        {0, -0.0, false},
        {kTwoTo53, 9007199254740992.0, std::uint64_t{kTwoTo53}},
        {kTwoTo53 + 1, std::uint64_t{kTwoTo53 + 1}},
        {""},
        {"1", "1"},
        {"\u00e6", "\xC3\xA6"},
        {array({}), array({})},
        {array({1, 2}), array({1.0, 2}), array({true, 2.0})},
        {array({2, 1})},
        {array({1, 2, 3})},
        {dictionary({}), dictionary({})},
        {dictionary({{"a", 1}, {"b", 2}}),
         dictionary({{"b", 2}, {"a", 1}}),
         dictionary({{"a", 0}, {"b", 2}, {"a", 1}})},
        {dictionary({{"a", 2}, {"b", 1}}),
         dictionary({{"b", 1}, {"a", 2}}),
         dictionary({{"a", 2}, {"b", true}})},
        {dictionary({{"a", 1}, {"c", 2}}), dictionary({{"c", 2}, {"a", 1}})},
        {dictionary({{"a", nullptr}}), dictionary({{"a", {}}})},
        {deep(1), deep(1.0), deep(true)},
        {deep(2)},
    };
    for (const auto& group : groups) {
        for (const auto& other : groups) {
            for (const Representation& a : group) {
                for (const Representation& b : other) {
                    EXPECT_EQ(a == b, &group == &other);
                    EXPECT_TRUE(a != b || a.view().hash() == b.view().hash());
                }
            }
        }
    }
    EXPECT_EQ(array({5, 6}).view().hash(), array({7, 8}).view().hash());
    EXPECT_NE(array({5, 6}).view().hash(), array({5}).view().hash());
    EXPECT_NE(Representation("a").view().hash(), Representation("b").view().hash());
}

// Equality said the plain way, one level after the other.
bool equalByDefinition(RepresentationView a, RepresentationView b) {
    if (a.kind() != b.kind() || a.size() != b.size()) return false;
    if (a.text() != b.text() || a.number() != b.number()) return false;
    auto other = b.elements().begin();
    for (const RepresentationView element : a.elements())
        if (!equalByDefinition(element, *other++)) return false;
    for (const auto [key, value] : a.members()) {
        const auto found = b.valueForKey(key);
        if (!found || !equalByDefinition(value, *found)) return false;
    }
    return true;
}

// A value that `tree` decides; `way` decides how it is put down, which equality does not see: the order of
// keys and the width of numbers. Now and then it changes a number too. Large parts become links.
Representation randomValue(std::mt19937_64& tree, std::mt19937_64& way, int depth) {
    const auto number = static_cast<int>(tree() % 3 + (way() % 1024 == 1023 ? 1 : 0));
    const auto isPlain = way() % 8 != 0;
    const auto size = static_cast<std::size_t>(tree() % 16 == 0 ? tree() % 40 : tree() % 4);
    const auto kind = depth == 0 ? tree() % 4 : tree() % 8;
    if (kind == 0) return kNull;
    if (kind == 1) return std::to_string(number);
    if (kind == 2) return isPlain ? Representation(number) : Representation(static_cast<double>(number));
    if (kind == 3) return number + 0.5;
    std::vector<std::pair<std::string, Representation>> members;
    for (std::size_t i = 0; i < size; ++i)
        members.emplace_back("key" + std::to_string(i), randomValue(tree, way, depth - 1));
    const bool isArray = kind < 6;
    if (!isArray && way() % 4 == 0) std::shuffle(members.begin(), members.end(), way);
    return built([&](Builder& builder) {
        isArray ? builder.beginArray() : builder.beginDictionary();
        for (const auto& [key, value] : members) {
            if (!isArray) builder.key(key);
            builder.representation(value);
        }
        isArray ? builder.endArray() : builder.endDictionary();
    });
}

RC_GTEST_PROP(Representation, EqualityIsItsDefinition, (std::uint64_t seed)) {
    for (std::uint64_t i = 0; i < 20; ++i) {
        std::mt19937_64 trees[] = {std::mt19937_64(seed + i), std::mt19937_64(seed + i)};
        std::mt19937_64 way(seed ^ i);
        const Representation a = randomValue(trees[0], way, 5);
        const Representation b = randomValue(trees[1], way, 5);
        const bool equal = equalByDefinition(a, b);
        RC_ASSERT((a == b) == equal);
        RC_ASSERT((b == a) == equal);
    }
}

TEST(Representation, NotANumberIsEqualToNothingButItsOwnPlace) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Representation value = array({dictionary({{"a", nan}})});
    EXPECT_EQ(value, Representation(value.view()));
    EXPECT_NE(value, array({dictionary({{"a", nan}})}));
}

TEST(Representation, TextsAreWellFormed) {
    constexpr const char* kBad[] = {
        "\x80", "a\xC3", "\xC0\x80", "\xE2\x82", "\xF4\x90\x80\x80", "\xFF", "\xED\xA0", "ok\xE2\x28\xA1"};
    for (const char* bad : kBad) {
        EXPECT_THROW(Representation{bad}, std::invalid_argument) << bad;
        EXPECT_THROW(dictionary({{bad, 1}}), std::invalid_argument) << bad;
        EXPECT_THROW(built([&](Builder& builder) { builder.string("a" + std::string(bad)); }),
                     std::invalid_argument);
    }
    const std::string high = "\xED\xA0\xBD";
    const std::string low = "\xED\xB8\x80";
    struct Row {
        std::string given, kept;
    };
    const Row rows[] = {
        {high, high},
        {low + high, low + high},
        {high + low, "\U0001F600"},
        {"a" + high + low + "b" + high + high + low + low, "a\U0001F600b" + high + "\U0001F600" + low}};
    for (const auto& [given, kept] : rows) {
        EXPECT_EQ(Representation(given).view().text(), kept);
        EXPECT_TRUE(dictionary({{given, 1}}).view().valueForKey(kept));
    }
}

TEST(RepresentationBuilder, RefusesEventsOutOfOrder) {
    const std::function<void(Builder&)> mistakes[] = {
        [](Builder&) {},
        [](Builder& b) { b.null(), b.null(); },
        [](Builder& b) { b.key("a"); },
        [](Builder& b) { b.endArray(); },
        [](Builder& b) { b.endDictionary(); },
        [](Builder& b) { b.beginArray(); },
        [](Builder& b) { b.beginArray(), b.key("a"); },
        [](Builder& b) { b.beginArray(), b.endDictionary(); },
        [](Builder& b) { b.beginArray(), b.endArray(), b.endArray(); },
        [](Builder& b) { b.beginArray(), b.endArray(), b.beginArray(), b.endArray(); },
        [](Builder& b) { b.beginDictionary(), b.null(); },
        [](Builder& b) { b.beginDictionary(), b.endArray(); },
        [](Builder& b) { b.beginDictionary(), b.key("a"), b.key("b"); },
        [](Builder& b) { b.beginDictionary(), b.key("a"), b.endDictionary(); },
        [](Builder& b) { b.beginDictionary(), b.key("a"), b.null(), b.null(); },
        [](Builder& b) { b.beginDictionary(), b.key("a"), b.beginArray(), b.endArray(), b.beginArray(); },
    };
    for (const auto& events : mistakes)
        EXPECT_THROW(built(events), std::logic_error) << &events - mistakes;
}

TEST(Representation, KnowsHowLargeItIs) {
    const Representation value = built([](Builder& b) {
        b.beginArray(), b.string("four"), b.beginDictionary(), b.key("a key"), b.string("12345");
        b.key("b"), b.number(6), b.endDictionary(), b.endArray();
    });
    EXPECT_EQ(value.view().nodeCount(), 7u);
    EXPECT_EQ(value.view().textBytes(), 9u);
    EXPECT_EQ(Representation("abc").view().nodeCount(), 1u);
    EXPECT_EQ(Representation("abc").view().textBytes(), 3u);
}

TEST(Representation, IsMadeOfAnyRange) {
    const Representation elements[] = {1, "two", nullptr};
    const Representation expected = array({1, "two", nullptr});
    EXPECT_EQ(Representation::array(elements), expected);
    EXPECT_EQ(Representation::array(std::vector(std::begin(elements), std::end(elements))), expected);
    EXPECT_EQ(Representation::array(expected.view().elements()), expected);
    EXPECT_EQ(Representation::array(std::vector<double>{1, 2.5}), array({1, 2.5}));
    EXPECT_EQ(Representation::array(std::vector<Representation>()), array({}));
    const std::map<std::string, Representation> members = {{"b", 2}, {"a", expected}};
    EXPECT_EQ(Representation::dictionary(members), dictionary({{"a", expected}, {"b", 2}}));
    EXPECT_EQ(Representation::dictionary(std::map<std::string, int>{{"a", 1}}), dictionary({{"a", 1}}));
    EXPECT_EQ(Representation::dictionary(dictionary({{"a", 1}}).view().members()), dictionary({{"a", 1}}));
    EXPECT_TRUE((Representation{{"k", {}}}).view().valueForKey("k")->isNull());
    // On some machines a long double is no longer than a double.
    constexpr bool kIsDouble = sizeof(long double) == sizeof(double);
    static_assert(!std::is_constructible_v<Representation, char> &&
                  std::is_convertible_v<long double, Representation> == kIsDouble &&
                  std::is_convertible_v<signed char, Representation>);
}

TEST(Representation, LivesAsLongAsAPartOfItIsHeld) {
    CountingZone zone;
    {
        Representation kept;
        Representation wrapper;
        {
            Builder builder(&zone);
            builder.beginDictionary();
            builder.key("list");
            builder.beginArray();
            for (int i = 0; i < 100; ++i)
                builder.string("element " + std::to_string(i));
            builder.endArray();
            builder.key("small");
            builder.string("a text of its own");
            builder.endDictionary();
            const Representation document = builder.finish();
            kept = Representation(*document.view().valueForKey("list"));
            wrapper = array({kept, Representation(*document.view().valueForKey("small")), kept});
        }
        const std::size_t all = zone.bytes();
        EXPECT_GT(all, 0u);
        EXPECT_EQ((*kept.view().elements().begin()).text(), "element 0");
        kept = kNull;
        EXPECT_EQ(zone.bytes(), all) << "the wrapper still links to the list";
        EXPECT_EQ((*wrapper.view().elements().begin()).size(), 100u);
        const Representation small(*++wrapper.view().elements().begin());
        wrapper = kNull;
        EXPECT_EQ(small.view().text(), "a text of its own");
    }
    EXPECT_EQ(zone.pieces(), 0u);
}

constexpr std::size_t kDeep = 1'000'000;

Representation builtDeep(int innermost) {
    Builder builder;
    for (std::size_t i = 0; i < kDeep / 2; ++i) {
        builder.beginArray();
        builder.beginDictionary();
        builder.key("a");
    }
    builder.number(innermost);
    for (std::size_t i = 0; i < kDeep / 2; ++i) {
        builder.endDictionary();
        builder.endArray();
    }
    return builder.finish();
}

Representation wrappedDeep(int innermost) {
    Representation value = innermost;
    for (std::size_t i = 0; i < kDeep / 2; ++i)
        value = array({dictionary({{"a", value}})});
    return value;
}

// Something is left to be compared at each level when the next one is entered; `level` is one of them,
// counted from the innermost.
constexpr std::size_t kLevels = 100'000;

Representation builtDeepAmongOthers(std::string_view atLevel, std::size_t level, bool isReversed) {
    Builder builder;
    for (std::size_t i = 0; i < kLevels; ++i) {
        builder.beginDictionary();
        builder.key(isReversed ? "z" : "a");
        builder.string(isReversed && i + 1 == kLevels - level ? atLevel : "");
        builder.key("nested");
    }
    builder.null();
    for (std::size_t i = 0; i < kLevels; ++i) {
        builder.key(isReversed ? "a" : "z");
        builder.string(!isReversed && i == level ? atLevel : "");
        builder.endDictionary();
    }
    return builder.finish();
}

TEST(Representation, ComparesWhatComesAfterTheDeepest) {
    for (const std::size_t level : {std::size_t{0}, kLevels / 2, kLevels - 20, kLevels - 1}) {
        const Representation value = builtDeepAmongOthers("one", level, false);
        for (const bool isReversed : {false, true}) {
            EXPECT_EQ(value, builtDeepAmongOthers("one", level, isReversed));
            EXPECT_NE(value, builtDeepAmongOthers("two", level, isReversed));
        }
    }
}

// Has memory for small documents alone.
struct SmallZone final : Zone {
    void* allocate(std::size_t bytes) override {
        if (bytes > 1024) throw std::bad_alloc();
        return std::malloc(bytes);
    }
    void deallocate(void* memory, std::size_t) noexcept override { std::free(memory); }
};

TEST(Representation, AsksForAllNodesOrNone) {
    using detail::RepresentationNodes;
    // With addresses of 32 bits, the bytes of these wrap around to 16.
    constexpr std::size_t kNodes = (std::size_t{1} << 28) + 1;
    const std::function<void(SmallZone&)> ways[] = {
        [](SmallZone& zone) { RepresentationNodes(kNodes, 0, &zone); },
        [](SmallZone& zone) { RepresentationNodes(1, 0, &zone).grow(0, kNodes); },
        [](SmallZone& zone) {
            RepresentationNodes nodes(0, 8, &zone);
            nodes.extendAfter(nodes.writer().allocate<char>(8), kNodes);
        },
        [](SmallZone& zone) {
            RepresentationNodes nodes(1, 0, &zone);
            nodes.grow(0, 8);
            nodes.grow(0, kNodes);
        },
    };
    for (const auto& askForAll : ways) {
        SmallZone zone;
        EXPECT_THROW(askForAll(zone), std::bad_alloc);
    }
}

TEST(Representation, NestsAMillionDeep) {
    const Representation built = builtDeep(1);
    const Representation wrapped = wrappedDeep(1);
    EXPECT_EQ(built, wrapped);
    EXPECT_NE(wrapped, builtDeep(2));
    EXPECT_EQ(built.view().hash(), wrapped.view().hash());
    RepresentationView innermost = wrapped;
    while (!innermost.isNumber())
        innermost = *(*innermost.elements().begin()).valueForKey("a");
    EXPECT_EQ(innermost.number(), Number(1));
}

}  // namespace
