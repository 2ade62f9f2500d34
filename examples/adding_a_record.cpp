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
class Speaker : public Record<Speaker> {
public:
    Field<Text> name;  ///< plain text

    static const ObjectClassOf<Speaker> objectClass;
    static const FEMRulesOf<Speaker> defaultRules;
};

/// One recorded talk. Talks are equal when their identifiers and titles are.
class Talk : public Record<Talk> {
public:
    Field<Number> talkIdentifier;   ///< the document's "id"
    Field<Text> title;              ///< plain text, cleaned of HTML
    Field<Number> seconds;          ///< how long it is
    Field<URL> slides;              ///< where its slides are; null: it has none
    Field<Language> language;       ///< `other` unless the document says otherwise
    Field<List<Speaker>> speakers;  ///< null: not known

    /// Computed: there is no place to write to, and no rule may fill it.
    bool isLong() const { return seconds() > Number(3600); }

    static const ObjectClassOf<Talk> objectClass;
    static const FEMRulesOf<Talk> defaultRules;
};

/// An asset of the library with one key more, which this application is given. It inherits the fields, the
/// rules and the equality of `QELAsset`.
class Lecture : public Record<Lecture, QELAsset> {
public:
    Field<Text> room;  ///< where it was held; null: not known

    static const ObjectClassOf<Lecture> objectClass;
    static const FEMRulesOf<Lecture> defaultRules;
};

// --- What a source would hold: of each record what it is made of ... --------------------------------------

static constexpr auto speakerDeclared = declare<Speaker>(property<&Speaker::name>("name"));
static constexpr auto talkDeclared = declare<Talk>(
    property<&Talk::talkIdentifier>("talkIdentifier"),
    property<&Talk::title>("title"),
    property<&Talk::seconds>("seconds"),
    property<&Talk::slides>("slides"),
    property<&Talk::language>("language"),
    property<&Talk::speakers>("speakers"),
    property<&Talk::isLong>("isLong"));
static constexpr auto lectureDeclared = declare<Lecture>(property<&Lecture::room>("room"));

// ... where a document keeps it ...
struct LanguageWord {
    std::string_view name;
    Language value;
};
static constexpr std::array<LanguageWord, 2> languageWords{
    {{"no", Language::norwegian}, {"en", Language::english}}};

static constexpr auto speakerRules = mapping<speakerDeclared>(attribute<&Speaker::name>());
static constexpr auto talkRules = mapping<talkDeclared>(
    attribute<&Talk::talkIdentifier>("id"),
    attribute<&Talk::title>("title", captured(kQELHTMLTransformer)),
    attribute<&Talk::seconds>("media.duration"),
    attribute<&Talk::slides>("slides", captured(kQELNSURLTransformer)),
    attribute<&Talk::language>("language", lookedUpIn(languageWords)),
    relationship<&Talk::speakers>());
static constexpr auto lectureRules = mapping<lectureDeclared>(attribute<&Lecture::room>());
constinit const FEMRulesOf<Speaker> Speaker::defaultRules = speakerRules;
constinit const FEMRulesOf<Talk> Talk::defaultRules = talkRules;
constinit const FEMRulesOf<Lecture> Lecture::defaultRules = lectureRules;

// ... and what makes two of them equal. Without the two lists a record is equal to itself alone, or compares
// as the record that it extends.
using Compared = FieldsOf<&Talk::talkIdentifier, &Talk::title>;
using ComparedOfLecture = FieldsOf<&Lecture::room>;

constinit const ObjectClassOf<Speaker> Speaker::objectClass(describe<speakerDeclared>("Speaker"));
constinit const ObjectClassOf<Talk> Talk::objectClass(
    describe<talkDeclared, Compared, Compared>("Talk", Lives::inItsOwnBlock));
constinit const ObjectClassOf<Lecture> Lecture::objectClass(
    describe<lectureDeclared, ComparedOfLecture, ComparedOfLecture>("Lecture", Lives::inItsOwnBlock));

// --- A mapper, for a page of talks ------------------------------------------------------------------------

class TalksMapper : public PageMapper<TalksMapper, Talk> {
public:
    static constexpr std::string_view listKeyPath() { return "_embedded.talks"; }
};
static_assert(QELModel<Talk> && QELPageMapperProtocol<TalksMapper>);

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
    const Ref<Talk> talk = FEMDeserializer::objectFromRepresentation<Talk>(document, older);
    std::puts(talk->description().c_str());

    const auto lecture = mappedObject<Lecture>(Representation{{"id", 10}, {"room", "B 14"}});
    std::printf(
        "%s, asset %s\n",
        std::string(lecture->room().value_or("?")).c_str(),
        lecture->assetIdentifier()->toString().c_str());
}
