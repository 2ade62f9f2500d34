#include "DocumentGenerator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

#include "RawText.h"
#include "Records.h"

namespace QELModels::bench {

namespace {

using namespace std::string_view_literals;

constexpr std::array kWords{
    "fjorden"sv, "og"sv,      "på"sv,        "vestkanten"sv, "øya"sv,      "stormen"sv,  "som"sv,
    "aldri"sv,   "ga"sv,      "seg"sv,       "kaffe"sv,      "krim"sv,     "båten"sv,    "snudde"sv,
    "lyset"sv,   "går"sv,     "æresgjest"sv, "skolen"sv,     "fire"sv,     "elever"sv,   "sild"sv,
    "poteter"sv, "siste"sv,   "mann"sv,      "fyret"sv,      "vinteren"sv, "kommer"sv,   "løypa"sv,
    "skøyter"sv, "direkte"sv, "fra"sv,       "Ytterøy"sv,    "Solveig"sv,  "Bjørnar"sv,  "været"sv,
    "i"sv,       "morgen"sv,  "naboen"sv,    "gjør"sv,       "det"sv,      "ferja"sv,    "hun"sv,
    "har"sv,     "alltid"sv,  "en"sv,        "god"sv,        "historie"sv, "å"sv,        "fortelle"sv,
    "når"sv,     "snøen"sv,   "smelter"sv,   "over"sv,       "fjellet"sv,  "bestemor"sv, "våger"sv,
};

/// The characters that markup writes as references, in the forms that editors' tools produce.
struct Reference {
    std::string_view character;
    std::string_view named;
    std::string_view numeric;
};
constexpr std::array kReferences{
    Reference{"å", "&aring;", "&#229;"},
    Reference{"ø", "&oslash;", "&#xF8;"},
    Reference{"æ", "&aelig;", "&#230;"},
};

constexpr std::array kWorkflowStates{"published"sv, "draft"sv, "review"sv};
constexpr std::array kStatuses{"active"sv, "hidden"sv, "expired"sv};
constexpr std::array kStreamTypes{"vod"sv, "vod"sv, "vod"sv, "wasLive"sv, "live"sv};
constexpr std::array kProtections{"tokenSecured"sv, "encrypted"sv, "geoblocked"sv, "playerVerified"sv};
constexpr std::array kColors{"#1B3A4B"sv, "#c8102e"sv, "#FFFFFF"sv, "#0a0A0a"sv};

constexpr std::int64_t kFirstDay = 1'420'070'400;  // 2015-01-01 00:00:00 UTC
constexpr std::int64_t kSecondsPerDay = 86'400;
constexpr std::int64_t kDaysCovered = 3'650;

constexpr std::size_t kAssetsInListed = 3;  // in each editorial or season of a page

std::string decimal(std::int64_t value) {
    return std::to_string(value);
}

}  // namespace

/// Writes compact JSON, commas included.
/// Requires: the texts of keys outlive the writer.
class DocumentGenerator::Writer {
public:
    std::string take() && { return std::move(text_); }

    Writer& key(std::string_view name) {
        leaveOut(name);
        separate();
        quote(name);
        text_ += ':';
        needsComma_ = false;
        return *this;
    }

    /// Says that the dictionary goes without this key on purpose.
    void leaveOut(std::string_view name) { keys_.back().push_back(name); }
    /// Whether the dictionary has a key, or goes without it on purpose.
    bool isDecided(std::string_view name) const {
        return std::find(keys_.back().begin(), keys_.back().end(), name) != keys_.back().end();
    }

    void open(char bracket) {
        separate();
        text_ += bracket;
        needsComma_ = false;
        keys_.emplace_back();
    }
    void close(char bracket) {
        text_ += bracket;
        needsComma_ = true;
        keys_.pop_back();
    }

    void text(std::string_view value) {
        separate();
        quote(value);
    }
    /// The same text, with escapes for everything that is not ASCII.
    /// Requires: no character has more than two bytes, which holds for the generator's words.
    void asciiText(std::string_view value) {
        static constexpr std::string_view kDigits = "0123456789abcdef";
        separate();
        text_ += '"';
        for (std::size_t i = 0; i < value.size(); ++i) {
            const auto byte = static_cast<unsigned char>(value[i]);
            if (byte < 0x80) {
                text_ += value[i];
                continue;
            }
            const unsigned character = (byte & 0x1Fu) << 6 | (static_cast<unsigned char>(value[++i]) & 0x3Fu);
            text_ += "\\u0";
            for (const unsigned shift : {8u, 4u, 0u})
                text_ += kDigits[character >> shift & 0xF];
        }
        text_ += '"';
    }
    void number(std::int64_t value) { literal(decimal(value)); }
    void real(double value) {
        std::array<char, 32> buffer;
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
        literal({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
    }
    void flag(bool value) { literal(value ? "true" : "false"); }
    void null() { literal("null"); }

private:
    void separate() {
        if (needsComma_) text_ += ',';
        needsComma_ = true;
    }
    void literal(std::string_view value) {
        separate();
        text_ += value;
    }
    void quote(std::string_view value) {
        text_ += '"';
        for (const char c : value) {
            if (c == '"' || c == '\\') text_ += '\\';
            if (c == '\n') {
                text_ += "\\n";
            } else {
                text_ += c;
            }
        }
        text_ += '"';
    }

    std::string text_;
    bool needsComma_ = false;
    std::vector<std::vector<std::string_view>> keys_;  // of every bracket that is open
};

// Chance.

std::uint64_t DocumentGenerator::next() noexcept {
    // SplitMix64: one word of state, and any seed is a good one.
    state_ += 0x9E3779B97F4A7C15;
    std::uint64_t z = state_;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return z ^ z >> 31;
}

std::int64_t DocumentGenerator::between(std::int64_t first, std::int64_t last) noexcept {
    return first + static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(last - first + 1));
}

std::string_view DocumentGenerator::oneOf(std::span<const std::string_view> choices) noexcept {
    return choices[static_cast<std::size_t>(next() % choices.size())];
}

// Words.

std::string_view DocumentGenerator::word() noexcept {
    return oneOf(kWords);
}

std::string DocumentGenerator::plainText(std::size_t bytes) {
    std::string text(word());
    while (text.size() < bytes) {
        text += once(9) ? ", " : " ";
        text += word();
    }
    return text;
}

std::string DocumentGenerator::markedUp(std::string text) {
    // References for the national letters, as older tools write them ...
    if (coin()) {
        const bool numeric = once(3);
        for (const Reference& reference : kReferences) {
            const std::string_view replacement = numeric ? reference.numeric : reference.named;
            for (std::size_t at = text.find(reference.character); at != std::string::npos;
                 at = text.find(reference.character, at + replacement.size()))
                text.replace(at, reference.character.size(), replacement);
        }
    }
    // ... and an editor's markup.
    switch (between(1, 5)) {
        case 1:
            return "<p>" + text + "</p>";
        case 2:
            return "<b>" + std::string(word()) + "</b> " + text;
        case 3:
            return text + " &amp; " + std::string(word()) + "<br/>";
        case 4:
            return "&laquo;" + text + "&raquo; <a href=\"https://tv.example/" + slug() + "\">mer</a>";
        default:
            return "<i class='ingress'>" + text + "</i>\n&quot;" + std::string(word()) + "&quot;";
    }
}

std::string DocumentGenerator::richText(std::size_t bytes) {
    std::string text = plainText(bytes);
    return once(3) ? markedUp(std::move(text)) : text;
}

std::string DocumentGenerator::slug() {
    static constexpr std::array kSlugs{"fjordfolket"sv, "sportssenteret"sv, "kaffe-og-krim"sv, "matpakka"sv};
    return std::string(oneOf(kSlugs)) + '-' + decimal(between(1, 99));
}

std::string DocumentGenerator::imageURL(std::string_view use) {
    return "https://img.example/v1/" + slug() + '/' + std::string(use) + '/' +
           decimal(between(100000, 999999)) + ".jpg";
}

// Parts of documents.

template <class T>
void DocumentGenerator::writeAny(Writer& out, Form form, std::string_view key) {
    if constexpr (RecordByHand<T>) {
        out.open('{');
        closeRecord<T>(out);
    } else if constexpr (ListByHand<T>) {
        out.open('[');
        for (int i = 0; i < 2; ++i)
            writeAny<ElementOf<T>>(out, Form::asItsType, key);
        out.close(']');
    } else if constexpr (std::is_same_v<T, bool>) {
        out.flag(coin());
    } else if constexpr (std::is_same_v<T, Number> || std::is_same_v<T, Date>) {
        out.number(kFirstDay + between(0, kSecondsPerDay));
    } else if constexpr (std::is_same_v<T, std::string>) {
        out.text(form == Form::cleaned ? richText(20) : plainText(20));
    } else if constexpr (std::is_same_v<T, URL>) {
        out.text(imageURL(key));
    } else if constexpr (std::is_same_v<T, Color>) {
        out.text(oneOf(kColors));
    } else if constexpr (std::is_same_v<T, RawText>) {
        const bool isArray = form == Form::array;
        out.open(isArray ? '[' : '{');
        if (!isArray) out.key("value");
        out.number(between(1, 99));
        out.close(isArray ? ']' : '}');
    } else {
        throw std::logic_error("the generator has no words for '" + std::string(key) + "'");
    }
}

template <class Record>
void DocumentGenerator::closeRecord(Writer& out) {
    forEachMember<Record>([&]<class Type>(const Member<Record, Type>& member) {
        if (!out.isDecided(member.key)) writeAny<Present<Type>>(out.key(member.key), member.form, member.key);
    });
    out.close('}');
}

DocumentGenerator::Place DocumentGenerator::anyPlace() noexcept {
    const std::int64_t identifier = between(10'000, 999'999);
    return {identifier, between(1, 9), between(1, 40), once(10) ? identifier : between(10'000, 999'999)};
}

void DocumentGenerator::writeAsset(Writer& out, const Place& place) {
    const std::int64_t created = kFirstDay + between(0, kDaysCovered) * kSecondsPerDay;
    const std::int64_t published = created + between(0, kSecondsPerDay);
    out.open('{');
    out.key("id").number(place.identifier);
    out.key("title").text(richText(28));
    if (once(6)) {
        out.key("titleFront").null();
    } else {
        out.key("titleFront").text(richText(20));
    }
    out.key("description").text(richText(390));
    out.key("descriptionFront").text(richText(130));
    out.key("displays").number(between(0, 900'000));
    out.key("showDisplays").flag(coin());
    out.key("created").number(created);
    if (once(8)) {
        out.key("updated").real(static_cast<double>(published) + 0.25);
    } else {
        out.key("updated").number(published + between(0, 900));
    }
    out.key("published").number(published);
    out.key("flightTimes").open('{');
    out.key("start").number(published);
    if (once(4)) {
        out.key("end").null();
    } else {
        out.key("end").number(published + between(1, 400) * kSecondsPerDay);
    }
    closeRecord<FlightTimes>(out);
    out.key("duration").number(between(20'000, 7'200'000));
    out.key("assetType").text(once(12) ? "audio" : "video");
    out.key("streamType").text(oneOf(kStreamTypes));
    out.key("status").text(oneOf(kStatuses));
    if (!once(12)) {
        out.key("series").open('{');
        out.key("seasonNumber").number(place.season);
        out.key("episodeNumber").number(place.episode);
        closeRecord<Series>(out);
    } else {
        out.leaveOut("series");
    }
    out.key("streamConfiguration").open('{');
    out.key("properties").open('[');
    for (const std::string_view protection : kProtections) {
        if (coin()) out.text(protection);
    }
    out.close(']');
    closeRecord<StreamConfiguration<RawText>>(out);
    if (once(5)) {
        out.key("articleUrl").null();
    } else {
        out.key("articleUrl").text("https://tv.example/artikkel/" + slug() + '/' + decimal(place.identifier));
    }
    writeImages(out);
    writeStreams(out, place);
    out.key("category");
    writeCategory(out, place.newestIdentifier);
    writeAdditional(out, place);
    writeUnread(out, place);
    closeRecord<Asset<RawText>>(out);
}

void DocumentGenerator::writeImages(Writer& out) {
    out.key("images").open('{');
    out.key("main").text(imageURL("main"));
    out.key("front").text(imageURL("front"));
    out.key("featured").text(imageURL("featured"));
    out.key("snapshots").text(imageURL("snapshots"));
    closeRecord<Images>(out);
}

void DocumentGenerator::writeStreams(Writer& out, const Place& place) {
    const std::string path = decimal(place.identifier) + '/' + decimal(between(1000, 9999));
    out.key("streamUrls").open('{');
    out.key("hls").text("https://stream.example/hls/" + path + "/master.m3u8");
    out.key("hds").text("https://stream.example/hds/" + path + "/manifest.f4m");
    out.key("mp4").text("https://stream.example/mp4/" + path + "_1400.mp4");
    closeRecord<StreamUrls>(out);
}

void DocumentGenerator::writeCategory(Writer& out, std::int64_t newestIdentifier) {
    out.open('{');
    out.key("id").number(between(1, 900));
    if (once(6)) {
        out.key("parentId").null();
    } else {
        out.key("parentId").number(between(1, 900));
    }
    out.key("title").text(richText(20));
    out.key("order").number(between(0, 50));
    out.key("isSeries").flag(coin());
    out.key("showCategory").flag(coin());
    out.key("ageLimit").number(between(0, 18));
    out.key("stats").text("sesonger=" + decimal(between(1, 9)) + ";episoder=" + decimal(between(1, 99)));
    out.key("lastAsset").open('{');
    out.key("id").number(newestIdentifier);
    closeRecord<LastAsset>(out);
    writeCategoryAdditional(out);
    closeRecord<Category>(out);
}

void DocumentGenerator::writeCategoryAdditional(Writer& out) {
    out.key("additional").open('{');
    out.key("description").text(richText(150));
    out.key("image").text(imageURL("kategori"));
    out.key("isImageUploaded").flag(coin());
    out.key("logo").text(imageURL("logo"));
    out.key("background").text(imageURL("bakgrunn"));
    out.key("backgroundColor").text(oneOf(kColors));
    out.key("playerLogoImage").text(slug() + "-hvit.png");
    out.key("showEndPoster").flag(coin());
    out.key("showComments").flag(coin());
    out.key("allowAllDevices").flag(coin());
    out.key("playerBranding").open('{');
    out.key("id").number(between(1, 99));
    out.key("playerBackground").text(imageURL("spiller"));
    out.key("link").text("https://tv.example/" + slug() + "?utm_source=spiller");
    closeRecord<PlayerBranding>(out);
    out.key("adCampaignId").text(slug() + "-host");
    out.key("autoPlayNextAsset").flag(coin());
    out.key("notificationMailEnabled").flag(coin());
    closeRecord<CategoryAdditional>(out);
}

void DocumentGenerator::writeAdditional(Writer& out, const Place& place) {
    out.key("additional").open('{');
    writeSettings(out);
    out.key("chapters");
    writeChapters(out, between(3, 5), false);
    out.key("featuredChapters");
    writeChapters(out, between(1, 3), true);
    out.key("cuePoints").open('[');
    for (std::int64_t left = between(3, 7); left > 0; --left) {
        out.open('{');
        out.key("timeline").number(between(0, 7'200));
        closeRecord<CuePoint>(out);
    }
    out.close(']');
    out.key("subtitles").open('[');
    for (const std::string_view language : {"nb"sv, "se"sv}) {
        out.open('{');
        out.key("language").text(language);
        out.key("url").text("https://text.example/" + decimal(place.identifier) + '/' +
                            std::string(language) + ".vtt");
        out.key("default").flag(language == "nb");
        closeRecord<Subtitle>(out);
    }
    out.close(']');
    out.key("externalCategoryId").number(between(1'000, 9'999));
    out.key("externalId").text("arkiv:kyst:" + decimal(place.season) + ':' + decimal(place.identifier));
    if (!once(6)) {
        out.key("nextAsset").open('{');
        out.key("id").number(place.identifier + 1);
        closeRecord<Lead>(out);
    } else {
        out.leaveOut("nextAsset");
    }
    out.key("url").text("https://tv.example/" + slug() + "/s" + decimal(place.season) + 'e' +
                        decimal(place.episode));
    writeRawTrees(out, place);
    closeRecord<Additional<RawText>>(out);
}

void DocumentGenerator::writeSettings(Writer& out) {
    out.key("settings").open('{');
    out.key("showAds").flag(coin());
    out.key("showEmbed").flag(coin());
    out.key("showComments").flag(coin());
    out.key("tonoRegistered").flag(coin());
    out.key("createdBy").text("ingrid.haugland@redaksjon.example");
    out.key("lastEditedBy").text(coin() ? "per-arne.lie@redaksjon.example" : "sportsdesken");
    out.key("source").number(between(1, 9));
    if (once(4)) {
        out.key("notes").asciiText(plainText(60));
    } else {
        out.key("notes").text(plainText(60));
    }
    out.key("showInNewest").flag(coin());
    out.key("loopGeneratorEnabled").flag(once(20));
    out.key("escenicId").text("p-" + decimal(between(10'000, 99'999)) + "-nb");
    out.key("playhead").number(between(0, 900));
    if (once(4)) {
        out.key("startIndexPoint").real(static_cast<double>(between(1, 400)) / 8);
    } else {
        out.key("startIndexPoint").number(between(0, 60));
    }
    out.key("ageLimit").number(between(0, 18));
    closeRecord<Settings>(out);
}

void DocumentGenerator::writeChapters(Writer& out, std::int64_t count, bool featured) {
    out.open('[');
    for (std::int64_t i = 0; i < count; ++i) {
        out.open('{');
        out.key("title").text(richText(18));
        out.key("description").text(richText(58));
        out.key("timeline").number(i * 600'000 + between(0, 599'999));
        out.key("featured").flag(featured || once(5));
        closeRecord<Chapter>(out);
    }
    out.close(']');
}

void DocumentGenerator::writeRawTrees(Writer& out, const Place& place) {
    out.key("barrels").open('[');
    for (std::int64_t i = 0; i < 2; ++i) {
        out.open('{');
        out.key("id").number(between(1, 99));
        out.key("title").text(plainText(14));
        out.close('}');
    }
    out.close(']');
    out.key("sourceFiles").open('[');
    for (const std::int64_t bitrate : {std::int64_t{1400}, std::int64_t{50000}}) {
        out.open('{');
        out.key("bitrate").number(bitrate);
        out.key("size").number(between(10'000'000, 999'999'999));
        out.key("path").text("inn/" + decimal(place.identifier) + '_' + decimal(bitrate) + ".mxf");
        out.close('}');
    }
    out.close(']');
    out.key("metadata").open('{');
    out.key("place").text("Ytterøy");
    out.key("genre").text(word());
    out.key("producer").text("Kystfilm AS");
    out.key("rating").real(static_cast<double>(between(4, 20)) / 4);
    out.key("cleared").flag(coin());
    out.close('}');
    out.key("access").open('{');
    out.key("level").text(coin() ? "free" : "premium");
    out.key("from").number(kFirstDay);
    out.key("login").flag(coin());
    out.close('}');
    out.key("imageCaption").open('{');
    out.key("text").text(plainText(30));
    out.key("byline").text("Foto: Marit Sæther");
    out.close('}');
}

void DocumentGenerator::writeUnread(Writer& out, const Place& place) {
    const std::string identifier = decimal(place.identifier);
    out.key("revision").number(between(1, 40));
    out.key("workflow").text(oneOf(kWorkflowStates));
    out.key("locked").flag(once(9));
    out.key("analytics").open('{');
    out.key("provider").text("maaling.example");
    out.key("page").text("tv/" + slug() + '/' + identifier + "?sesong=" + decimal(place.season) +
                         "&kilde=forside&plass=" + decimal(between(1, 60)) + "&kampanje=" + slug());
    out.key("plays").number(between(0, 900'000));
    out.key("completion").real(static_cast<double>(between(0, 64)) / 64);
    out.close('}');
    out.key("_links").open('{');
    out.key("self").open('{');
    out.key("href").text("https://api.tv.example/v3/assets/" + identifier + "?sprak=nb&format=kompakt");
    out.close('}');
    out.key("related").open('{');
    out.key("href").text("https://api.tv.example/v3/assets/" + identifier +
                         "/related?limit=12&sort=published&fields=id,title,images,streamUrls,duration,"
                         "category&embed=true&klient=tv&season=" +
                         decimal(place.season));
    out.close('}');
    out.close('}');
}

void DocumentGenerator::writeEditorial(Writer& out, std::size_t count) {
    std::vector<Place> places;
    for (std::size_t i = 0; i < count; ++i)
        places.push_back(anyPlace());
    out.open('{');
    out.key("key").text(once(4) ? "front" : "category-" + decimal(between(1, 900)));
    out.key("assetsIds").open('[');
    for (const Place& place : places)
        out.number(place.identifier);
    out.close(']');
    out.key("_embedded").open('{');
    out.key("assets").open('[');
    for (const Place& place : places)
        writeAsset(out, place);
    out.close(']');
    out.close('}');
    out.close('}');
}

void DocumentGenerator::writeSeason(Writer& out, std::size_t count) {
    const std::int64_t season = between(1, 9);
    const std::int64_t first = between(10'000, 900'000);
    const std::int64_t newest = first + static_cast<std::int64_t>(count) - 1;
    out.open('{');
    out.key("title").text(markedUp("Sesong " + decimal(season)));
    out.key("seasonNumber").number(season);
    out.key("assets").open('[');
    for (std::int64_t identifier = first; identifier <= newest; ++identifier)
        writeAsset(out, {identifier, season, identifier - first + 1, newest});
    out.close(']');
    out.close('}');
}

template <class WriteElement>
std::string DocumentGenerator::page(std::string_view listKey, std::size_t count, WriteElement writeElement) {
    Writer out;
    out.open('{');
    out.key("page").open('{');
    out.key("size").number(static_cast<std::int64_t>(count));
    out.key("number").number(1);
    out.close('}');
    out.key("_embedded").open('{');
    out.key(listKey).open('[');
    for (std::size_t i = 0; i < count; ++i)
        writeElement(out);
    out.close(']');
    out.close('}');
    out.close('}');
    return std::move(out).take();
}

std::string DocumentGenerator::asset() {
    Writer out;
    writeAsset(out, anyPlace());
    return std::move(out).take();
}

std::string DocumentGenerator::category() {
    Writer out;
    writeCategory(out, between(10'000, 999'999));
    return std::move(out).take();
}

std::string DocumentGenerator::assetsPage(std::size_t count) {
    return page("assets", count, [this](Writer& out) { writeAsset(out, anyPlace()); });
}

std::string DocumentGenerator::categoriesPage(std::size_t count) {
    return page("categories", count, [this](Writer& out) { writeCategory(out, between(10'000, 999'999)); });
}

std::string DocumentGenerator::editorial(std::size_t count) {
    Writer out;
    writeEditorial(out, count);
    return std::move(out).take();
}

std::string DocumentGenerator::editorialsPage(std::size_t count) {
    return page("editorial", count, [this](Writer& out) { writeEditorial(out, kAssetsInListed); });
}

std::string DocumentGenerator::season(std::size_t count) {
    Writer out;
    writeSeason(out, count);
    return std::move(out).take();
}

std::string DocumentGenerator::seasonsPage(std::size_t count) {
    return page("seasons", count, [this](Writer& out) { writeSeason(out, kAssetsInListed); });
}

std::string DocumentGenerator::document(DocumentKind kind, std::size_t count) {
    switch (kind) {
        case DocumentKind::asset:
            return asset();
        case DocumentKind::assets:
            return assetsPage(count);
        case DocumentKind::category:
            return category();
        case DocumentKind::categories:
            return categoriesPage(count);
        case DocumentKind::editorial:
            return editorial(count);
        case DocumentKind::editorials:
            return editorialsPage(count);
        case DocumentKind::season:
            return season(count);
        case DocumentKind::seasons:
            return seasonsPage(count);
    }
    return "{}";
}

}  // namespace QELModels::bench
