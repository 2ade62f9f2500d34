// A model class is what its tables say: which properties it declares, which of them it shows and copies, and
// what makes two of its records equal. That holds for a class of an application as for the library's own.

#include "QELModels/Models/QELBaseModel.h"

#include <gtest/gtest.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/Doubles.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// A model class of an application: one property stays out of sight, one is computed.
class Shelf : public Record<Shelf> {
public:
    Field<Number> number;
    Field<Text> hidden;
    Field<bool> isOpen;
    Field<std::int64_t> order;
    static const ObjectClassOf<Shelf> objectClass;
    static const FEMRulesOf<Shelf> defaultRules;
};
constexpr auto declaredOfShelf =
    declare<Shelf>(property<&Shelf::number>("number"), property<&Shelf::hidden>("s_hidden"),
                   property<&Shelf::isOpen>("isOpen"), property<&Shelf::order>("order"));
constexpr auto rulesOfShelf =
    mapping<declaredOfShelf>(attribute<&Shelf::number>(), attribute<&Shelf::hidden>(),
                             attribute<&Shelf::isOpen>(), attribute<&Shelf::order>());
constinit const FEMRulesOf<Shelf> Shelf::defaultRules = rulesOfShelf;
using ComparedOfShelf = FieldsOf<&Shelf::number, &Shelf::hidden>;
constinit const ObjectClassOf<Shelf> Shelf::objectClass(
    describe<declaredOfShelf, ComparedOfShelf, ComparedOfShelf>("Shelf"));

// A class that extends another and adds nothing.
class TallShelf : public Record<TallShelf, Shelf> {
public:
    static const ObjectClassOf<TallShelf> objectClass;
};
constexpr auto declaredOfTallShelf = declare<TallShelf>();
constinit const ObjectClassOf<TallShelf> TallShelf::objectClass(describe<declaredOfTallShelf>("TallShelf"));

static_assert(QELModel<QELAsset> && QELModel<QELEditorial> && QELModel<QELSeason> && QELModel<Shelf>);
static_assert(!QELModel<QELBaseModel>, "the base class has no mapping");

std::vector<std::string> keysOf(const ObjectClass& isa) {
    return {isa.propertyKeys().begin(), isa.propertyKeys().end()};
}

TEST(BaseModel, DeclaresWhatTheRootProtocolDeclaresAndHasNoMapping) {
    EXPECT_EQ(keysOf(QELBaseModel::objectClass),
              (std::vector<std::string>{"hash", "superclass", "description", "debugDescription"}));
    EXPECT_FALSE(QELBaseModel::defaultMapping().has_value());
    EXPECT_EQ(QELBaseModel::objectClass.superclass(), nullptr);
    EXPECT_EQ(QELAsset::objectClass.superclass(), &QELBaseModel::objectClass);
}

TEST(BaseModel, SaysOfTheRootClassWhatItSaysOfAnyObject) {
    const auto root =
        FEMDeserializer::objectFromRepresentation<QELBaseModel>({}, FEMMapping(QELBaseModel::objectClass));
    const auto values = root->dictionaryValue();
    EXPECT_EQ(values.find("description")->text(), root->description());
    EXPECT_EQ(values.find("debugDescription")->text(), root->debugDescription());
    EXPECT_EQ(values.find("hash")->number(), Number(root->hash()));
    EXPECT_EQ(root->description(),
              "<QELBaseModel hash: " + Number(root->hash()).toString() + ", superclass: (null)>");
}

TEST(BaseModel, IsEqualToItsCopyAlsoWhereANumberIsNotEqualToItself) {
    for (const Representation& document :
         {Representation{{"id", kNaN}},
          Representation{{"created", kNaN}, {"category", Representation{{"id", 0.0 / -kNaN}}}},
          Representation{{"additional", Representation{{"barrels", Representation::array({kNaN, 1})}}}}}) {
        const auto asset = mappedObject<QELAsset>(document);
        const auto copied = copy(*asset);
        EXPECT_TRUE(asset->isEqual(copied.get())) << asset->description();
        EXPECT_EQ(asset->hash(), copied->hash());
    }
    EXPECT_TRUE(Value(Number(kNaN)) == Value(Number(kNaN)));
    EXPECT_FALSE(Number(kNaN) == Number(kNaN)) << "numbers themselves compare as numbers do";
}

TEST(BaseModel, EnumeratesPropertiesUntilToldToStop) {
    const auto visited = [](const ObjectClass& isa, std::string_view last) {
        std::string names;
        isa.enumeratePropertiesUsingBlock([&](const Property& property, bool& stop) {
            names.append(property.name) += ' ';
            stop = property.name == last;
        });
        return names;
    };
    EXPECT_EQ(visited(Shelf::objectClass, "none"), "number s_hidden isOpen order ");
    EXPECT_EQ(visited(Shelf::objectClass, "isOpen"), "number s_hidden isOpen ");
    EXPECT_EQ(visited(Shelf::objectClass, "number"), "number ");
    EXPECT_EQ(visited(TallShelf::objectClass, ""), "") << "what the superclass declares is not its own";
}

TEST(BaseModel, KeepsPropertiesOutOfSightAndOutOfCopies) {
    const auto shelf = mapped<Shelf>(R"({"number": 7, "s_hidden": "in", "isOpen": 2, "order": -3.9})");
    EXPECT_EQ(keysOf(Shelf::objectClass), (std::vector<std::string>{"number", "isOpen", "order"}));
    EXPECT_EQ(shelf->description(), "<Shelf number: 7, isOpen: 1, order: -3>");
    EXPECT_EQ(shelf->hidden(), "in");

    const auto copied = copy(*shelf);
    EXPECT_EQ(copied->hidden(), std::nullopt);
    EXPECT_EQ(copied->number(), Number(7));
    EXPECT_TRUE(copied->isOpen());
    EXPECT_EQ(copied->order(), -3);
    EXPECT_FALSE(shelf->isEqual(copied.get())) << "the class compares what it does not copy";
}

TEST(BaseModel, IsEqualOnlyWithinExactlyOneClass) {
    const auto shelf = mapped<Shelf>("{}");
    const auto other = mapped<Shelf>(R"({"isOpen": true})");
    const auto tall = FEMDeserializer::objectFromRepresentation({}, FEMMapping(TallShelf::objectClass));
    EXPECT_TRUE(shelf->isEqual(other.get()));
    EXPECT_FALSE(shelf->isEqual(tall.get()));
    EXPECT_FALSE(tall->isEqual(shelf.get()));
    EXPECT_TRUE(tall->isEqual(tall.get()));
    EXPECT_FALSE(shelf->isEqual(nullptr));
    EXPECT_FALSE(shelf == other) << "references compare by identity";
    EXPECT_TRUE(*shelf == *other);
}

TEST(BaseModel, ServesAsKeyOfContainers) {
    std::unordered_set<Ref<QELSeason>, Hash, EqualTo> seasons;
    for (const char* text : {R"({"seasonNumber": 1})", R"({"seasonNumber": 1.0})", R"({"seasonNumber": 2})"})
        seasons.insert(mapped<QELSeason>(text));
    seasons.insert(Ref<QELSeason>());
    EXPECT_EQ(seasons.size(), 3U);
    EXPECT_EQ(seasons.count(mapped<QELSeason>(R"({"seasonNumber": true})")), 1U);
    EXPECT_FALSE(EqualTo()(Ref<QELSeason>(), mapped<QELSeason>("{}")));
    EXPECT_FALSE(EqualTo()(mapped<QELSeason>("{}"), Ref<QELSeason>()));
}

TEST(BaseModel, FaultsAtACopyOfWhatCannotBeSet) {
    const auto asset = assetFrom(R"({"streamConfiguration": {"properties": ["encrypted"]}})");
    CountingZone zone;
    try {
        asset->streamConfiguration()->copyWithZone(&zone);
        FAIL() << "a computed property was set";
    } catch (const MappingFault& fault) {
        EXPECT_EQ(std::string(fault.what()),
                  "QELStreamConfiguration: the property 'configuration' cannot be set");
        EXPECT_EQ(fault.pointer(), "");
    }
    EXPECT_EQ(zone.requests(), 1U);
    EXPECT_EQ(zone.pieces(), 0U);
    const auto values = asset->streamConfiguration()->dictionaryValue();
    ASSERT_EQ(values.size(), 2U);
    EXPECT_EQ(show(*values.find("configuration")), "2");
    EXPECT_EQ(values.find("none"), nullptr);
    // A copy of what holds the record shares it.
    EXPECT_EQ(copy(*asset, &zone)->streamConfiguration(), asset->streamConfiguration());
    EXPECT_EQ(zone.requests(), 2U) << "the record itself comes from the zone";
    EXPECT_EQ(zone.pieces(), 0U);
}

TEST(BaseModel, DescribesEveryKindOfValue) {
    const auto asset = assetFrom(R"({"id": 5, "title": "T", "created": 1.5, "articleUrl": "a:b",
        "category": {"additional": {"backgroundColor": "#ff0000"}},
        "additional": {"barrels": [1, 2], "metadata": {"k": 0}, "chapters": [{}]}})");
    EXPECT_TRUE(asset->description().starts_with("<QELAsset assetIdentifier: 5, "));
    for (const char* part : {"title: \"T\", ",
                             "titleFront: (null), ",
                             "createdAt: 1.5, ",
                             "articleUrl: a:b, ",
                             "backgroundColor: (1 0 0 1)",
                             "barrels: [2 elements]",
                             "metadata: {1 members}",
                             "chapters: [1 records]"})
        EXPECT_NE(asset->description().find(part), std::string::npos)
            << part << " in " << asset->description();
    EXPECT_EQ(asset->debugDescription(), asset->description());
}

}  // namespace
}  // namespace QELModels::test
