// All records keep to one contract: the properties, key paths, orders, equality and hash of each are written
// here once more, and one harness walks them all. A class without a row fails.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/KeyPath.h"
#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

using Words = std::vector<std::string>;
using IsEqualTo = bool (*)(const Object&, const Object*);

struct Row {
    const ObjectClass& isa;
    FEMMapping (*defaultMapping)();
    IsEqualTo isEqualTo;  // null: none of its own
    Words declared, attributes, relationships, compared;

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.isa.name(); }
};

Words nextWords(std::istream& text) {
    Words words;
    for (std::string word; text >> word && word != "|";)
        words.push_back(word);
    return words;
}

template <class Model, auto isEqualTo = nullptr>
Row row(const std::string& contract) {
    std::istringstream text(contract);
    Row row{
        Model::objectClass, []() -> FEMMapping { return Model::defaultMapping(); }, nullptr, {}, {}, {}, {}};
    for (Words* words : {&row.declared, &row.attributes, &row.relationships, &row.compared})
        *words = nextWords(text);
    if constexpr (!std::is_null_pointer_v<decltype(isEqualTo)>)
        row.isEqualTo = [](const Object& a, const Object* b) {
            return (static_cast<const Model&>(a).*isEqualTo)(static_cast<const Model*>(b));
        };
    return row;
}

// A row in four parts:
// - The properties in the order of declaration, `name:kind`; of a record its class, of a list `Class*`.
// - The attributes in the order of the rules: `=key path` where it is not the name, `!Transformer` asked of
//   the registry at each value, `?Transformer` asked once, `%` through a table.
// - The relationships likewise, lists with `*`.
// - What equality and hash go through, in order: `all` as declared, `all but` some; `identity`.
// clang-format off
const std::vector<Row> kRecords{
    row<QELAsset, &QELAsset::isEqualToAsset>(R"(
        assetIdentifier:number title:text titleFront:text assetDescription:text
        assetDescriptionFront:text displays:number showDisplays:boolean createdAt:date updatedAt:date
        publishedAt:date flightTimes:QELFlightTimes duration:number assetType:integer
        streamType:integer status:text series:QELAssetSeries
        streamConfiguration:QELStreamConfiguration articleUrl:url category:QELCategory
        images:QELAssetImages streamUrls:QELAssetStreamUrls assetAdditional:QELAssetAdditional
        | displays showDisplays duration status title!HTML titleFront!HTML assetType% streamType%
        articleUrl!NSURL assetIdentifier=id assetDescription=description!HTML
        assetDescriptionFront=descriptionFront!HTML createdAt=created!Timestamp
        updatedAt=updated!Timestamp publishedAt=published!Timestamp
        | images streamConfiguration flightTimes streamUrls series category assetAdditional=additional
        | all but displays showDisplays createdAt updatedAt publishedAt)"),
    row<QELAssetAdditional, &QELAssetAdditional::isEqualToAdditional>(R"(
        settings:QELAssetAdditionalSettings barrels:array featuredChapters:QELAssetChapter*
        chapters:QELAssetChapter* cuePoints:QELAssetCuePoint* sourceFiles:array
        externalCategoryIdentifier:number externalIdentifier:text nextAsset:QELAssetLead
        metadata:dictionary access:dictionary subtitles:QELAssetAdditionalSubtitle*
        imageCaption:dictionary url:text
        | sourceFiles barrels imageCaption url access metadata
        externalCategoryIdentifier=externalCategoryId externalIdentifier=externalId
        | settings chapters* cuePoints* featuredChapters* subtitles* nextAsset | all)"),
    row<QELAssetAdditionalSettings, &QELAssetAdditionalSettings::isEqualToSettings>(R"(
        showAds:boolean showEmbed:boolean showComments:boolean tonoRegistered:boolean createdBy:text
        lastEditedBy:text source:number notes:text showInNewest:boolean loopGeneratorEnabled:boolean
        escenicId:text playhead:number startIndexPoint:number ageLimit:number
        | lastEditedBy showEmbed escenicId showInNewest source startIndexPoint notes showAds createdBy
        showComments loopGeneratorEnabled playhead tonoRegistered ageLimit | | all)"),
    row<QELAssetAdditionalSubtitle, &QELAssetAdditionalSubtitle::isEqualToSubtitle>(R"(
        language:text url:url isDefault:boolean | language url?NSURL isDefault=default | | all)"),
    row<QELAssetChapter, &QELAssetChapter::isEqualToChapter>(R"(
        title:text chapterDescription:text timeline:number featured:boolean
        | timeline featured title?HTML chapterDescription=description?HTML | | identity all)"),
    row<QELAssetCuePoint>("timeline:number | timeline | | identity"),
    row<QELAssetLead>("assetLeadIdentifier:number | assetLeadIdentifier=id | | identity"),
    row<QELAssetSeries>(R"(
        seasonNumber:number episodeNumber:number | episodeNumber seasonNumber | | identity)"),
    row<QELAssetImages>(R"(
        main:url front:url featured:url snapshots:url
        | featured?NSURL front?NSURL main?NSURL snapshots?NSURL | | identity)"),
    row<QELAssetStreamUrls, &QELAssetStreamUrls::isEqualToUrls>(R"(
        hls:url hds:url mp4:url | hds?NSURL hls?NSURL mp4?NSURL | | all)"),
    row<QELStreamConfiguration, &QELStreamConfiguration::isEqualToConfiguration>(R"(
        properties:array configuration:integer | properties | | properties)"),
    row<QELFlightTimes>(R"(
        flightStart:date flightEnd:date | flightEnd=end?Timestamp flightStart=start?Timestamp |
        | identity)"),
    row<QELCategory, &QELCategory::isEqualToCategory>(R"(
        categoryIdentifier:number title:text parentIdentifier:number showCategory:boolean
        isSeries:boolean order:number ageLimit:number stats:text lastAsset:QELCategoryLastAsset
        additional:QELCategoryAdditional
        | parentIdentifier=parentId categoryIdentifier=id order isSeries stats showCategory ageLimit
        title!HTML | lastAsset additional | all)"),
    row<QELCategoryLastAsset, &QELCategoryLastAsset::isEqualToAsset>(R"(
        lastAssetIdentifier:number | lastAssetIdentifier=id | | all)"),
    row<QELCategoryAdditional, &QELCategoryAdditional::isEqualToAdditional>(R"(
        categoryDescription:text image:url isImageUploaded:boolean logo:url assets:array
        background:url backgroundColor:color showPlayerLogo:boolean playerLogoImage:text
        showEndPoster:boolean showComments:boolean allowAllDevices:boolean
        playerBranding:QELCategoryAdditionalPlayerBranding adCampaignIdentifier:text
        autoPlayNextAsset:boolean notificationMailEnabled:boolean
        | adCampaignIdentifier=adCampaignId categoryDescription=description?HTML
        backgroundColor?UIColor image?NSURL logo?NSURL background?NSURL isImageUploaded
        playerLogoImage showEndPoster showComments allowAllDevices autoPlayNextAsset
        notificationMailEnabled | playerBranding | all)"),
    row<QELCategoryAdditionalPlayerBranding, &QELCategoryAdditionalPlayerBranding::isEqualToBranding>(R"(
        playerBrandingIdentifier:number playerBackground:url link:url
        | playerBrandingIdentifier=id playerBackground?NSURL link?NSURL | | all)"),
    row<QELEditorial, &QELEditorial::isEqualToEditorial>(R"(
        key:text assetsIdentifiers:array assets:QELAsset* | key assetsIdentifiers=assetsIds
        | assets=_embedded.assets* | all)"),
    row<QELSeason, &QELSeason::isEqualToSeason>(R"(
        title:text seasonNumber:number assets:QELAsset* | seasonNumber title?HTML | assets* | all)"),
};
// clang-format on

const Row& rowOf(const ObjectClass& isa) {
    const auto found =
        std::find_if(kRecords.begin(), kRecords.end(), [&](const Row& row) { return row.isa == isa; });
    if (found == kRecords.end()) throw std::out_of_range("no row of " + std::string(isa.name()));
    return *found;
}

// The names that a row's equality and hash go through, after "identity" where it is asked first.
Words comparedBy(const Row& row) {
    const auto all = std::find(row.compared.begin(), row.compared.end(), "all");
    Words names(row.compared.begin(), all);
    if (all == row.compared.end()) return names;
    for (const std::string_view name : row.isa.propertyKeys())
        if (std::find(all, row.compared.end(), name) == row.compared.end()) names.emplace_back(name);
    return names;
}

bool hasOwnEquality(const Row& row) {
    return row.compared.front() != "identity";
}

// Documents: a member for every rule, each with a value of its own.

// A value under a key path.
std::string member(std::string_view keyPath, const std::string& value) {
    const KeyPath keys(keyPath);
    const std::string key = '"' + std::string(keys.first) + "\": ";
    return key + (keys.isLast() ? value : '{' + member(keys.rest, value) + '}');
}

using Members = std::map<std::string_view, std::string>;  // property -> member

std::string document(const Members& members) {
    std::string text = "{";
    for (const auto& [property, member] : members)
        text += (text.size() > 1 ? ", " : "") + member;
    return text + '}';
}

// A value for a rule, and what the property shows then; different for each `n`, and not the empty value if it
// is odd.
std::pair<std::string, std::string> valueFor(const Property& property, bool throughRule, int n) {
    const std::string number = std::to_string(n);
    switch (property.kind) {
        case PropertyKind::number:
            return {number, number};
        case PropertyKind::text:
            if (throughRule) return {"\"<i>t&lt;" + number + "</i>\"", "\"t<" + number + '"'};
            return {"\"<i>" + number + "\"", "\"<i>" + number + '"'};
        case PropertyKind::url:
            return {"\"https://u.example/" + number + '"', "<https://u.example/" + number + '>'};
        case PropertyKind::date:
            return {number + ".5", '@' + number + ".5"};
        case PropertyKind::color:
            return {"\"#000" + std::to_string(n % 10) + "ff\"", "#(0 " + std::to_string(n % 10) + " 255 1)"};
        case PropertyKind::array:
            return {"[" + number + ", \"encrypted\"]", "[" + number + ",\"encrypted\"]"};
        case PropertyKind::dictionary:
            return {"{\"k\": " + number + '}', "{\"k\":" + number + '}'};
        case PropertyKind::boolean:
            return {n % 2 == 1 ? "true" : "0", n % 2 == 1 ? "true" : "false"};
        case PropertyKind::integer:
            if (property.name == "assetType")
                return n % 2 == 1 ? std::pair(R"("audio")", "1") : std::pair(R"("video")", "0");
            return n % 2 == 1 ? std::pair(R"("live")", "2") : std::pair(R"("wasLive")", "1");
        default:
            return {};
    }
}

Members membersFor(const FEMRules& rules, int& n, bool onlyOfComparable);

std::string recordFor(const FEMRules& rules, int& n, bool onlyOfComparable) {
    return document(membersFor(rules, n, onlyOfComparable));
}

// With `onlyOfComparable`, no record in it compares by identity, so that two mappings of it are equal.
Members membersFor(const FEMRules& rules, int& n, bool onlyOfComparable) {
    Members members;
    for (const FEMRule& rule : rules.attributes) {
        const auto value = valueFor(*rule.property, rule.map.apply != nullptr, n);
        members[rule.property->name] = member(rule.keyPath, value.first);
        n += 2;
    }
    for (const FEMRule& rule : rules.relationships) {
        if (onlyOfComparable && !hasOwnEquality(rowOf(*rule.property->target))) continue;
        std::string value = recordFor(rule.nestedRules(), n, onlyOfComparable);
        if (rule.toMany)
            value = '[' + value + ", " + recordFor(rule.nestedRules(), n, onlyOfComparable) + ']';
        members[rule.property->name] = member(rule.keyPath, value);
    }
    return members;
}

// The default mapping, and a rule for each property that has none but can be set.
FEMMapping fullMapping(const Row& row) {
    FEMMapping mapping = row.defaultMapping();
    std::set<const Property*> filled;
    for (const auto rules : {mapping.rules().attributes, mapping.rules().relationships})
        for (const FEMRule& rule : rules)
            filled.insert(rule.property);
    for (const Property& property : row.isa.properties())
        if (!property.isComputed() && !filled.contains(&property))
            mapping.addAttributeWithProperty(property.name, property.name);
    return mapping;
}

Ref<QELBaseModel> record(const FEMMapping& mapping, const std::string& text) {
    auto object = FEMDeserializer::objectFromRepresentation(json(text), mapping);
    return Ref<QELBaseModel>::adopt(static_cast<const QELBaseModel*>(object.release()));
}

// The promises.

TEST(Records, HaveARowEach) {
    std::set<std::string> declared;
    for (const auto& file : std::filesystem::directory_iterator(QELMODELS_MODELS_DIR)) {
        if (file.path().extension() != ".h") continue;
        std::ifstream header(file.path());
        for (std::string line; std::getline(header, line);) {
            constexpr std::string_view kBefore = "static const ObjectClassOf<";
            const std::size_t at = line.find(kBefore);
            if (at == line.npos) continue;
            const std::size_t name = at + kBefore.size();
            declared.insert(line.substr(name, line.find('>') - name));
        }
    }
    declared.erase("QELBaseModel");
    std::set<std::string> inRows;
    for (const Row& row : kRecords)
        inRows.emplace(row.isa.name());
    EXPECT_EQ(inRows, declared);
}

class EveryRecord : public testing::TestWithParam<Row> {
protected:
    const Row& row = GetParam();
    FEMMapping mapping = fullMapping(row);
    int n = 1001;
};
INSTANTIATE_TEST_SUITE_P(Records, EveryRecord, testing::ValuesIn(kRecords),
                         [](const auto& test) { return std::string(test.param.isa.name()); });

TEST_P(EveryRecord, DeclaresItsPropertiesInOrder) {
    std::istringstream text("number text url date color array dictionary record list boolean integer");
    const Words kinds = nextWords(text);
    Words declared;
    Words names;
    for (const Property& property : row.isa.properties()) {
        const bool isNested = property.target != nullptr;
        names.emplace_back(property.name);
        declared.push_back(names.back() + ':');
        declared.back() += isNested ? property.target->name()
                                    : std::string_view(kinds.at(static_cast<std::size_t>(property.kind)));
        if (property.kind == PropertyKind::list) declared.back() += '*';
    }
    EXPECT_EQ(declared, row.declared);
    EXPECT_EQ(Words(row.isa.propertyKeys().begin(), row.isa.propertyKeys().end()), names);
    EXPECT_EQ(row.isa.superclass(), &QELBaseModel::objectClass);
}

TEST_P(EveryRecord, IsMappedByItsRulesInOrder) {
    const FEMMapping byDefault = row.defaultMapping();
    EXPECT_EQ(byDefault.objectClass(), row.isa);
    const auto written = [](const auto& rules) {
        Words words;
        for (const FEMRule& rule : rules) {
            std::string& text = words.emplace_back(rule.property->name);
            if (rule.keyPath != rule.property->name) text += '=' + std::string(rule.keyPath);
            const bool isCaptured = rule.map.apply == &detail::TransformerRules::capturedOfLibrary;
            if (isCaptured || rule.map.apply == &detail::TransformerRules::fetchedOfLibrary) {
                const std::string name(
                    detail::kLibraryTransformers.at(rule.map.size).name);  // QEL...Transformer
                text += (isCaptured ? '?' : '!') + name.substr(3, name.rfind("Transformer") - 3);
            } else if (rule.map.apply != nullptr) {
                text += '%';
            }
            if (rule.toMany) text += '*';
        }
        return words;
    };
    EXPECT_FALSE(byDefault.rules().table.slots.empty()) << "keys are found in one step";
    EXPECT_EQ(written(byDefault.rules().attributes), row.attributes);
    EXPECT_EQ(written(byDefault.rules().relationships), row.relationships);
}

TEST_P(EveryRecord, IsEmptyWithoutADocument) {
    for (const char* text : {"{}", "[]", "null", R"({"unknown": {"id": 1}})"}) {
        const auto values = record(mapping, text)->dictionaryValue();
        ASSERT_EQ(values.size(), row.declared.size());
        for (const auto& [name, value] : values) {
            const PropertyKind kind = row.isa.property(name)->kind;
            const std::string expected = name == "configuration"         ? "16"
                                         : kind == PropertyKind::boolean ? "false"
                                         : kind == PropertyKind::integer ? "0"
                                                                         : "null";
            EXPECT_EQ(show(value), expected) << name << " of " << text;
        }
    }
}

TEST_P(EveryRecord, IsFilledRuleByRule) {
    const Members members = membersFor(mapping.rules(), n, false);
    const auto full = record(mapping, document(members));
    // Alone in its document, a rule fills its property and no other; a null in its place fills nothing.
    for (const auto& [filled, text] : members) {
        const auto one = record(mapping, '{' + text + '}');
        for (const auto& [name, value] : one->dictionaryValue()) {
            if (row.isa.property(name)->isComputed()) continue;
            const bool isEmpty = show(value) == "null" || show(value) == "false" || show(value) == "0";
            EXPECT_EQ(isEmpty, name != filled) << text << " made " << name << ' ' << show(value);
            EXPECT_TRUE(name != filled || show(value) == showAt(*full, name)) << name << ' ' << show(value);
        }
    }
    // In the whole document each property has the value that was meant for it.
    n = 1001;
    for (const FEMRule& rule : mapping.rules().attributes) {
        EXPECT_EQ(showAt(*full, rule.property->name),
                  valueFor(*rule.property, rule.map.apply != nullptr, n).second)
            << rule.property->name;
        n += 2;
    }
    for (const FEMRule& rule : mapping.rules().relationships)
        EXPECT_EQ(showAt(*full, rule.property->name),
                  rule.toMany ? "[2]" : std::string(rule.property->target->name()));
}

TEST_P(EveryRecord, SharesEverythingWithItsCopies) {
    const auto full = record(mapping, recordFor(mapping.rules(), n, false));
    if (row.isa == QELStreamConfiguration::objectClass) {
        EXPECT_THROW(full->copyWithZone(nullptr), MappingFault);
        return;
    }
    const auto once = full->copyWithZone(nullptr);
    const auto twice = once->copyWithZone(nullptr);
    EXPECT_NE(once.get(), full.get());
    EXPECT_EQ(once->isa(), row.isa);
    for (const auto& [name, value] : full->dictionaryValue()) {
        const Value copied = row.isa.property(name)->value(*twice);
        EXPECT_EQ(show(copied), show(value)) << name;
        EXPECT_EQ(copied.record(), value.record()) << name;
        EXPECT_EQ(copied.list(), value.list()) << name;
        EXPECT_TRUE(!value.text() || copied.text()->data() == value.text()->data()) << name << " was copied";
    }
    EXPECT_EQ(full->isEqual(once.get()), hasOwnEquality(row));
    EXPECT_EQ(twice->isEqual(full.get()), hasOwnEquality(row));
    EXPECT_EQ(full->hash() == twice->hash(), hasOwnEquality(row));
}

TEST_P(EveryRecord, ComparesFieldByField) {
    const Members members = membersFor(mapping.rules(), n, true);
    const auto one = record(mapping, document(members));
    const auto same = record(mapping, document(members));
    EXPECT_TRUE(one->isEqual(one.get()));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_EQ(one->isEqual(same.get()), hasOwnEquality(row));
    EXPECT_EQ(one->hash() == same->hash(), hasOwnEquality(row));
    if (row.isEqualTo != nullptr) {
        EXPECT_TRUE(row.isEqualTo(*one, one.get()));
        EXPECT_EQ(row.isEqualTo(*one, same.get()), hasOwnEquality(row));
        EXPECT_FALSE(row.isEqualTo(*one, nullptr));
    }
    if (!hasOwnEquality(row)) return;

    const Words compared = comparedBy(row);
    int other = 5000;
    for (const auto& [name, text] : membersFor(mapping.rules(), other, false)) {
        const bool counts = std::find(compared.begin(), compared.end(), name) != compared.end();
        Members changed = members;
        changed[name] = text;
        Members missing = members;
        // Records that compare by identity are not equal even to those of the same document.
        const bool isByIdentity = missing.erase(name) == 0;
        for (const auto& [left, right] :
             {std::pair(members, changed),
              isByIdentity ? std::pair(changed, changed) : std::pair(members, missing)}) {
            const auto a = record(mapping, document(left));
            const auto b = record(mapping, document(right));
            EXPECT_EQ(a->isEqual(b.get()), !counts) << name << ' ' << document(left) << document(right);
            EXPECT_EQ(b->isEqual(a.get()), !counts) << name;
            EXPECT_TRUE(counts || a->hash() == b->hash()) << name;
        }
    }
}

TEST_P(EveryRecord, HashesByTheFoldOfItsFields) {
    const auto hashOf = [](const Value& value) -> std::uint64_t {
        if (value.isNull()) return 0;
        if (value.number())
            return value.number()->isBoolean() ? value.number()->boolValue() : value.number()->hash();
        if (value.text()) return detail::hashOfText(*value.text());
        if (value.url()) return detail::hashOfText(value.url()->text());
        if (value.color()) return value.color()->hash();
        if (value.representation()) return value.representation()->size();
        return value.record() != nullptr ? value.record()->hash() : value.list()->size();
    };
    for (const std::string& text : {recordFor(mapping.rules(), n, false), std::string("{}")}) {
        const auto one = record(mapping, text);
        std::uint64_t h = 0;
        for (const std::string& name : comparedBy(row)) {
            const bool isEnumeration = name == "assetType" || name == "streamType";
            const std::uint64_t x =
                name == "identity" ? detail::hashOfWord(reinterpret_cast<std::uintptr_t>(one.get()))
                : isEnumeration    ? static_cast<std::uint64_t>(at(*one, name).number()->int64Value())
                                   : hashOf(at(*one, name));
            h = h * 31 + x;
        }
        EXPECT_EQ(one->hash(), h);
    }
}

}  // namespace
}  // namespace QELModels::test
