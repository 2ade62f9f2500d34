// The engine fills records exactly by their rules: in order, attributes before relationships, each value
// taken, refused or found missing, and an observer is told so. What must never be in a document is a fault
// that names its place.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Representation/RepresentationBuilder.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

using Lines = std::vector<std::string>;

Ref<Object> filled(const FEMMapping& mapping, std::string_view text, const FEMOptions& options = {}) {
    return FEMDeserializer::objectFromRepresentation(json(text), mapping, options);
}

class Notes final : public FEMObserver {
public:
    void ruleApplied(const FEMEvent& event) override {
        constexpr std::string_view kOutcomes[] = {"set", "missing", "null", "refused", "wrongKind", "fault"};
        lines.push_back(event.path.pointer() + ' ' + event.path.property() + ' ' +
                        std::string(kOutcomes[static_cast<int>(event.outcome)]) + ' ' +
                        (event.value ? jsonFromRepresentation(*event.value) : "-"));
    }
    Lines lines;
};

TEST(Engine, TakesWhatFitsAPropertyAndLeavesItEmptyOtherwise) {
    // One row for each kind of property; one column for each kind of value.
    // clang-format off
    constexpr std::string_view kValues[] = {"null", "7", "-2.5", "true", R"("x:y")", "[1]", "[]", "{}", R"({"id":3})"};
    const struct {
        std::string keys, property, shown;
    } rows[] = {
        {"displays", "displays",                  "null  7     -2.5  true  null    null  null  null  null "},
        {"status", "status",                      "null  null  null  null  \"x:y\" null  null  null  null "},
        {"title", "title",                        "null  null  null  null  \"x:y\" null  null  null  null "},
        {"articleUrl", "articleUrl",              "null  null  null  null  <x:y>   null  null  null  null "},
        {"created", "createdAt",                  "null  @7    @-2.5 @1    null    null  null  null  null "},
        {"showDisplays", "showDisplays",          "false true  true  true  false   false false false false "},
        {"assetType", "assetType",                "0     0     0     0     0       0     0     0     0 "},
        {"additional.barrels", "barrels",         "null  null  null  null  null    [1]   []    null  null "},
        {"additional.metadata", "metadata",       "null  null  null  null  null    null  null  {}    {\"id\":3} "},
        {"additional.nextAsset", "nextAsset",     "null  null  null  null  null    null  null  QELAssetLead QELAssetLead "},
        {"additional.chapters", "chapters",       "null  null  null  null  null    [1]   [0]   null  null "},
    };
    // clang-format on
    LogLines log;
    for (const auto& [keys, property, shown] : rows) {
        const bool isNested = keys.starts_with("additional.");
        std::istringstream expected(shown);
        for (const std::string_view value : kValues) {
            const std::string member = '"' + keys.substr(isNested ? 11 : 0) + "\": " + std::string(value);
            const auto asset =
                assetFrom(isNested ? R"({"additional": {)" + member + "}}" : '{' + member + '}');
            std::string word;
            expected >> word;
            EXPECT_EQ(showAt(*asset, (isNested ? "assetAdditional." : "") + property), word) << member;
        }
    }
    EXPECT_EQ(log.lines, Lines{});
}

TEST(Engine, ReadsScalarsOfAnApplicationsRules) {
    FEMMapping mapping(QELAsset::objectClass);
    mapping.addAttributesFromArray({"streamType", "showDisplays"});
    const struct {
        std::string_view value, integer, boolean;
    } rows[] = {{"2.9", "2", "true"},
                {"-2.9", "-2", "true"},
                {"0.4", "0", "true"},
                {"true", "1", "true"},
                {"false", "0", "false"},
                {"-0.0", "0", "false"},
                {"1e300", "9223372036854775807", "true"},
                {R"("2")", "0", "false"},
                {"[1]", "0", "false"}};
    for (const auto& [value, integer, boolean] : rows) {
        const std::string text(value);
        const auto asset =
            filled(mapping, R"({"streamType": )" + text + R"(, "showDisplays": )" + text + "}");
        EXPECT_EQ(showAt(*asset, "streamType"), integer) << text;
        EXPECT_EQ(showAt(*asset, "showDisplays"), boolean) << text;
    }
}

FEMAttribute::Map answering(Value result) {
    return [result](RepresentationView) { return result; };
}

TEST(Engine, CallsMapRulesInOrderForNullAndNotForWhatIsMissing) {
    Lines calls;
    const auto noting = [&](std::string name) -> FEMAttribute::Map {
        return [&calls, name](RepresentationView value) {
            calls.push_back(name + ' ' + jsonFromRepresentation(value));
            return Value(Number(1));
        };
    };
    FEMMapping category(QELCategory::objectClass);
    category.addAttribute(FEMAttribute::mappingOfProperty("order", "x", noting("order")));
    FEMMapping mapping(QELAsset::objectClass);
    mapping.addRelationshipMapping(category, "category", "nested");
    mapping.addAttribute(FEMAttribute::mappingOfProperty("duration", "b.c", noting("duration")));
    mapping.addAttribute(FEMAttribute::mappingOfProperty("displays", "a", noting("displays")));
    mapping.addAttribute(FEMAttribute::mappingOfProperty("assetIdentifier", "missing", noting("never")));
    mapping.addAttribute(FEMAttribute::mappingOfProperty("displays", "b", noting("again")));
    const auto asset = filled(mapping, R"({"nested": {"x": [2]}, "a": null, "b": {"c": 5, "missing": 0}})");
    EXPECT_EQ(calls, (Lines{"duration 5", "displays null", R"(again {"c":5,"missing":0})", "order [2]"}));
    EXPECT_EQ(showAt(*asset, "displays"), "1") << "what a rule makes of null counts";
    EXPECT_EQ(showAt(*asset, "assetIdentifier"), "null");
    EXPECT_EQ(showAt(*asset, "category.order"), "1");
}

TEST(Engine, EmptiesObjectsAndKeepsScalarsWhenThereIsNothing) {
    FEMMapping mapping(QELAsset::objectClass);
    mapping.addAttributesFromArray({"displays", "showDisplays", "streamType", "status"});
    FEMMapping refusing = mapping;
    for (const char* property : {"displays", "showDisplays", "streamType"})
        refusing.addAttribute(FEMAttribute::mappingOfProperty(property, "later", answering({})));
    FEMMapping misfitting = mapping;
    for (const char* property : {"displays", "showDisplays", "streamType"})
        misfitting.addAttribute(
            FEMAttribute::mappingOfProperty(property, "later", answering(Value::text("no"))));
    misfitting.addAttributesFromDictionary({{"status", "later"}});
    const struct {
        const FEMMapping& mapping;
        std::string_view later, displays, showDisplays, streamType, status;
    } rows[] = {{refusing, "", "6", "true", "9", R"("s")"},
                {refusing, R"(, "later": 1)", "null", "true", "9", R"("s")"},
                {refusing, R"(, "later": null)", "null", "true", "9", R"("s")"},
                {misfitting, R"(, "later": 1)", "null", "true", "9", "null"}};
    for (const auto& row : rows) {
        const auto asset = filled(row.mapping,
                                  R"({"displays": 6, "showDisplays": true, "streamType": 9, "status": "s")" +
                                      std::string(row.later) + "}");
        EXPECT_EQ(showAt(*asset, "displays"), row.displays) << row.later;
        EXPECT_EQ(showAt(*asset, "showDisplays"), row.showDisplays) << row.later;
        EXPECT_EQ(showAt(*asset, "streamType"), row.streamType) << row.later;
        EXPECT_EQ(showAt(*asset, "status"), row.status) << row.later;
    }
}

TEST(Engine, ResolvesKeyPathsOneDictionaryAtATime) {
    const struct {
        std::string_view text, keyPath, found;
    } rows[] = {
        {R"({"a": 1})", "a", "1"},
        {R"({"a": null})", "a", "null"},
        {R"({"a": 1})", "b", "absent"},
        {R"({"a": {"b": {"c": 2}}})", "a.b.c", "2"},
        {R"({"a": {"b": {"c": 2}}})", "a.b", R"({"c":2})"},
        {R"({"a": {"b": null}})", "a.b", "null"},
        {R"({"a": {}})", "a.b", "absent"},
        {R"({})", "a.b", "absent"},
        {R"({"a": null})", "a.b", "absent"},
        {R"({"a": [{"b": 3}]})", "a.b", "absent"},
        {R"({"a": "b"})", "a.b", "absent"},
        {R"({"a": 4})", "a.b", "absent"},
        {R"({"a.b": 5})", "a.b", "absent"},
        {R"({"": {"": 6}, "a": {"": 7}})", ".", "6"},
        {R"({"": {"": 6}, "a": {"": 7}})", "a.", "7"},
        {R"([1])", "a", "absent"},
        {R"({"a": 1, "a": 8})", "a", "8"},
    };
    for (const auto& [text, keyPath, found] : rows) {
        const auto document = json(text);
        const auto value = document->valueForKeyPath(keyPath);
        EXPECT_EQ(value ? jsonFromRepresentation(*value) : "absent", found) << text << ' ' << keyPath;
        std::string seen = "absent";
        FEMMapping mapping(QELAsset::objectClass);
        mapping.addAttribute(FEMAttribute::mappingOfProperty("title", keyPath, [&](RepresentationView view) {
            seen = jsonFromRepresentation(view);
            return Value();
        }));
        filled(mapping, text);
        EXPECT_EQ(seen, found) << text << ' ' << keyPath;
    }
}

TEST(Engine, FindsEveryKeyInDictionariesOfAnySize) {
    // Small ones are walked, large ones searched, and a mapping with many keys needs more room than
    // usual.
    FEMMapping many = QELAsset::defaultMapping();
    for (int i = 0; i < 40; ++i)
        many.addAttribute(
            FEMAttribute::mappingOfProperty("status", "k" + std::to_string(i), answering(Value::text("k"))));
    const FEMMapping few = QELAsset::defaultMapping();
    for (const int size : {0, 1, 30, 31, 32, 33, 126, 127, 128, 129, 1000}) {
        for (const int place : {0, size / 2, size}) {
            std::string text = "{";
            for (int i = 0; i <= size; ++i) {
                if (i == place) text += R"("id": 77, "additional": {"url": "u"}, "status": "as it is", )";
                text += "\"x" + std::to_string(i) + "\": [" + std::to_string(i) + "], ";
            }
            text += R"("k39": 0})";
            EXPECT_EQ(showAt(*filled(few, text), "assetIdentifier"), "77") << size << ' ' << place;
            EXPECT_EQ(showAt(*filled(few, text), "assetAdditional.url"), R"("u")") << size << ' ' << place;
            EXPECT_EQ(showAt(*filled(few, text), "status"), R"("as it is")") << size << ' ' << place;
            EXPECT_EQ(showAt(*filled(many, text), "status"), R"("k")") << size << ' ' << place;
        }
    }
}

// An application's class whose rules get in each other's way, with keys that differ late.
class Crate : public Record<Crate> {
public:
    Field<Text> both, alsoBoth, whole, sixteen, seventeen, thirtyTwo, thirtyThree, otherThirtyThree;
    Field<Number> part, innerPart;
    Field<Dictionary> innerAsItIs;
    Field<Array> rowAsItIs;
    Field<Crate> inner;
    Field<List<Crate>> row;
    static const ObjectClassOf<Crate> objectClass;
    static const FEMRulesOf<Crate> defaultRules;
};
constexpr auto declaredOfCrate = declare<Crate>(
    property<&Crate::both>("both"), property<&Crate::alsoBoth>("alsoBoth"), property<&Crate::whole>("whole"),
    property<&Crate::sixteen>("sixteen"), property<&Crate::seventeen>("seventeen"),
    property<&Crate::thirtyTwo>("thirtyTwo"), property<&Crate::thirtyThree>("thirtyThree"),
    property<&Crate::otherThirtyThree>("otherThirtyThree"), property<&Crate::part>("part"),
    property<&Crate::innerPart>("innerPart"), property<&Crate::innerAsItIs>("innerAsItIs"),
    property<&Crate::rowAsItIs>("rowAsItIs"), property<&Crate::inner>("inner"), property<&Crate::row>("row"));
constexpr auto rulesOfCrate = mapping<declaredOfCrate>(
    attribute<&Crate::both>("shared"), attribute<&Crate::alsoBoth>("shared"), attribute<&Crate::whole>("a"),
    attribute<&Crate::part>("a.b"), attribute<&Crate::sixteen>("aKeyOfSixteen_16"),
    attribute<&Crate::seventeen>("aKeyOfSeventeen17"),
    attribute<&Crate::thirtyTwo>("aKeyOfThirtyTwo_aKeyOfThirtyTwo_"),
    attribute<&Crate::thirtyThree>("aKeyOfThirtyThree_BeforeItsMiddle"),
    attribute<&Crate::otherThirtyThree>("aKeyOfThirtyThree_behindItsMIDDLE"),
    attribute<&Crate::innerAsItIs>("inner"), attribute<&Crate::innerPart>("inner.a.b"),
    attribute<&Crate::rowAsItIs>("row"), relationship<&Crate::inner>(), relationship<&Crate::row>());
constinit const FEMRulesOf<Crate> Crate::defaultRules = rulesOfCrate;
constinit const ObjectClassOf<Crate> Crate::objectClass(describe<declaredOfCrate>("Crate"));

// One that no document fills.
class Shell : public Record<Shell> {
public:
    Field<Number> none;
    static const ObjectClassOf<Shell> objectClass;
    static const FEMRulesOf<Shell> defaultRules;
};
constexpr auto declaredOfShell = declare<Shell>(property<&Shell::none>("none"));
constexpr auto rulesOfShell = mapping<declaredOfShell>();
constinit const FEMRulesOf<Shell> Shell::defaultRules = rulesOfShell;
constinit const ObjectClassOf<Shell> Shell::objectClass(describe<declaredOfShell>("Shell"));

// One with two keys of the same hash.
class Twins : public Record<Twins> {
public:
    Field<Number> first, other;
    static const ObjectClassOf<Twins> objectClass;
    static const FEMRulesOf<Twins> defaultRules;
};
constexpr auto declaredOfTwins =
    declare<Twins>(property<&Twins::first>("first"), property<&Twins::other>("other"));
constexpr auto rulesOfTwins = mapping<declaredOfTwins>(attribute<&Twins::first>("aKeyOfTheFirstTwin"),
                                                       attribute<&Twins::other>("aKeyOfTheOtherTwin"));
constinit const FEMRulesOf<Twins> Twins::defaultRules = rulesOfTwins;
constinit const ObjectClassOf<Twins> Twins::objectClass(describe<declaredOfTwins>("Twins"));

TEST(Engine, AppliesRulesThatGetInEachOthersWayInOrder) {
    std::string padding;
    for (int i = 0; i < 200; ++i)
        padding += ", \"padding" + std::to_string(i) + "\": 0";
    // As a root, within another record and in a list; walked and looked up; with an observer and
    // without.
    const auto expect = [&](std::string_view members, const std::string& property, std::string_view shown) {
        Bystander bystander;
        for (const std::string& more : {std::string(), padding}) {
            const std::string crate = '{' + std::string(members) + more + '}';
            const std::string text =
                R"({"inner": )" + crate + R"(, "row": [)" + crate + "], " + crate.substr(1);
            for (FEMObserver* observer :
                 {static_cast<FEMObserver*>(nullptr), static_cast<FEMObserver*>(&bystander)}) {
                const auto made = filled(FEMMapping(Crate::defaultRules), text, {observer, nullptr, {}});
                EXPECT_EQ(showAt(*made, property), shown) << text;
                EXPECT_EQ(showAt(*made, "inner." + property), shown) << text;
                EXPECT_EQ(showAt(*made, "row[0]." + property), shown) << text;
            }
        }
    };
    expect(R"("shared": "s")", "both", R"("s")");
    expect(R"("shared": "s")", "alsoBoth", R"("s")");
    expect(R"("a": {"b": 5})", "part", "5");
    expect(R"("a": {"b": 5})", "whole", "null");
    expect(R"("a": "x")", "whole", R"("x")");

    // A relationship does not take the key from others.
    const auto nested = filled(FEMMapping(Crate::defaultRules),
                               R"({"row": [{"inner": {"a": {"b": 7}}, "row": [{"a": {"b": 8}}]}]})");
    EXPECT_EQ(showAt(*nested, "row[0].innerAsItIs"), R"({"a":{"b":7}})");
    EXPECT_EQ(showAt(*nested, "row[0].innerPart"), "7");
    EXPECT_EQ(showAt(*nested, "row[0].inner.part"), "7");
    EXPECT_EQ(showAt(*nested, "row[0].rowAsItIs"), R"([{"a":{"b":8}}])");
    EXPECT_EQ(showAt(*nested, "row[0].row[0].part"), "8");

    const auto shell = filled(FEMMapping(Shell::defaultRules), R"({"none": 1, "": 2})");
    EXPECT_EQ(showAt(*shell, "none"), "null");

    // Without a quick way to tell their hashes apart, keys are told apart all the same.
    const FEMMapping twins(Twins::defaultRules);
    const auto made = filled(twins, R"({"aKeyOfTheFirstTwin": 1, "aKeyOfTheOtherTwin": 2})");
    EXPECT_TRUE(Twins::defaultRules.table.slots.empty());
    EXPECT_EQ(showAt(*made, "first") + showAt(*made, "other"), "12");

    // A key is the same to its last byte, or it is another one.
    for (const auto& rule : rulesOfCrate.attributes) {
        const std::string key(rule.keyPath);
        if (key.size() < 16) continue;
        const std::string property(rule.property->name);
        expect('"' + key + R"(": "x")", property, R"("x")");
        for (std::size_t i = 0; i < key.size(); ++i) {
            std::string other = key;
            other[i] = '#';
            expect('"' + other + R"(": "x")", property, "null");
        }
        expect('"' + key + R"(x": "x")", property, "null");
        expect('"' + key.substr(1) + R"(": "x")", property, "null");
    }
}

// A crate in a crate, in turn as a record and in a list.
Representation nestedCrates(int depth) {
    RepresentationBuilder builder;
    for (int i = 0; i < depth; ++i) {
        builder.beginDictionary();
        builder.key(i % 2 == 0 ? "inner" : "row");
        if (i % 2 != 0) builder.beginArray();
    }
    builder.null();
    for (int i = depth; i-- > 0;) {
        if (i % 2 != 0) builder.endArray();
        builder.endDictionary();
    }
    return builder.finish();
}

TEST(Engine, NestsRecordsThatHoldThemselvesUpToALimit) {
    const auto depthOf = [](const Crate* crate) {
        int depth = 0;
        for (; crate != nullptr; ++depth)
            crate = depth % 2 == 0            ? crate->inner()
                    : crate->row() == nullptr ? nullptr
                                              : &crate->row()->front();
        return depth;
    };
    EXPECT_EQ(depthOf(mappedObject<Crate>(nestedCrates(49)).get()), 49);
    const Representation deep = nestedCrates(100'000);
    const auto made = mappedObject<Crate>(deep);
    EXPECT_EQ(depthOf(made.get()), 129);
    EXPECT_EQ(made->description(), copy(*made)->description());
    std::size_t unread = 0;
    FEMUnreadKeys::inObject(
        deep, {}, Crate::defaultRules, [&](const FEMPath&, RepresentationView) { ++unread; });
    EXPECT_EQ(unread, 0U);

    Notes notes;
    mappedObject<Crate>(nestedCrates(200), {&notes, nullptr, {}});
    EXPECT_EQ(std::count_if(notes.lines.begin(),
                            notes.lines.end(),
                            [](const std::string& line) { return line.find(" wrongKind {") != line.npos; }),
              1)
        << "the crate that is left out";
}

TEST(Engine, ReadsEmptyTextsThatLieNowhere) {
    RepresentationBuilder builder;
    builder.beginDictionary();
    builder.key("");
    builder.null();
    for (const std::string_view key : {"title", "status", "articleUrl"}) {
        builder.key(key);
        builder.string("");
    }
    builder.endDictionary();
    const auto asset =
        FEMDeserializer::objectFromRepresentation(builder.finish(), QELAsset::defaultMapping());
    EXPECT_EQ(showAt(*asset, "title") + showAt(*asset, "status") + showAt(*asset, "articleUrl"), R"(""""<>)");
}

TEST(Engine, MakesARecordOfAnyRootAndAListOfAnyCollection) {
    const FEMMapping mapping = QELAsset::defaultMapping();
    EXPECT_TRUE(FEMDeserializer::objectFromRepresentation({}, mapping)->isEqual(assetFrom("{}").get()));
    EXPECT_EQ(FEMDeserializer::collectionFromRepresentation({}, mapping)->size(), 0U);
    const struct {
        std::string_view text;
        std::size_t size;
    } rows[] = {{"{}", 0},
                {"null", 0},
                {"7", 0},
                {R"("[1]")", 0},
                {R"({"id": 1})", 0},
                {"[]", 0},
                {"[{\"id\": 1}]", 1},
                {"[[]]", 1},
                {"[null, 3, \"x\", [{\"id\": 1}], {}]", 5}};
    for (const auto& [text, size] : rows) {
        const auto list = FEMDeserializer::collectionFromRepresentation(json(text), mapping);
        EXPECT_EQ(list->size(), size) << text;
        EXPECT_EQ(list->hash(), size) << text;
    }
}

TEST(Engine, MakesListsInOrderWithARecordForEveryElement) {
    const auto season = mapped<QELSeason>(R"({"assets": [{"id": 3}, null, {"id": 1}, [], {"id": 2}, "x"]})");
    std::string identifiers;
    for (const QELAsset& asset : *season->assets())
        identifiers += showAt(asset, "assetIdentifier") + ' ';
    EXPECT_EQ(identifiers, "3 null 1 null 2 null ");
    EXPECT_EQ(mapped<QELSeason>(R"({"assets": []})")->assets()->size(), 0U);
    EXPECT_EQ(mapped<QELSeason>(R"({"assets": null})")->assets(), nullptr);
    EXPECT_EQ(mapped<QELSeason>("{}")->assets(), nullptr);
    EXPECT_EQ(mapped<QELSeason>(R"({"assets": {"0": {"id": 1}}})")->assets(), nullptr);
    const auto chapters = assetFrom(R"({"additional": {"chapters": [{"timeline": 9}, 4, {"timeline": 8}]}})");
    EXPECT_EQ(showAt(*chapters, "assetAdditional.chapters[0].timeline"), "9");
    EXPECT_EQ(showAt(*chapters, "assetAdditional.chapters[1].timeline"), "null");
    EXPECT_EQ(showAt(*chapters, "assetAdditional.chapters[2].timeline"), "8");
}

TEST(Mapping, RefusesWrongRulesWhenTheyAreAdded) {
    enum Rule { attribute, toOne, toMany };
    constexpr std::string_view kUnknown = "there is no property '@'";
    constexpr std::string_view kComputed = "the property '@' cannot be set";
    constexpr std::string_view kRecords = "the property '@' holds records and needs a relationship";
    constexpr std::string_view kMisfit =
        "the property '@' does not hold what the relationship's mapping makes";
    const struct {
        const ObjectClass& isa;
        Rule rule;
        std::string_view property, fault;
    } rows[] = {
        {QELAsset::objectClass, attribute, "id", kUnknown},
        {QELAsset::objectClass, toOne, "none", kUnknown},
        {QELStreamConfiguration::objectClass, attribute, "configuration", kComputed},
        {QELBaseModel::objectClass, attribute, "hash", kComputed},
        {QELAsset::objectClass, attribute, "category", kRecords},
        {QELSeason::objectClass, attribute, "assets", kRecords},
        {QELAsset::objectClass, toOne, "series", kMisfit},
        {QELAsset::objectClass, toOne, "title", kMisfit},
        {QELAsset::objectClass, toMany, "category", kMisfit},
        {QELEditorial::objectClass, toMany, "assets", kMisfit},
    };
    for (const auto& [isa, rule, property, fault] : rows) {
        FEMMapping mapping(isa);
        std::string expected = std::string(isa.name()) + ": " + std::string(fault);
        expected.replace(expected.find('@'), 1, property);
        try {
            if (rule == attribute) mapping.addAttributeWithProperty(property, "k");
            if (rule == toOne) mapping.addRelationshipMapping(QELCategory::defaultMapping(), property, "k");
            if (rule == toMany)
                mapping.addToManyRelationshipMapping(QELCategory::defaultMapping(), property, "k");
            ADD_FAILURE() << expected << ": was added";
        } catch (const MappingFault& caught) {
            EXPECT_EQ(caught.what(), expected);
        }
        EXPECT_TRUE(mapping.rules().attributes.empty() && mapping.rules().relationships.empty()) << expected;
    }
    // A list of one mapping does not fit a single property, and of several rules all are added or
    // none.
    FEMMapping mapping(QELAssetAdditional::objectClass);
    EXPECT_THROW(mapping.addRelationshipMapping(QELAssetChapter::defaultMapping(), "chapters", "k"),
                 MappingFault);
    EXPECT_THROW(mapping.addAttributesFromArray({"url", "nope"}), MappingFault);
    EXPECT_THROW(mapping.addAttributesFromDictionary({{"url", "a"}, {"nope", "b"}}), MappingFault);
    EXPECT_EQ(mapping.rules().attributes.size(), 0U);
    mapping.addAttributesFromArray({"url", "access"});
    EXPECT_EQ(mapping.rules().attributes.size(), 2U);
}

TEST(Mapping, IsEmptyAndOfUseAfterAMove) {
    FEMMapping constant = QELAsset::defaultMapping();
    FEMMapping added(QELAsset::objectClass);
    added.addAttributeWithProperty("status", "s");
    for (FEMMapping* from : {&constant, &added}) {
        {
            const FEMMapping to = std::move(*from);
            EXPECT_EQ(to.rules().attributes.empty(), false);
        }
        EXPECT_EQ(from->objectClass(), QELAsset::objectClass);
        EXPECT_EQ(showAt(*filled(*from, R"({"s": "x", "status": "y"})"), "status"), "null");
        const FEMMapping copied = *from;
        from->addAttributeWithProperty("status", "s");
        EXPECT_EQ(showAt(*filled(*from, R"({"s": "x", "status": "y"})"), "status"), R"("x")");
        EXPECT_TRUE(copied.rules().attributes.empty());
    }
}

TEST(Mapping, TakesEveryKindOfValueThatAMapRuleHandsOut) {
    const Representation text("raw");
    const struct {
        std::string_view property;
        Value result;
        std::string_view shown;
    } rows[] = {
        {"status", "text", R"("text")"},
        {"status", std::string("text"), R"("text")"},
        {"status", text, R"("raw")"},
        {"status", text.view(), R"("raw")"},
        {"status", nullptr, "null"},
        {"status", Representation(), "null"},
        {"displays", 7, "7"},
        {"displays", 2.5F, "2.5"},
        {"displays", true, "true"},
        {"displays", Representation(-3), "-3"},
        {"displays", Representation(false), "false"},
        {"showDisplays", Representation(true), "true"},
        {"streamType", QELStreamTypeLive, "2"},
        {"streamType", Representation(1), "1"},
        {"articleUrl", *URLView::parse("a:b"), "<a:b>"},
        {"createdAt", dateFromSecondsSince1970(3), "@3"},
        {"status", 7, "null"},
        {"displays", "7", "null"},
        {"articleUrl", "a:b", "null"},
    };
    for (const auto& [property, result, shown] : rows) {
        FEMMapping mapping(QELAsset::objectClass);
        mapping.addAttribute(FEMAttribute::mappingOfProperty(property, "k", answering(result)));
        EXPECT_EQ(showAt(*filled(mapping, R"({"k": 0})"), std::string(property)), shown) << property;
    }
    EXPECT_EQ(Value(Representation{{"a", 1}}).kind(), Value::Kind::representation);
    EXPECT_EQ(Value(Representation::array({})).kind(), Value::Kind::representation);
    // What a rule hands through as it came is kept, whatever becomes of the document.
    FEMMapping mapping(QELAsset::objectClass);
    mapping.addAttribute(
        FEMAttribute::mappingOfProperty("status", "k", [](RepresentationView value) { return value; }));
    const auto made = filled(mapping, R"({"k": "as it came", "more": [1, 2, 3]})");
    EXPECT_EQ(showAt(*made, "status"), R"("as it came")");
}

TEST(Mapping, IsAValueThatCopiesDoNotShare) {
    const FEMMapping original = QELAsset::defaultMapping();
    FEMMapping first = original;
    {
        FEMMapping temporary = first;
        temporary.addAttributeWithProperty("status", std::string("a.") + "b");
        first = temporary;
        temporary.addAttributeWithProperty("status", "c");
        FEMMapping changed = first;
        changed.addAttributeWithProperty("duration", "changed");
        first = changed;  // keeps what its rules point to, whatever mapping they came from
    }
    FEMMapping second = first;
    second.addAttributesFromDictionary({{"status", "d"}});
    FEMMapping season = QELSeason::defaultMapping();
    season.addToManyRelationshipMapping(second, "assets", "e");
    second.addAttributeWithProperty("status", "f");
    constexpr std::string_view kText = R"({"status": "s", "a": {"b": "b"}, "c": "c", "d": "d", "f": "f"})";
    EXPECT_EQ(showAt(*filled(original, kText), "status"), R"("s")");
    EXPECT_EQ(showAt(*filled(first, kText), "status"), R"("b")");
    EXPECT_EQ(showAt(*filled(second, kText), "status"), R"("f")");
    const auto made =
        filled(season, R"({"title": "&lt;", "assets": [1], "e": [)" + std::string(kText) + "]}");
    EXPECT_EQ(showAt(*made, "assets[0].status"), R"("d")");
    EXPECT_EQ(showAt(*made, "title"), R"("<")") << "the rules before the added ones work on";
}

// The observer.

TEST(Observer, IsToldTheOutcomeOfEveryRuleInOrder) {
    // Rules of its own, so that a new property changes nothing here.
    FEMMapping mapping(QELAssetAdditional::objectClass);
    mapping.addAttributesFromArray({"sourceFiles", "barrels", "imageCaption", "url", "access", "metadata"});
    mapping.addAttributesFromDictionary(
        {{"externalCategoryIdentifier", "externalCategoryId"}, {"externalIdentifier", "externalId"}});
    mapping.addRelationshipMapping(QELAssetAdditionalSettings::defaultMapping(), "settings", "settings");
    mapping.addToManyRelationshipMapping(QELAssetChapter::defaultMapping(), "chapters", "chapters");
    mapping.addToManyRelationshipMapping(QELAssetCuePoint::defaultMapping(), "cuePoints", "cuePoints");
    mapping.addToManyRelationshipMapping(
        QELAssetChapter::defaultMapping(), "featuredChapters", "featuredChapters");
    mapping.addToManyRelationshipMapping(
        QELAssetAdditionalSubtitle::defaultMapping(), "subtitles", "subtitles");
    mapping.addRelationshipMapping(QELAssetLead::defaultMapping(), "nextAsset", "nextAsset");
    const auto subtitles = [&mapping](std::string_view text) {
        Notes notes;
        filled(mapping, text, {&notes, nullptr, {}});
        return notes.lines;
    };
    LogLines log;
    EXPECT_EQ(
        subtitles(R"({"url": 5, "barrels": null, "access": {}, "chapters": 1, "cuePoints": null,
        "nextAsset": {"id": 2}, "settings": [],
        "subtitles": [{"url": "a b", "language": "no"}, null, {"url": 3, "default": true, "language": []}, 7]})"),
        (Lines{
            "/sourceFiles sourceFiles missing -",
            "/barrels barrels null null",
            "/imageCaption imageCaption missing -",
            "/url url wrongKind 5",
            "/access access set {}",
            "/metadata metadata missing -",
            "/externalCategoryId externalCategoryIdentifier missing -",
            "/externalId externalIdentifier missing -",
            "/settings settings wrongKind []",
            "/chapters chapters wrongKind 1",
            "/cuePoints cuePoints null null",
            "/featuredChapters featuredChapters missing -",
            R"(/subtitles subtitles set [{"url":"a b","language":"no"},null,{"url":3,"default":true,"language":[]},7])",
            "/subtitles/0/language subtitles[0].language set \"no\"",
            "/subtitles/0/url subtitles[0].url refused \"a b\"",
            "/subtitles/0/default subtitles[0].isDefault missing -",
            "/subtitles/1 subtitles[1] null null",
            "/subtitles/2/language subtitles[2].language wrongKind []",
            "/subtitles/2/url subtitles[2].url refused 3",
            "/subtitles/2/default subtitles[2].isDefault set true",
            "/subtitles/3 subtitles[3] wrongKind 7",
            "/nextAsset nextAsset set {\"id\":2}",
            "/nextAsset/id nextAsset.assetLeadIdentifier set 2"}));
    EXPECT_EQ(log.lines, (Lines{"Unable to transform URL a b"}));
    EXPECT_EQ(subtitles("3"), (Lines{"  wrongKind 3"}));
    EXPECT_EQ(subtitles("null"), (Lines{"  null null"}));
}

TEST(Observer, SeesThePlacesOfAPageAndOfKeyPaths) {
    Notes notes;
    const FEMOptions options{&notes, nullptr, {}};
    mappedPage<QELEditorial>(json(R"({"_embedded": {"editorial": [5, {"_embedded": {"assets": [false]}}]}})"),
                             "_embedded.editorial",
                             options);
    EXPECT_EQ(notes.lines,
              (Lines{"/_embedded/editorial/0 [0] wrongKind 5",
                     "/_embedded/editorial/1/key [1].key missing -",
                     "/_embedded/editorial/1/assetsIds [1].assetsIdentifiers missing -",
                     "/_embedded/editorial/1/_embedded/assets [1].assets set [false]",
                     "/_embedded/editorial/1/_embedded/assets/0 [1].assets[0] wrongKind false"}));
    notes.lines.clear();
    FEMMapping mapping(QELAssetLead::objectClass);
    mapping.addAttributeWithProperty("assetLeadIdentifier", "a/b.c~d");
    filled(mapping, R"({"a/b": {"c~d": 1}})", options);
    EXPECT_EQ(notes.lines, (Lines{"/a~1b/c~0d assetLeadIdentifier set 1"}));
    notes.lines.clear();
    mapped<QELAsset>(R"({"streamType": "LIVE", "assetType": 0})", options);
    const auto refused = std::find(notes.lines.begin(), notes.lines.end(), "/assetType assetType refused 0");
    ASSERT_LT(refused + 1, notes.lines.end());
    EXPECT_EQ(refused[1], R"(/streamType streamType refused "LIVE")");
}

// Faults.

TEST(Faults, NameThePlaceOfAColourThatIsNoString) {
    const struct {
        FEMMapping mapping;
        std::string_view text, colour, pointer;
    } rows[] = {
        {QELCategory::defaultMapping(),
         R"({"additional": {"backgroundColor": 5}})",
         "5",
         "/additional/backgroundColor"},
        {QELAsset::defaultMapping(),
         R"({"category": {"additional": {"backgroundColor": []}}})",
         "[]",
         "/category/additional/backgroundColor"},
        {QELEditorial::defaultMapping(),
         R"({"_embedded": {"assets": [0, {"category": {"additional": {"backgroundColor": {}}}}]}})",
         "{}",
         "/_embedded/assets/1/category/additional/backgroundColor"},
    };
    for (const auto& row : rows) {
        CountingZone zone;
        Notes notes;
        const auto expectFault = [&](auto map, std::string_view place) {
            try {
                map();
                ADD_FAILURE() << row.text << " was taken";
            } catch (const MappingFault& fault) {
                EXPECT_EQ(fault.pointer(), place);
                EXPECT_TRUE(
                    std::string_view(fault.what()).starts_with("QELUIColorTransformer: a colour must"));
            }
            EXPECT_TRUE(notes.lines.back().ends_with("backgroundColor fault " + std::string(row.colour)));
            EXPECT_EQ(zone.pieces(), 0U) << "something half made was left";
        };
        expectFault([&] { filled(row.mapping, row.text, {&notes, &zone, {}}); }, row.pointer);
        expectFault(
            [&] {
                FEMDeserializer::collectionFromRepresentation(
                    Representation::array({nullptr, json(row.text)}), row.mapping, {&notes, &zone, "a.b"});
            },
            "/a/b/1" + std::string(row.pointer));
    }
    for (const char* fine : {R"("#102030")", R"("red")", "null"})
        EXPECT_NO_THROW(mapped<QELCategoryAdditional>(R"({"backgroundColor": )" + std::string(fine) + "}"));
}

TEST(Faults, LeaveTheirPropertyEmptyWhereThatIsAskedFor) {
    Notes notes;
    FEMOptions options{&notes, nullptr, {}};
    options.faultsLeaveEmpty = true;
    constexpr std::string_view kText =
        R"({"title": "T", "additional": {"backgroundColor": 5, "logo": "a:b"}})";
    const auto category = mapped<QELCategory>(kText, options);
    EXPECT_EQ(showAt(*category, "title"), R"("T")");
    EXPECT_EQ(showAt(*category, "additional.backgroundColor"), "null");
    EXPECT_EQ(showAt(*category, "additional.logo"), "<a:b>");
    EXPECT_EQ(std::count(notes.lines.begin(),
                         notes.lines.end(),
                         "/additional/backgroundColor additional.backgroundColor fault 5"),
              1);
    options.observer = nullptr;
    EXPECT_EQ(showAt(*mapped<QELCategory>(kText, options), "additional.backgroundColor"), "null");
    EXPECT_EQ(mappedPage<QELCategory>(json("{\"k\": [" + std::string(kText) + "]}"), "k", options)->size(),
              1U);
}

TEST(Faults, OfAnApplicationsRulesPassThrough) {
    const auto mappingThatThrows = [](auto exception) {
        FEMMapping lead(QELAssetLead::objectClass);
        lead.addAttribute(FEMAttribute::mappingOfProperty(
            "assetLeadIdentifier", "x.y", [exception](RepresentationView) -> Value { throw exception; }));
        FEMMapping additional(QELAssetAdditional::objectClass);
        additional.addRelationshipMapping(lead, "nextAsset", "lead");
        return additional;
    };
    constexpr std::string_view kText = R"({"lead": {"x": {"y": 1}}})";
    EXPECT_THROW(filled(mappingThatThrows(std::out_of_range("mine")), kText), std::out_of_range);
    MappingFault placed("mine");
    placed.setPointer("/elsewhere");
    for (const auto& [fault, pointer] :
         {std::pair(MappingFault("mine"), "/lead/x/y"), std::pair(placed, "/elsewhere")}) {
        CountingZone zone;
        try {
            filled(mappingThatThrows(fault), kText, {nullptr, &zone, {}});
            ADD_FAILURE() << "nothing was thrown";
        } catch (const MappingFault& caught) {
            EXPECT_EQ(std::string_view(caught.what()), "mine");
            EXPECT_EQ(caught.pointer(), pointer);
        }
        EXPECT_EQ(zone.pieces(), 0U);
    }
}

}  // namespace
}  // namespace QELModels::test
