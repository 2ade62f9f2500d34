#include <fmt/format.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "JSON/JSONFromValue.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "QELModels/Models/QELCategory+Utilities.h"
#include "QELModels/Models/QELEditorial+Utilities.h"
#include "tool/Answers.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string kind;
    std::string file;
    std::optional<std::string> at;
    std::optional<std::string> playhead;
    bool isLines = false;
};

void declare(CLI::App& command, Options& options) {
    addKind(command, options.kind, "What the document is: asset, category or editorial");
    addFile(command, options.file);
    addCurrentTime(command, options.at);
    addOptional(command,
                "--playhead",
                "S",
                options.playhead,
                "Seconds into the asset, for the link that begins there");
    addFlag(command, "--lines", options.isLines, "Every line of FILE is a document of its own");
}

// --- The facts, in the order in which they are written ----------------------------------------------------

Value valueOf(const std::string& text) {
    return Value::text(text);
}
Value valueOf(Number number) {
    return number;
}
Value valueOf(const std::optional<URL>& url) {
    return url ? Value::url(*url) : Value();
}
template <class T>
Value valueOf(const List<T>* list) {
    return Value(list);
}

// A fact under the name of the operation that answers it.
template <class Model>
struct Fact {
    std::string_view name;
    Value (*answer)(const Model& model, double playhead);
    bool needsPlayhead = false;
};

// What an operation that needs nothing but the model answers.
template <auto operation, class Model>
Value answer(const Model& model, double) {
    return valueOf(operation(model));
}

Value linkFromPlayhead(const QELAsset& asset, double playhead) {
    return valueOf(shareURLFromPlayhead(asset, playhead));
}

Value cuePoints(const QELAsset& asset, double) {
    const QELAssetAdditional* additional = asset.assetAdditional();
    return additional == nullptr ? Value() : Value(sortedAdCuePoints(*additional));
}

// Of operations with several forms, the one that needs nothing but the asset.
constexpr bool (*kIsLive)(const QELAsset& asset) = &isLive;
constexpr bool (*kWasLive)(const QELAsset& asset) = &wasLive;
constexpr double (*kSecondsUntilLive)(const QELAsset& asset) = &secondsUntilLive;

constexpr Fact<QELAsset> kAssetFacts[] = {
    {"shareURLString", &answer<&shareURLString>},
    {"commentsShareURLString", &answer<&commentsShareURLString>},
    {"shareURLFromPlayhead", &linkFromPlayhead, true},
    {"durationInSeconds", &answer<&durationInSeconds>},
    {"featuredChaptersOrDefaultChapters", &answer<&featuredChaptersOrDefaultChapters>},
    {"isLive", &answer<kIsLive>},
    {"wasLive", &answer<kWasLive>},
    {"secondsUntilLive", &answer<kSecondsUntilLive>},
    {"hasLiveStreamType", &answer<&hasLiveStreamType>},
    {"isLastAssetInCategory", &answer<&isLastAssetInCategory>},
    {"remotePlaybackAllowed", &answer<&remotePlaybackAllowed>},
    {"showAds", &answer<&showAds>},
    {"isSeries", &answer<&isSeries>},
    {"showCategory", &answer<&showCategory>},
    {"categoryShowComments", &answer<&categoryShowComments>},
    {"settingsShowComments", &answer<&settingsShowComments>},
    {"showPlayerLogo", &answer<&showPlayerLogo>},
    {"isInvalidObject", &answer<&isInvalidObject>},
    {"isSecured", &answer<&isSecured>},
    {"sortedAdCuePoints", &cuePoints},
};
constexpr Fact<QELCategory> kCategoryFacts[] = {
    {"editorialKey", &answer<&editorialKey>},
    {"parentCategoryEditorialKey", &answer<&parentCategoryEditorialKey>},
    {"allowAllDevices", &answer<&allowAllDevices>},
};
constexpr Fact<QELEditorial> kEditorialFacts[] = {
    {"categoryIdentifier", &answer<&categoryIdentifier>},
};

// --- Answering --------------------------------------------------------------------------------------------

// Answers all facts of a document that a mapper maps. Those that need a playhead are left out without one.
template <class Mapper, class Model>
Answer factsOf(std::span<const Fact<Model>> facts, std::optional<double> playhead) {
    return [facts, playhead](RepresentationView document, JSONWriter& writer) {
        const Ref<Model> model = Mapper().mappedResponseFromJSONObject(document);
        writer.beginDictionary();
        for (const Fact<Model>& fact : facts) {
            if (fact.needsPlayhead && !playhead) continue;
            writer.key(fact.name);
            writeJSON(writer, fact.answer(*model, playhead.value_or(0)));
        }
        writer.endDictionary();
    };
}

Answer answerFor(const Options& options) {
    const auto playhead =
        options.playhead ? std::optional(numberFrom(*options.playhead)) : std::optional<double>();
    if (options.kind == "asset") return factsOf<QELAssetMapper, QELAsset>(kAssetFacts, playhead);
    if (options.kind == "category") return factsOf<QELCategoryMapper, QELCategory>(kCategoryFacts, playhead);
    if (options.kind == "editorial")
        return factsOf<QELEditorialMapper, QELEditorial>(kEditorialFacts, playhead);
    throw UsageError(
        fmt::format("there are facts of an asset, a category and an editorial, not of '{}'", options.kind));
}

ExitStatus run(const Options& options, Session& session) {
    const Answer answer = answerFor(options);
    setCurrentTime(options.at);
    if (options.isLines) return answerLines(session, options.file, answer);
    return answerDocument(session, options.file, JSONWriter::Layout::indented, answer);
}

}  // namespace

void addFactsCommand(CommandLine& commandLine) {
    commandLine.add<Options>("facts",
                             "KIND [FILE] [--at EPOCH] [--playhead S] [--lines]",
                             "Every derived fact of one asset, category or editorial",
                             declare,
                             run);
}

}  // namespace QELModels::tool
