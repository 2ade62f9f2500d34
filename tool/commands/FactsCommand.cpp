#include <fmt/format.h>

#include <optional>
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
#include "tool/CommandLine.h"
#include "tool/Documents.h"

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

// Facts of one document, each under the name of the operation that answers it.
class FactWriter {
public:
    explicit FactWriter(JSONWriter& writer) : writer_(writer) { writer_.beginDictionary(); }

    void fact(std::string_view name, const std::string& text) {
        writer_.key(name);
        writer_.string(text);
    }
    void fact(std::string_view name, Number number) {
        writer_.key(name);
        writer_.number(number);
    }
    void fact(std::string_view name, const std::optional<URL>& url) {
        writer_.key(name);
        if (url)
            writer_.string(url->text());
        else
            writer_.null();
    }
    void fact(std::string_view name, const ListBase* list) {
        writer_.key(name);
        writeJSON(writer_, list);
    }
    void end() { writer_.endDictionary(); }

private:
    JSONWriter& writer_;
};

void writeAssetFacts(const QELAsset& asset, std::optional<double> playhead, JSONWriter& writer) {
    FactWriter facts(writer);
    facts.fact("shareURLString", shareURLString(asset));
    facts.fact("commentsShareURLString", commentsShareURLString(asset));
    if (playhead) facts.fact("shareURLFromPlayhead", shareURLFromPlayhead(asset, *playhead));
    facts.fact("durationInSeconds", durationInSeconds(asset));
    facts.fact("featuredChaptersOrDefaultChapters", featuredChaptersOrDefaultChapters(asset));
    facts.fact("isLive", isLive(asset));
    facts.fact("wasLive", wasLive(asset));
    facts.fact("secondsUntilLive", secondsUntilLive(asset));
    facts.fact("hasLiveStreamType", hasLiveStreamType(asset));
    facts.fact("isLastAssetInCategory", isLastAssetInCategory(asset));
    facts.fact("remotePlaybackAllowed", remotePlaybackAllowed(asset));
    facts.fact("showAds", showAds(asset));
    facts.fact("isSeries", isSeries(asset));
    facts.fact("showCategory", showCategory(asset));
    facts.fact("categoryShowComments", categoryShowComments(asset));
    facts.fact("settingsShowComments", settingsShowComments(asset));
    facts.fact("showPlayerLogo", showPlayerLogo(asset));
    facts.fact("isInvalidObject", isInvalidObject(asset));
    facts.fact("isSecured", isSecured(asset));
    const QELAssetAdditional* additional = asset.assetAdditional();
    const auto sorted = additional == nullptr ? nullptr : sortedAdCuePoints(*additional);
    facts.fact("sortedAdCuePoints", sorted.get());
    facts.end();
}

void writeCategoryFacts(const QELCategory& category, JSONWriter& writer) {
    FactWriter facts(writer);
    facts.fact("editorialKey", editorialKey(category));
    facts.fact("parentCategoryEditorialKey", parentCategoryEditorialKey(category));
    facts.fact("allowAllDevices", allowAllDevices(category));
    facts.end();
}

void writeEditorialFacts(const QELEditorial& editorial, JSONWriter& writer) {
    FactWriter facts(writer);
    facts.fact("categoryIdentifier", categoryIdentifier(editorial));
    facts.end();
}

Answer answerFor(const Options& options) {
    const auto playhead =
        options.playhead ? std::optional(numberFrom(*options.playhead)) : std::optional<double>();
    if (options.kind == "asset")
        return [playhead](RepresentationView document, JSONWriter& writer) {
            writeAssetFacts(*QELAssetMapper().mappedResponseFromJSONObject(document), playhead, writer);
        };
    if (options.kind == "category")
        return [](RepresentationView document, JSONWriter& writer) {
            writeCategoryFacts(*QELCategoryMapper().mappedResponseFromJSONObject(document), writer);
        };
    if (options.kind == "editorial")
        return [](RepresentationView document, JSONWriter& writer) {
            writeEditorialFacts(*QELEditorialMapper().mappedResponseFromJSONObject(document), writer);
        };
    throw UsageError(
        fmt::format("there are facts of an asset, a category and an editorial, not of '{}'", options.kind));
}

ExitStatus run(const Options& options, Output& output) {
    const Answer answer = answerFor(options);
    setCurrentTime(options.at);
    if (options.isLines) return answerLines(options.file, output, answer);
    return answerDocument(options.file, JSONWriter::Layout::indented, output, answer);
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
