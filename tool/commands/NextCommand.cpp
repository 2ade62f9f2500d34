#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

#include "JSON/JSONFromValue.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Models/QELSeason+Utilities.h"
#include "tool/Input.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string seasonFile;
    std::optional<std::string> after;
    std::optional<std::string> video;
};

void declare(CLI::App& command, Options& options) {
    addArgument(command, "SEASON_FILE", options.seasonFile, "The season's document");
    addOptional(
        command, "--after", "ASSET_ID", options.after, "The episode that was played, one of the season");
    addOptional(
        command, "--video", "ASSET_FILE", options.video, "The document of the episode that was played");
}

// Identifiers may be of any size that 64 bits hold, which a double does not.
template <class T>
std::optional<Number> numberAs(const std::string& text) {
    T number{};
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || read != end) return std::nullopt;
    return Number(number);
}

Number identifierFrom(const std::string& text) {
    if (const auto number = numberAs<std::int64_t>(text)) return *number;
    if (const auto number = numberAs<std::uint64_t>(text)) return *number;
    return numberFrom(text);
}

template <class Mapper>
auto mapped(Session& session, const std::string& file) {
    return Mapper().mappedResponseFromJSONObject(session.readDocument(file));
}

const QELAsset* assetWithIdentifier(const QELSeason& season, Number identifier) {
    const List<QELAsset>* assets = season.assets();
    if (assets == nullptr) return nullptr;
    const auto found = std::find_if(assets->begin(), assets->end(), [identifier](const QELAsset& asset) {
        return asset.assetIdentifier() == identifier;
    });
    return found == assets->end() ? nullptr : &*found;
}

Ref<QELAsset> playedVideo(const Options& options, const QELSeason& season, Session& session) {
    if (!options.after) return mapped<QELAssetMapper>(session, *options.video);
    const QELAsset* asset = assetWithIdentifier(season, identifierFrom(*options.after));
    if (asset == nullptr)
        throw BadInput(fmt::format(
            "{}: no asset of the season has the identifier {}", options.seasonFile, *options.after));
    return Ref<QELAsset>(asset);
}

ExitStatus run(const Options& options, Session& session) {
    if (options.after.has_value() == options.video.has_value())
        throw UsageError("one of --after and --video is required");
    if (options.seasonFile == kStandardInput && options.video == kStandardInput)
        throw UsageError("standard input cannot be both the season and the video");
    if (options.after)
        identifierFrom(*options.after);  // what is not a number is reported before anything is read
    const Ref<QELSeason> season = mapped<QELSeasonMapper>(session, options.seasonFile);
    const Ref<QELAsset> video = playedVideo(options, *season, session);
    const QELAsset* next = nextVideoForVideo(*season, video.get());
    session.output.write(jsonFromValue(Value(next), JSONWriter::Layout::indented) + '\n');
    return ExitStatus::success;
}

}  // namespace

void addNextCommand(CommandLine& commandLine) {
    commandLine.add<Options>("next",
                             "SEASON_FILE (--after ASSET_ID | --video ASSET_FILE)",
                             "The episode that follows, as `map` prints it, or null",
                             declare,
                             run);
}

}  // namespace QELModels::tool
