#include <JSON/JSONFromValue.h>
#include <JSON/JSONReader.h>
#include <QELModels/QELModels.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

using namespace QELModels;

// --- What a header would hold: the records, each a list of its properties ---------------------------------

enum class Language : std::int64_t { other, norwegian, english };

/// Somebody who speaks in a talk. Equal to itself alone.
class Speaker : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Text> name;  ///< plain text

    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }
    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

/// One recorded talk. Talks are equal when their identifiers and titles are.
class Talk : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> talkIdentifier;   ///< the document's "id"
    Field<Text> title;              ///< plain text, cleaned of HTML
    Field<Number> seconds;          ///< how long it is
    Field<URL> slides;              ///< where its slides are; null: it has none
    Field<Language> language;       ///< `other` unless the document says otherwise
    Field<List<Speaker>> speakers;  ///< null: not known

    /// Computed: there is no place to write to, and no rule may fill it.
    bool isLong() const { return seconds() > Number(3600); }

    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }
    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

// --- What a source would hold: of each record what it is made of ... --------------------------------------

static constexpr auto speakerDeclared = declare<Speaker>(property<&Speaker::name>("name"));
static constexpr auto talkDeclared =
    declare<Talk>(property<&Talk::talkIdentifier>("talkIdentifier"), property<&Talk::title>("title"),
                  property<&Talk::seconds>("seconds"), property<&Talk::slides>("slides"),
                  property<&Talk::language>("language"), property<&Talk::speakers>("speakers"),
                  property<&Talk::isLong>("isLong"));

// ... where a document keeps it ...
struct LanguageWord {
    std::string_view name;
    Language value;
};
static constexpr std::array<LanguageWord, 2> languageWords{
    {{"no", Language::norwegian}, {"en", Language::english}}};

static constexpr auto speakerRules = mapping<speakerDeclared>(attribute<&Speaker::name>());
static constexpr auto talkRules = mapping<talkDeclared>(
    attribute<&Talk::talkIdentifier>("id"), attribute<&Talk::title>("title", captured(kQELHTMLTransformer)),
    attribute<&Talk::seconds>("media.duration"),
    attribute<&Talk::slides>("slides", captured(kQELNSURLTransformer)),
    attribute<&Talk::language>("language", lookedUpIn(languageWords)), relationship<&Talk::speakers>());
constinit const FEMRules Speaker::defaultRules = speakerRules;
constinit const FEMRules Talk::defaultRules = talkRules;

// ... and what makes two of them equal. Without the two lists a record is equal to itself alone.
using Compared = FieldsOf<&Talk::talkIdentifier, &Talk::title>;

constinit const ObjectClass Speaker::objectClass(describe<speakerDeclared>("Speaker"));
constinit const ObjectClass Talk::objectClass(
    describe<talkDeclared, Compared, Compared>("Talk", Lives::inItsOwnBlock));

// --- A mapper, for a page of talks ------------------------------------------------------------------------

class TalksMapper {
public:
    Ref<List<Talk>> mappedResponseFromJSONObject(RepresentationView page, Error* = nullptr) const {
        return mappedPage<Talk>(page, "_embedded.talks");
    }
};
static_assert(QELModel<Talk> && QELMapperProtocol<TalksMapper>);

int main() {
    const auto page = representationFromJSON(R"({"_embedded": {"talks": [
        {"id": 7, "title": "Small &amp; <i>quick</i>", "language": "en", "media": {"duration": 4000},
         "speakers": [{"name": "Ada"}, {"name": "Linus"}]},
        {"id": 8, "title": null, "language": "tlh", "slides": 42}]}})");
    if (!page) return 1;

    const Ref<List<Talk>> talks = TalksMapper().mappedResponseFromJSONObject(*page);
    for (const Talk& talk : *talks)
        std::puts(jsonFromValue(Value(&talk)).c_str());

    // A rule of this application's own, for one call: older pages had the title elsewhere.
    FEMMapping older = Talk::defaultMapping();
    older.addAttributeWithProperty("title", "heading");
    const Representation document{{"id", 9}, {"heading", "From the archive"}};
    const Ref<Object> talk = FEMDeserializer::objectFromRepresentation(document, older);
    std::puts(static_cast<const Talk&>(*talk).description().c_str());
}
