// The road of one document through an app: a season is read and mapped, the listing screen shows its
// episodes, and the player shows one of them and goes on to the next.
//
//     example-screens [season.json]

#include <JSON/JSONReader.h>
#include <QELModels/QELModels.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

using namespace QELModels;

namespace {

void print(std::string_view label, std::string_view text) {
    std::printf(
        "%-14.*s %.*s\n",
        static_cast<int>(label.size()),
        label.data(),
        static_cast<int>(text.size()),
        text.data());
}

// What the network layer does: bytes become a representation, which needs the bytes no more.
std::optional<Representation> documentAt(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    JSONError error;
    auto document = representationFromJSON(bytes, &error);
    if (!document)
        std::fprintf(stderr, "%s:%zu:%zu: %s\n", path, error.line, error.column, error.reason.c_str());
    return document;
}

// One cell of the listing, with the picture asked for at the cell's size in points.
void showCell(const QELAsset& asset) {
    print("title", asset.title().value_or("(untitled)"));
    print("length", NSStringFromMovieDuration(durationInSeconds(asset)));
    const QELAssetImages* images = asset.images();
    if (images == nullptr || !images->main()) return;
    print("picture", QELKavoHelper::getURLWithSize(*images->main(), {320, 180}).text());
}

// What the player asks before it starts.
void showPlayer(const QELAsset& asset) {
    print("playing", asset.title().value_or("(untitled)"));
    if (hasLiveStreamType(asset) && !isLive(asset))
        print("starts in", NSStringRepresentingTimeLeftUntilLive(secondsUntilLive(asset)));
    print("advertising", showAds(asset) ? "yes" : "no");
    print("comments", settingsShowComments(asset) && categoryShowComments(asset) ? "yes" : "no");
    print("other screens", remotePlaybackAllowed(asset) ? "yes" : "no");
    print("share", shareURLString(asset));
}

}  // namespace

int main(int count, char** arguments) {
    MainScreen::setScale(2.0);  // pixels per point

    Ref<QELAsset> next;
    {
        const auto document = documentAt(count > 1 ? arguments[1] : "season.json");
        if (!document) return 1;
        const Ref<QELSeason> season = QELSeasonMapper().mappedResponseFromJSONObject(*document);
        print("season", season->title().value_or("(untitled)"));
        const List<QELAsset>* episodes = season->assets();
        if (episodes == nullptr || episodes->empty()) return 1;
        for (const QELAsset& episode : *episodes) {
            std::puts("");
            showCell(episode);
        }
        std::puts("");
        showPlayer(episodes->front());
        // What is lent lives as long as the season; a Ref keeps one episode alone, without its siblings.
        next = Ref(nextVideoForVideo(*season, &episodes->front()));
    }
    if (!next) return 1;
    std::puts("");
    showPlayer(*next);
}
