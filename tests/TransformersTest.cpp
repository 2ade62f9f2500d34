// Named transformers convert raw values, each in its own way. A name may get another transformer at any time:
// rules that fetch follow at the next value, rules that capture in the next mapping, and nothing is left of
// the former.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Transformers/QELHTMLTransformer.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Transformers/QELTimestampTransformer.h"
#include "QELModels/Transformers/QELUIColorTransformer.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// Deriving from what the library calls back is no reason for the compiler to warn.
#pragma GCC diagnostic push
#pragma GCC diagnostic error "-Wnon-virtual-dtor"
class OpenTransformer : public ValueTransformer {};
class OpenZone : public Zone {};
class OpenObserver : public FEMObserver {};
#pragma GCC diagnostic pop

std::string transformed(std::string_view name, std::string_view text) {
    return show(valueTransformerForName(name)->transformedValue(json(text)));
}

TEST(Transformers, ConvertWhatTheyAcceptAndRefuseTheRest) {
    const struct {
        std::string_view name, text, shown;
    } rows[] = {
        {"QELHTMLTransformer", R"("<p>a&lt;b</p> ")", R"("a<b ")"},
        {"QELHTMLTransformer", R"("")", R"("")"},
        {"QELHTMLTransformer", "null", "null"},
        {"QELHTMLTransformer", "12", "null"},
        {"QELHTMLTransformer", R"(["a"])", "null"},
        {"QELNSURLTransformer", R"("https://a.example/b?c#d")", "<https://a.example/b?c#d>"},
        {"QELNSURLTransformer", R"("a b")", "null"},
        {"QELNSURLTransformer", "7", "null"},
        {"QELTimestampTransformer", "0", "@0"},
        {"QELTimestampTransformer", "1.5", "@1.5"},
        {"QELTimestampTransformer", "true", "@1"},
        {"QELTimestampTransformer", R"("0")", "null"},
        {"QELTimestampTransformer", "{}", "null"},
        {"QELUIColorTransformer", R"("#ff0000")", "#(255 0 0 1)"},
        {"QELUIColorTransformer", R"("#12 345")", "#(18 52 5 1)"},
        {"QELUIColorTransformer", R"("ff0000")", "null"},
        {"QELUIColorTransformer", "null", "null"},
    };
    LogLines log;
    for (const auto& [name, text, shown] : rows)
        EXPECT_EQ(transformed(name, text), shown) << name << ' ' << text;
    EXPECT_EQ(log.lines, std::vector<std::string>{"Unable to transform URL a b"});
    for (const char* text : {"1", "[]", "{}", "true"})
        EXPECT_THROW(transformed(kQELUIColorTransformer, text), MappingFault) << text;
}

TEST(Transformers, SayWhatTheyOffer) {
    const struct {
        std::string_view name;
        Value::Kind kind;
        bool reverses;
    } rows[] = {{kQELHTMLTransformer, Value::Kind::text, false},
                {kQELNSURLTransformer, Value::Kind::url, true},
                {kQELTimestampTransformer, Value::Kind::date, false},
                {kQELUIColorTransformer, Value::Kind::color, false}};
    const Value url = Value::url(*URLView::parse("http://a.example/x"));
    for (const auto& [name, kind, reverses] : rows) {
        const ValueTransformer& transformer = *valueTransformerForName(name);
        EXPECT_EQ(transformer.transformedValueClass(), kind) << name;
        EXPECT_EQ(transformer.allowsReverseTransformation(), reverses) << name;
        EXPECT_TRUE(transformer.transformedValue(std::nullopt).isNull()) << name;
        EXPECT_EQ(show(transformer.reverseTransformedValue(url)),
                  reverses ? R"("http://a.example/x")" : "null")
            << name;
        for (const Value& other : {Value(), Value::text("http://a.example/x"), Value(Number(1))})
            EXPECT_TRUE(transformer.reverseTransformedValue(other).isNull()) << name;
    }
}

TEST(Registry, GivesTheNewestOfANameAndNothingForOthers) {
    EXPECT_EQ(valueTransformerForName("nobody"), nullptr);
    EXPECT_EQ(valueTransformerForName(""), nullptr);
    setValueTransformer(std::make_unique<Stamp>("one"), "stamp");
    const ValueTransformer* one = valueTransformerForName(std::string("sta") + "mp");
    setValueTransformer(std::make_unique<Stamp>("two"), "stamp");
    EXPECT_EQ(transformed("stamp", "1"), R"("two")");
    EXPECT_EQ(show(one->transformedValue({})), R"("one")") << "a replaced transformer lives on";
    EXPECT_EQ(valueTransformerForName("stam"), nullptr);
    setValueTransformer(nullptr, "stamp");
    EXPECT_EQ(valueTransformerForName("stamp"), nullptr);
    setValueTransformer(std::make_unique<Stamp>("three"), "stamp");
    EXPECT_EQ(transformed("stamp", "1"), R"("three")");
    setValueTransformer(nullptr, "stamp");
}

// What a mapping makes that was built before another transformer took the name: nothing new with a captured
// one. Which rules capture, RecordsTest says.
TEST(Registry, IsAskedAtEachValueOrWhenAMappingIsBuilt) {
    static const Stamp stamp("stamped");
    const struct {
        FEMMapping mapping;
        std::string_view text, path, name;
        bool isCaptured;
    } rows[] = {
        {QELAsset::defaultMapping(), R"({"title": "t"})", "title", kQELHTMLTransformer, false},
        {QELSeason::defaultMapping(), R"({"title": "t"})", "title", kQELHTMLTransformer, true},
        {QELSeason::defaultMapping(),
         R"({"assets": [{"images": {"main": "t:"}}]})",
         "assets[0].images.main",
         kQELNSURLTransformer,
         true},
    };
    for (const auto& row : rows) {
        const auto made = [&](const FEMMapping& by) {
            return showAt(*FEMDeserializer::objectFromRepresentation(json(row.text), by), row.path);
        };
        const std::string old = made(row.mapping);
        ASSERT_NE(old, "null");
        {
            const Replaced replaced(row.name, &stamp);
            EXPECT_EQ(made(row.mapping), row.isCaptured ? old : R"("stamped")") << row.text;
        }
        {
            const Replaced removed(row.name, nullptr);
            EXPECT_EQ(valueTransformerForName(row.name), nullptr);
            EXPECT_EQ(made(row.mapping), row.isCaptured ? old : "null") << row.text;
            EXPECT_EQ(made(FEMMapping(row.mapping.rules())), "null") << row.text;
        }
        EXPECT_EQ(made(row.mapping), old) << row.text;
    }
}

// A record of an application, whose constant rules name transformers of the application.
class Parcel : public Record<Parcel> {
public:
    Field<Text> sender, receiver;
    static const ObjectClassOf<Parcel> objectClass;
    static const FEMRulesOf<Parcel> defaultRules;
};
constexpr auto declaredOfParcel =
    declare<Parcel>(property<&Parcel::sender>("sender"), property<&Parcel::receiver>("receiver"));
constexpr auto rulesOfParcel = mapping<declaredOfParcel>(attribute<&Parcel::sender>("s", fetched("mine")),
                                                         attribute<&Parcel::receiver>("r", captured("mine")));
constinit const FEMRulesOf<Parcel> Parcel::defaultRules = rulesOfParcel;
constinit const ObjectClassOf<Parcel> Parcel::objectClass(describe<declaredOfParcel>("Parcel"));

TEST(Registry, ServesConstantRulesThatNameAnyTransformer) {
    static const Stamp one("one"), two("two");
    const auto made = [](const FEMMapping& mapping) {
        const auto parcel = FEMDeserializer::objectFromRepresentation(json(R"({"s": 1, "r": 2})"), mapping);
        return showAt(*parcel, "sender") + ' ' + showAt(*parcel, "receiver");
    };
    EXPECT_EQ(made(Parcel::defaultMapping()), "null null");
    const FEMMapping withNone = Parcel::defaultMapping();
    registerValueTransformer(&one, "mine");
    const FEMMapping withOne = Parcel::defaultMapping();
    EXPECT_EQ(made(withNone), R"("one" null)");
    EXPECT_EQ(made(withOne), R"("one" "one")");
    registerValueTransformer(&one, "added after the mapping was built");
    registerValueTransformer(&two, "mine");
    EXPECT_EQ(made(withNone), R"("two" null)");
    EXPECT_EQ(made(FEMMapping(withOne)), R"("two" "one")");
    EXPECT_EQ(made(Parcel::defaultMapping()), R"("two" "two")");
    registerValueTransformer(nullptr, "mine");
    EXPECT_EQ(made(withOne), R"(null "one")");
    EXPECT_EQ(made(Parcel::defaultMapping()), "null null");
}

// A registry that kept one thing more for each replacement would also take hours here to find an unknown
// name.
TEST(Registry, NeitherGrowsNorGetsSlowerByReplacements) {
    static const Stamp stamp("stamped");
    registerValueTransformer(&stamp, "replaced");
    const ValueTransformer* const html = valueTransformerForName(kQELHTMLTransformer);
    const std::size_t before = requests.made;
    for (int i = 0; i < 200'000; ++i) {
        registerValueTransformer(i % 2 == 0 ? nullptr : &stamp, "replaced");
        registerValueTransformer(i % 2 == 0 ? &stamp : html, kQELHTMLTransformer);
        registerValueTransformer(nullptr, "never there");
        ASSERT_EQ(valueTransformerForName("nobody"), nullptr);
    }
    EXPECT_EQ(requests.made, before);
}

TEST(Registry, KeepsApartTheNamesThatManyThreadsRegister) {
    static const Stamp stamps[] = {Stamp("0"), Stamp("1"), Stamp("2")};
    constexpr std::size_t kNames = 300;
    const auto forEachName = [](auto use) {
        for (std::size_t i = 0; i < kNames; ++i)
            use("name " + std::to_string(i), &stamps[i % std::size(stamps)]);
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            forEachName([](const std::string& name, const Stamp* stamp) {
                registerValueTransformer(stamp, name);
                static_cast<void>(Parcel::defaultMapping());
            });
        });
    for (std::thread& thread : threads)
        thread.join();
    forEachName([](const std::string& name, const Stamp* stamp) {
        EXPECT_EQ(valueTransformerForName(name), stamp) << name;
    });
}

TEST(Registry, LetsARecordKeepWhatARuleTookFromAnother) {
    FEMMapping mapping(QELAsset::objectClass);
    mapping.addAttribute(FEMAttribute::mappingOfProperty("title", "t", [](RepresentationView value) {
        const auto season = mappedObject<QELSeason>(Representation{{"title", Representation(value)}});
        return season->isa().property("title")->value(*season);
    }));
    const auto asset = FEMDeserializer::objectFromRepresentation(json(R"({"t": "&lt;lent"})"), mapping);
    EXPECT_EQ(showAt(*asset, "title"), R"("<lent")");
}

}  // namespace
}  // namespace QELModels::test
