// A record of an application that extends one of the library's inherits its fields, rules, equality and hash,
// and adds its own. What is named after a class compares the fields of that class, whatever two records are.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSONFromValue.h"
#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELFlightTimes.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// An asset with one key more, and a nested one of its own.
class Lecture : public Record<Lecture, QELAsset> {
public:
    Field<Text> room;
    Field<QELAssetLead> previous;
    static const ObjectClassOf<Lecture> objectClass;
    static const FEMRulesOf<Lecture> defaultRules;
};
constexpr auto declaredOfLecture =
    declare<Lecture>(property<&Lecture::room>("room"), property<&Lecture::previous>("previous"));
constexpr auto rulesOfLecture = mapping<declaredOfLecture>(
    attribute<&Lecture::room>("room", fetched(kQELHTMLTransformer)), relationship<&Lecture::previous>());
constinit const FEMRulesOf<Lecture> Lecture::defaultRules = rulesOfLecture;
using ComparedOfLecture = FieldsOf<&Lecture::room>;
constinit const ObjectClassOf<Lecture> Lecture::objectClass(
    describe<declaredOfLecture, ComparedOfLecture, ComparedOfLecture>("Lecture", Lives::inItsOwnBlock));

// One that extends the extension, stores a value as it is, and compares nothing more.
class Keynote : public Record<Keynote, Lecture> {
public:
    Field<bool> isOpening;
    static const ObjectClassOf<Keynote> objectClass;
    static const FEMRulesOf<Keynote> defaultRules;
};
constexpr auto declaredOfKeynote = declare<Keynote>(property<&Keynote::isOpening>("isOpening"));
constexpr auto rulesOfKeynote = mapping<declaredOfKeynote>(attribute<&Keynote::isOpening>("opening"));
constinit const FEMRulesOf<Keynote> Keynote::defaultRules = rulesOfKeynote;
constinit const ObjectClassOf<Keynote> Keynote::objectClass(
    describe<declaredOfKeynote>("Keynote", Lives::inItsOwnBlock));

// One of a record that compares by identity.
class Slot : public Record<Slot, QELFlightTimes> {
public:
    Field<Text> name;
    static const ObjectClassOf<Slot> objectClass;
    static const FEMRulesOf<Slot> defaultRules;
};
constexpr auto declaredOfSlot = declare<Slot>(property<&Slot::name>("name"));
constexpr auto rulesOfSlot = mapping<declaredOfSlot>(attribute<&Slot::name>());
constinit const FEMRulesOf<Slot> Slot::defaultRules = rulesOfSlot;
constinit const ObjectClassOf<Slot> Slot::objectClass(describe<declaredOfSlot>("Slot"));

constexpr std::string_view kKeynote =
    R"({"id": 7, "title": "A &amp; B", "status": "on", "room": "<b>B 14</b>", "opening": true,
        "previous": {"id": 3}, "category": {"title": "Nyheter"}})";

TEST(DerivedRecords, AreFilledByInheritedRulesAndTheirOwn) {
    const auto keynote = mapped<Keynote>(kKeynote);
    EXPECT_EQ(keynote->assetIdentifier(), Number(7));
    EXPECT_EQ(keynote->title(), "A & B");
    EXPECT_EQ(keynote->category()->title(), "Nyheter");
    EXPECT_EQ(keynote->room(), "B 14");
    EXPECT_EQ(keynote->previous()->assetLeadIdentifier(), Number(3));
    EXPECT_TRUE(keynote->isOpening());
    EXPECT_EQ(&keynote->isa(), &Keynote::objectClass);

    const auto list = mappedPage<Keynote>(json(R"({"k": [{"id": 1, "room": "x"}, null]})"), "k");
    EXPECT_EQ((*list)[0].room(), "x");
    EXPECT_EQ((*list)[0].assetIdentifier(), Number(1));
    EXPECT_EQ((*list)[1].room(), std::nullopt);

    // Rules that are added at run time come after those that are inherited.
    FEMMapping mapping = Keynote::defaultMapping();
    mapping.addAttributesFromDictionary({{"title", "heading"}, {"room", "hall"}});
    const auto changed = FEMDeserializer::objectFromRepresentation<Keynote>(
        json(R"({"title": "old", "heading": "new", "hall": "C", "opening": 1, "id": 9})"), mapping);
    EXPECT_EQ(changed->title(), "new");
    EXPECT_EQ(changed->room(), "C");
    EXPECT_EQ(changed->assetIdentifier(), Number(9));
    EXPECT_TRUE(changed->isOpening());
}

TEST(DerivedRecords, HaveAllAttributesFilledBeforeAllRelationships) {
    const auto order = [](const FEMMapping& mapping) {
        class Order final : public FEMObserver {
        public:
            void ruleApplied(const FEMEvent& event) override {
                if (event.path.parent()->parent() != nullptr) return;
                names.append(event.path.property()) += ' ';
            }
            std::string names;
        } observer;
        FEMDeserializer::objectFromRepresentation(json(kKeynote), mapping, {&observer, nullptr, {}});
        return observer.names;
    };
    const std::string names = order(Keynote::defaultMapping());
    EXPECT_TRUE(names.starts_with("displays showDisplays ")) << names;
    EXPECT_NE(names.find("publishedAt room isOpening images "), std::string::npos) << names;
    EXPECT_TRUE(names.ends_with("category assetAdditional previous ")) << names;
    FEMMapping changed = Keynote::defaultMapping();
    changed.addAttributesFromArray({});
    changed.addAttributeWithProperty("title", "title");
    EXPECT_NE(order(changed).find("room isOpening title images "), std::string::npos);
}

TEST(DerivedRecords, CompareWhatTheClassAskedForCompares) {
    const auto keynote = mapped<Keynote>(kKeynote);
    const auto other = mapped<Keynote>(kKeynote);
    const auto elsewhere = mapped<Keynote>(R"({"id": 7, "title": "A & B", "status": "on", "room": "C",
                                               "category": {"title": "Nyheter"}})");
    const auto plain = mapped<QELAsset>(kKeynote);
    const auto closed = mapped<Keynote>(R"({"id": 7, "title": "A & B", "status": "on", "room": "B 14",
                                            "category": {"title": "Nyheter"}, "opening": false})");
    EXPECT_TRUE(keynote->isEqualToAsset(plain.get()));
    EXPECT_TRUE(plain->isEqualToAsset(keynote.get()));
    EXPECT_TRUE(keynote->isEqualToAsset(elsewhere.get())) << "rooms are no fields of an asset";
    EXPECT_FALSE(keynote->isEqualToAsset(mapped<QELAsset>(R"({"id": 8})").get()));
    EXPECT_FALSE(keynote->isEqualToAsset(nullptr));

    EXPECT_TRUE(keynote->isEqual(other.get()));
    EXPECT_EQ(keynote->hash(), other->hash());
    EXPECT_TRUE(keynote->isEqual(closed.get())) << "what is not listed is not compared";
    EXPECT_FALSE(keynote->isEqual(elsewhere.get()));
    EXPECT_NE(keynote->hash(), elsewhere->hash());
    EXPECT_FALSE(keynote->isEqual(plain.get())) << "of another class";
    EXPECT_FALSE(plain->isEqual(keynote.get()));

    const auto slot = mapped<Slot>(R"({"name": "n"})");
    EXPECT_TRUE(slot->isEqual(slot.get()));
    EXPECT_FALSE(slot->isEqual(mapped<Slot>(R"({"name": "n"})").get())) << "identity is inherited";
}

TEST(DerivedRecords, AreCopiedShownAndReadWithAllTheyHave) {
    const auto keynote = mapped<Keynote>(kKeynote);
    const auto copied = copy(*keynote);
    EXPECT_TRUE(copied->isEqual(keynote.get()));
    EXPECT_EQ(copied->room(), "B 14");
    EXPECT_TRUE(copied->isOpening());
    EXPECT_EQ(copied->previous(), keynote->previous());

    const PropertyDictionary values = keynote->dictionaryValue();
    EXPECT_EQ(values.size(), QELAsset::objectClass.propertyKeys().size() + 3);
    EXPECT_EQ(values.begin()->first, kQELAssetIdentifier) << "inherited ones first";
    EXPECT_EQ(values.find("room")->text(), "B 14");
    EXPECT_TRUE(keynote->description().starts_with("<Keynote assetIdentifier: 7, "));
    EXPECT_TRUE(keynote->description().ends_with("isOpening: 1>"));
    const std::string shown = jsonFromValue(Value(keynote));
    EXPECT_TRUE(shown.starts_with(R"({"assetIdentifier":7,)")) << shown;
    EXPECT_TRUE(shown.ends_with(R"("isOpening":true})")) << shown;

    std::string unread;
    FEMUnreadKeys::inObject(json(R"({"id": 1, "room": 2, "opening": 3, "other": 4, "category": {"x": 5}})"),
                            {},
                            Keynote::defaultRules,
                            [&](const FEMPath& path, RepresentationView) { unread += path.pointer() + ' '; });
    EXPECT_EQ(unread, "/other /category/x ");
}

TEST(DerivedRecords, TakeThePlaceOfWhatTheyExtend) {
    FEMMapping season = QELSeason::defaultMapping();
    season.addToManyRelationshipMapping(Lecture::defaultMapping(), "assets", "lectures");
    const auto made = FEMDeserializer::objectFromRepresentation<QELSeason>(
        json(R"({"lectures": [{"id": 1, "room": "A"}, {"id": 2}]})"), season);
    const QELAsset& first = made->assets()->front();
    ASSERT_NE(first.as<Lecture>(), nullptr);
    EXPECT_EQ(first.as<Lecture>()->room(), "A");
    EXPECT_EQ(first.as<Keynote>(), nullptr);
    EXPECT_TRUE(first.isKindOf(QELAsset::objectClass) && first.isKindOf(QELBaseModel::objectClass));
    EXPECT_EQ(mapped<QELAsset>("{}")->as<Lecture>(), nullptr);

    const Ref<Object> object = mapped<Keynote>(kKeynote);
    EXPECT_EQ(object.as<Lecture>()->room(), "B 14");
    EXPECT_EQ(object.as<QELSeason>(), nullptr);
    EXPECT_EQ(Ref<Object>().as<QELAsset>(), nullptr);
}

TEST(DerivedRecords, AreMadeByAMappingOfTheirClassAlone) {
    CountingZone zone;
    const FEMOptions options{nullptr, &zone, {}};
    const FEMMapping assets = QELAsset::defaultMapping();
    EXPECT_THROW(FEMDeserializer::objectFromRepresentation<Lecture>(json(kKeynote), assets, options),
                 MappingFault);
    EXPECT_THROW(FEMDeserializer::collectionFromRepresentation<QELSeason>(json("[{}]"), assets, options),
                 MappingFault);
    EXPECT_EQ(zone.requests(), 0U);
    try {
        FEMDeserializer::objectFromRepresentation<Lecture>(json(kKeynote), assets);
    } catch (const MappingFault& fault) {
        EXPECT_EQ(std::string_view(fault.what()), "QELAsset: the mapping does not make a Lecture");
    }
    // A mapping whose class the compiler knows may have been assigned another one.
    auto changed = Lecture::defaultMapping();
    static_cast<FEMMapping&>(changed) = QELAsset::defaultMapping();
    EXPECT_THROW(FEMDeserializer::objectFromRepresentation(json(kKeynote), changed), MappingFault);
    EXPECT_THROW(FEMDeserializer::collectionFromRepresentation(json("[{}]"), changed), MappingFault);
    const FEMMapping keynotes = Keynote::defaultMapping();
    EXPECT_EQ(FEMDeserializer::objectFromRepresentation<QELAsset>(json(kKeynote), keynotes)->title(),
              "A & B");
    EXPECT_EQ(FEMDeserializer::collectionFromRepresentation<Lecture>(json("[{\"room\": \"x\"}]"), keynotes)
                  ->front()
                  .room(),
              "x");
    // The class is known to the compiler where the mapping is its own.
    const Ref<Lecture> lecture =
        FEMDeserializer::objectFromRepresentation(json(kKeynote), Lecture::defaultMapping());
    EXPECT_EQ(lecture->room(), "B 14");
}

}  // namespace
}  // namespace QELModels::test
