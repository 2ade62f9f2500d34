// Any document, mapped by the mapper that its first byte names ('0' to '7'; without such a byte by all
// eight): an observer is told of every rule once, in order, with the outcome that a literal reading of the
// rules predicts; every property holds what that reading says; all that can be asked of a model can be asked
// of each; models outlive their document, their page and each other; and only a colour that is neither null
// nor a string is a fault.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "JSON/JSONFromValue.h"
#include "JSON/JSONReader.h"
#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Categories/UIColor+QELUtils.h"
#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELEditorialsMapper.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Mappers/QELSeasonsMapper.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "QELModels/Models/QELCategory+Utilities.h"
#include "QELModels/Models/QELEditorial+Utilities.h"
#include "QELModels/Models/QELSeason+Utilities.h"
#include "QELModels/Process/Clock.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Records/MappingFault.h"
#include "fuzz/DocumentMutator.h"
#include "fuzz/Require.h"
#include "tests/JSONSupport.h"

namespace {

using QELModels::detail::RepresentationAccess;

using namespace QELModels;

constexpr std::size_t kMaxBytes = std::size_t{1} << 16;
constexpr double kNow = 1'700'000'000;
constexpr std::array kPlayheads{0.0, -1.5, 61.9, 1e5, 1e300};

std::size_t logLines = 0;

// A zone whose memory must all come back.
struct CheckedZone {
    explicit CheckedZone(std::size_t failAt = test::CountingZone::kNever) : zone(failAt) {}
    ~CheckedZone() { require(zone.pieces() == 0, "all memory comes back to its zone"); }
    test::CountingZone zone;
};

// --- The rules, read literally ----------------------------------------------------------------------------

struct Told {
    std::string pointer;
    const Property* property;
    FEMOutcome outcome;
    const detail::RepresentationNode* node;

    bool operator==(const Told&) const = default;
};

bool isScalar(const Property& property) {
    return property.kind == PropertyKind::boolean || property.kind == PropertyKind::integer;
}

bool isColorFault(const Property& property, RepresentationView value) {
    return property.kind == PropertyKind::color && !value.isNull() && !value.isString();
}

template <class Table>
Value lookedUp(const Table& table, std::optional<std::string_view> word) {
    for (const auto& [name, value] : table)
        if (word == name) return Number(static_cast<std::int64_t>(value));
    return {};
}

// What an attribute makes of a value; null when that does not fit.
Value expectedValue(const FEMRule& rule, RepresentationView value) {
    const auto text = value.text();
    const auto number = value.number();
    switch (rule.property->kind) {
        case PropertyKind::text:
            if (!text) return {};
            return Value::text(rule.map.apply == nullptr ? std::string(*text)
                                                         : HTMLRemoval::withoutHTMLTags(*text));
        case PropertyKind::url: {
            const auto url = text ? URLView::parse(*text) : std::nullopt;
            return url ? Value::url(*url) : Value();
        }
        case PropertyKind::color: {
            const auto color = text ? QELUtils::colorFromRGBHexString(*text) : std::nullopt;
            return color ? Value(*color) : Value();
        }
        case PropertyKind::date:
            return number ? Value(dateFromSecondsSince1970(number->doubleValue())) : Value();
        case PropertyKind::number:
            return number ? Value(*number) : Value();
        case PropertyKind::boolean:
            return number ? Value(Number(number->boolValue())) : Value();
        case PropertyKind::integer:
            return rule.property->name == kQELAssetAssetType ? lookedUp(kQELAssetTypeNames, text)
                                                             : lookedUp(kQELStreamTypeNames, text);
        case PropertyKind::array:
            return value.isArray() ? Value(Representation(value)) : Value();
        case PropertyKind::dictionary:
            return value.isDictionary() ? Value(Representation(value)) : Value();
        case PropertyKind::record:
        case PropertyKind::list:
            break;
    }
    require(false, "no attribute is a record");
    return {};
}

bool isRelated(const FEMRule& rule, std::optional<RepresentationView> value) {
    return value && (rule.toMany ? value->isArray() : value->isDictionary());
}

std::string pointerTo(std::string pointer, std::string_view keyPath) {
    pointer.append("/").append(keyPath);
    std::replace(pointer.begin(), pointer.end(), '.', '/');
    return pointer;
}

/// All that an observer is told of a document, up to the first fault.
class Expectation {
public:
    std::vector<Told> told;
    bool isFault = false;
    std::size_t refusedURLs = 0;

    void record(const FEMRules& rules, RepresentationView value, const std::string& pointer) {
        // Of what is not a dictionary, that alone is told.
        if (!value.isDictionary()) return tell(pointer, nullptr, value, false);
        for (const FEMRule& rule : rules.attributes) {
            if (isFault) return;
            attribute(rule, value.valueForKeyPath(rule.keyPath), pointerTo(pointer, rule.keyPath));
        }
        for (const FEMRule& rule : rules.relationships) {
            if (isFault) return;
            const auto found = value.valueForKeyPath(rule.keyPath);
            const std::string place = pointerTo(pointer, rule.keyPath);
            tell(place, rule.property, found, isRelated(rule, found));
            if (!isRelated(rule, found)) continue;
            if (rule.toMany)
                list(rule.nestedRules(), *found, place);
            else
                record(rule.nestedRules(), *found, place);
        }
    }

    void page(const FEMRules& rules, std::optional<RepresentationView> value, const std::string& pointer) {
        if (!value || !value->isArray()) return tell(pointer, nullptr, value, false);
        list(rules, *value, pointer);
    }

private:
    void list(const FEMRules& rules, RepresentationView array, const std::string& pointer) {
        std::size_t index = 0;
        for (const RepresentationView element : array.elements()) {
            if (isFault) return;
            record(rules, element, pointer + "/" + std::to_string(index++));
        }
    }

    void attribute(const FEMRule& rule, std::optional<RepresentationView> value, const std::string& pointer) {
        const bool isSet = value && !expectedValue(rule, *value).isNull();
        tell(pointer, rule.property, value, isSet);
        if (!value || isSet || value->isNull()) return;
        isFault = isColorFault(*rule.property, *value);
        if (rule.map.apply != nullptr) told.back().outcome = FEMOutcome::refused;
        if (isFault) told.back().outcome = FEMOutcome::fault;
        if (rule.property->kind == PropertyKind::url && value->isString()) ++refusedURLs;
    }

    void tell(const std::string& pointer, const Property* property, std::optional<RepresentationView> value,
              bool isSet) {
        const FEMOutcome outcome = !value            ? FEMOutcome::missing
                                   : value->isNull() ? FEMOutcome::null
                                   : isSet           ? FEMOutcome::set
                                                     : FEMOutcome::wrongKind;
        told.push_back({pointer, property, outcome, value ? RepresentationAccess::node(*value) : nullptr});
    }
};

class Witness : public FEMObserver {
public:
    std::vector<Told> told;

    void ruleApplied(const FEMEvent& event) override {
        told.push_back({event.path.pointer(),
                        event.property,
                        event.outcome,
                        event.value ? RepresentationAccess::node(*event.value) : nullptr});
    }
};

void checkFilled(const FEMRules& rules, RepresentationView value, const Object& record) {
    require(record.isa() == *rules.objectClass, "a record is of its rules' class");
    for (const FEMRule& rule : rules.attributes) {
        const auto found = value.valueForKeyPath(rule.keyPath);
        const Value expected = found ? expectedValue(rule, *found) : Value();
        const Value empty = isScalar(*rule.property) ? Value(Number(0)) : Value();
        require(rule.property->value(record) == (expected.isNull() ? empty : expected), rule.property->name);
    }
    for (const FEMRule& rule : rules.relationships) {
        const auto found = value.valueForKeyPath(rule.keyPath);
        const Value actual = rule.property->value(record);
        if (!isRelated(rule, found)) {
            require(actual.isNull(), rule.property->name);
        } else if (!rule.toMany) {
            require(actual.record() != nullptr, rule.property->name);
            checkFilled(rule.nestedRules(), *found, *actual.record());
        } else {
            require(actual.list() != nullptr && actual.list()->size() == found->size(), rule.property->name);
            std::size_t index = 0;
            for (const RepresentationView element : found->elements())
                checkFilled(rule.nestedRules(), element, *actual.list()->objects()[index++]);
        }
    }
}

// --- What can be asked of a model -------------------------------------------------------------------------

const QELBaseModel& model(const Object& object) {
    return static_cast<const QELBaseModel&>(object);
}

std::string jsonOf(const QELBaseModel& record) {
    return jsonFromValue(Value(&record));
}

template <class Visitor>
void forEachNested(const Value& value, const Visitor& visit) {
    if (value.record() != nullptr) visit(model(*value.record()));
    if (value.list() == nullptr) return;
    for (const Object* element : value.list()->objects())
        visit(model(*element));
}

/// A record and all that is in it, owned.
void collect(const QELBaseModel& record, std::vector<Ref<QELBaseModel>>& all) {
    all.emplace_back(&record);
    for (const auto& [name, value] : record.dictionaryValue())
        forEachNested(value, [&](const QELBaseModel& inner) { collect(inner, all); });
}

bool comparesByIdentity(const QELBaseModel& record) {
    const ComparedFields& equality = record.isa().equality();
    return !equality.isDeclared || equality.isIdentityFirst;
}

/// Whether two records of the same content are equal: a record that is its identity, and all that compare it,
/// are equal to themselves alone.
bool comparesByValue(const QELBaseModel& record) {
    bool byValue = !comparesByIdentity(record);
    for (const Property* property : record.isa().equality().properties)
        forEachNested(property->value(record),
                      [&](const QELBaseModel& inner) { byValue = byValue && comparesByValue(inner); });
    return byValue;
}

void checkText(double seconds) {
    require(!NSStringRepresentingTimeLeftUntilLive(seconds).empty(), "a countdown is text");
    require(!NSStringFromMovieDuration(seconds).empty(), "a duration is text");
    require(!NSStringWithNamedSeparatorsFromMovieDuration(seconds).empty(),
            "a duration is text with letters");
}

void checkImage(std::optional<URLView> image) {
    if (!image) return;
    const auto sized = QELKavoHelper::getURLWithSize(*image, {300, 169});
    require(sized.text().starts_with(image->text()), "an image has a URL in every size");
}

void checkFacts(const QELAsset& asset) {
    const std::string link = shareURLString(asset);
    require(link.starts_with(kQELSiteBaseURL) && URLView::parse(link), "a share link is a URL");
    require(URLView::parse(commentsShareURLString(asset)).has_value(), "a comments link is a URL");
    for (const double playhead : kPlayheads) {
        const auto url = shareURLFromPlayhead(asset, playhead);
        require(url && url->text().starts_with(link + "/"), "a link to a playhead is a URL");
    }
    checkText(durationInSeconds(asset));
    checkText(secondsUntilLive(asset));

    const auto* additional = asset.assetAdditional();
    const auto* chapters = featuredChaptersOrDefaultChapters(asset);
    require(chapters == nullptr || chapters == additional->chapters() ||
                chapters == additional->featuredChapters(),
            "chapters are the asset's own");
    require(!hasLiveStreamType(asset) || remotePlaybackAllowed(asset), "a live stream plays remotely");
    require(isInvalidObject(asset) || (additional != nullptr && additional->cuePoints() != nullptr),
            "a valid asset has cue points");
    // Both have their tables of cases elsewhere; here they must answer at all, with whatever is missing.
    static_cast<void>(isLive(asset) || wasLive(asset) || secondsUntilLive(asset, std::nullopt) > 0);
    static_cast<void>(isLastAssetInCategory(asset) || showAds(asset) || isSeries(asset));
    static_cast<void>(showCategory(asset) || categoryShowComments(asset) || settingsShowComments(asset));
    static_cast<void>(showPlayerLogo(asset) || isSecured(asset));
}

void checkFacts(const QELAssetAdditional& additional) {
    const auto sorted = sortedAdCuePoints(additional);
    const auto* points = additional.cuePoints();
    require(sorted->size() == (points == nullptr ? 0 : points->size()), "no cue point is lost");
    const auto precedes = [](const QELAssetCuePoint& a, const QELAssetCuePoint& b) {
        return b.timeline() && (!a.timeline() || *a.timeline() < *b.timeline());
    };
    require(std::is_sorted(sorted->begin(), sorted->end(), precedes), "cue points are sorted");
    if (points != nullptr)
        require(std::is_permutation(sorted->objects().begin(),
                                    sorted->objects().end(),
                                    points->objects().begin(),
                                    points->objects().end()),
                "sorted cue points are the same records");
}

void checkFacts(const QELAssetImages& images) {
    for (const auto& image : {images.main(), images.front(), images.featured(), images.snapshots()})
        checkImage(image);
}

void checkFacts(const QELCategory& category) {
    require(editorialKey(category).starts_with("category-"), "a key of a category");
    require(parentCategoryEditorialKey(category).starts_with("category-"), "a key of a parent");
    require(allowAllDevices(category) || category.additional() != nullptr, "devices are allowed");
}

void checkFacts(const QELEditorial& editorial) {
    const auto key = editorial.key();
    require((key && key->find("category-") != key->npos) || categoryIdentifier(editorial) == -1,
            "a key that names no category");
}

void checkFacts(const QELSeason& season) {
    require(nextVideoForVideo(season, nullptr) == nullptr, "no episode follows none");
    if (season.assets() == nullptr) return;
    const auto episodes = season.assets()->objects();
    for (const QELAsset& video : *season.assets()) {
        const QELAsset* next = nextVideoForVideo(season, &video);
        require(next == nullptr || std::find(episodes.begin(), episodes.end(), next) != episodes.end(),
                "the next episode is the season's own");
    }
}

template <class... Models>
void checkFactsOf(const QELBaseModel& record) {
    const auto as = [&]<class M>(const M*) {
        if (record.isa() == M::objectClass) checkFacts(static_cast<const M&>(record));
    };
    (as(static_cast<const Models*>(nullptr)), ...);
}

void checkCopy(const QELBaseModel& record, Zone& zone, std::vector<Ref<QELBaseModel>>& kept) {
    const auto properties = record.isa().properties();
    const bool isCopyable = std::none_of(
        properties.begin(), properties.end(), [](const Property& property) { return property.isComputed(); });
    try {
        const Ref<QELBaseModel> copy = record.copyWithZone(&zone);
        kept.push_back(copy->copyWithZone(nullptr));
        require(isCopyable, "a record with a computed property has no copy");
        require(copy->isEqual(&record) != comparesByIdentity(record), "a copy is equal unless by identity");
        const PropertyDictionary values = record.dictionaryValue();
        const PropertyDictionary copied = copy->dictionaryValue();
        require(std::equal(copied.begin(), copied.end(), values.begin(), values.end()),
                "a copy holds what the record holds");
    } catch (const MappingFault& fault) {
        require(!isCopyable && !fault.hasPointer(), "a copy fails only for a property that cannot be set");
    }
}

void checkModel(const QELBaseModel& record, const QELBaseModel& twin) {
    require(record.isEqual(&record) && !record.isEqual(nullptr), "a record is equal to itself, not to null");
    require(record.isEqual(&twin) == comparesByValue(record), "equal content is equal unless by identity");
    require(!record.isEqual(&twin) || record.hash() == twin.hash(), "equal records hash alike");
    require(record.hash() == record.hash(), "a hash stays");
    require(record.description().starts_with("<" + std::string(record.isa().name())), "a description");
    const PropertyDictionary values = record.dictionaryValue();
    require(std::equal(values.begin(),
                       values.end(),
                       record.isa().propertyKeys().begin(),
                       record.isa().propertyKeys().end(),
                       [](const auto& entry, std::string_view key) { return entry.first == key; }),
            "a dictionary has the declared keys in order");
    checkFactsOf<QELAsset, QELAssetAdditional, QELAssetImages, QELCategory, QELEditorial, QELSeason>(record);
}

// --- One mapping ------------------------------------------------------------------------------------------

/// What a mapper makes of a document: its roots, or a fault.
struct Mapped {
    std::vector<Ref<QELBaseModel>> roots;
    std::optional<std::string> fault;
};

template <class Model>
void addRoots(const Ref<Model>& record, Mapped& mapped) {
    mapped.roots.push_back(record);
}
template <class Model>
void addRoots(const Ref<List<Model>>& list, Mapped& mapped) {
    for (const Model& record : *list)
        mapped.roots.emplace_back(&record);
}

template <class Mapper>
Mapped mapped(RepresentationView document, const FEMOptions& options) {
    Mapped result;
    Error error;
    try {
        addRoots(Mapper().mappedResponseFromJSONObject(document, &error, options), result);
    } catch (const MappingFault& fault) {
        result.fault = fault.pointer();
    }
    require(error == Error(), "a mapper writes no error");
    return result;
}

// The value at a JSON Pointer none of whose keys needs an escape.
std::optional<RepresentationView> valueAt(RepresentationView value, std::string_view pointer) {
    std::optional<RepresentationView> found = value;
    while (found && !pointer.empty()) {
        const std::size_t end = std::min(pointer.find('/', 1), pointer.size());
        const std::string token(pointer.substr(1, end - 1));
        pointer.remove_prefix(end);
        if (!found->isArray()) {
            found = found->valueForKey(token);
            continue;
        }
        const std::size_t index = std::strtoul(token.c_str(), nullptr, 10);
        auto element = found->elements().begin();
        for (std::size_t i = 0; i < std::min(index, found->size()); ++i)
            ++element;
        found = index < found->size() ? std::optional(*element) : std::nullopt;
    }
    return found;
}

void checkFault(RepresentationView document, const std::string& pointer, const Told& last) {
    const auto value = valueAt(document, pointer);
    require(value && !value->isNull() && !value->isString(), "a fault is a value, neither null nor a string");
    require(last.pointer == pointer && last.node == RepresentationAccess::node(*value),
            "a fault ends the mapping");
}

template <class Mapper>
void checkFailingAllocation(RepresentationView document, std::size_t failAt) {
    CheckedZone checked(failAt);
    try {
        mapped<Mapper>(document, {.zone = &checked.zone});
    } catch (const std::bad_alloc&) {
        // All memory must have come back: the end of the zone checks that.
    }
}

/// All checks for one mapper; `keyPath` is where it finds its page, empty for a mapper of one record.
template <class Mapper, class Model>
void check(std::string_view bytes, std::string_view keyPath) {
    static JSONReader reader;
    std::optional<Representation> document = reader.read(bytes);
    if (!document) return;

    const FEMMapping mapping = Model::defaultMapping();
    const FEMRules& rules = mapping.rules();
    Expectation expected;
    std::vector<RepresentationView> sources;
    if (keyPath.empty()) {
        sources.push_back(*document);
        expected.record(rules, *document, {});
    } else {
        const auto page = document->view().valueForKeyPath(keyPath);
        if (page) sources.assign(page->elements().begin(), page->elements().end());
        expected.page(rules, page, pointerTo({}, keyPath));
    }

    CheckedZone checked;
    Witness witness;
    logLines = 0;
    Mapped first = mapped<Mapper>(*document, {.observer = &witness});
    require(logLines == expected.refusedURLs,
            "a line is logged for each text that is not a URL, and for nothing else");
    require(witness.told == expected.told, "the observer is told of each rule as the rules say");
    require(first.fault.has_value() == expected.isFault, "nothing but a colour is a fault");
    Mapped second = mapped<Mapper>(*document, {.zone = &checked.zone});
    require(first.fault == second.fault, "an observer changes no fault");
    checkFailingAllocation<Mapper>(*document, bytes.size() % 16);
    if (first.fault) return checkFault(*document, *first.fault, witness.told.back());

    require(first.roots.size() == sources.size() && second.roots.size() == sources.size(),
            "a root an element");
    std::vector<Ref<QELBaseModel>> records;
    std::vector<Ref<QELBaseModel>> twins;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        checkFilled(rules, sources[i], *first.roots[i]);
        collect(*first.roots[i], records);
        collect(*second.roots[i], twins);
    }
    require(records.size() == twins.size(), "an observer changes no result");

    // From here on each record has only itself to live on.
    document.reset();
    first = second = {};
    std::vector<Ref<QELBaseModel>> copies;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::string json = jsonOf(*records[i]);
        require(json == jsonOf(*twins[i]), "an observer changes no content");
        checkModel(*records[i], *twins[i]);
        checkCopy(*twins[i], checked.zone, copies);
        records[i] = nullptr;
        twins[i] = nullptr;
    }
    for (const auto& copy : copies)
        require(!jsonOf(*copy).empty(), "a copy outlives the records");
}

using Check = void (*)(std::string_view bytes, std::string_view keyPath);
constexpr std::array<std::pair<Check, std::string_view>, 8> kChecks{{
    {check<QELAssetMapper, QELAsset>, {}},
    {check<QELAssetsMapper, QELAsset>, QELAssetsMapper::kDefaultAssetsKeyPath},
    {check<QELCategoryMapper, QELCategory>, {}},
    {check<QELCategoriesMapper, QELCategory>, QELCategoriesMapper::kKeyPath},
    {check<QELEditorialMapper, QELEditorial>, {}},
    {check<QELEditorialsMapper, QELEditorial>, QELEditorialsMapper::kKeyPath},
    {check<QELSeasonMapper, QELSeason>, {}},
    {check<QELSeasonsMapper, QELSeason>, QELSeasonsMapper::kKeyPath},
}};

// Where the document starts: after the byte that names a mapper, if there is one.
std::size_t startOfDocument(std::string_view bytes) {
    return !bytes.empty() && bytes[0] >= '0' && bytes[0] < static_cast<char>('0' + kChecks.size()) ? 1 : 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Log::setSink([](std::string_view) { ++logLines; });
    Clock::setSource([] { return dateFromSecondsSince1970(kNow); });
    const std::string_view bytes(reinterpret_cast<const char*>(data), std::min(size, kMaxBytes));
    const std::size_t start = startOfDocument(bytes);
    if (start != 0) {
        const auto& [check, keyPath] = kChecks[static_cast<std::size_t>(bytes[0] - '0')];
        check(bytes.substr(start), keyPath);
        return 0;
    }
    for (const auto& [check, keyPath] : kChecks)
        check(bytes, keyPath);
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t start = startOfDocument(input);
    const std::string output = DocumentMutator(seed).mutated(input.substr(start), maxSize - start);
    std::copy(output.begin(), output.end(), data + start);
    return start + output.size();
}
