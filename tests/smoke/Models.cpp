// The library alone, without JSON and without run-time type information: documents are built by hand, mapped
// by all kinds of mappers, and asked for facts. Prints the first thing that is not as it should be.

#include <QELModels/Functions/QELModelFunctions.h>
#include <QELModels/Mappers/QELAssetMapper.h>
#include <QELModels/Mappers/QELAssetsMapper.h>
#include <QELModels/Mappers/QELCategoryMapper.h>
#include <QELModels/Mappers/QELEditorialMapper.h>
#include <QELModels/Mappers/QELSeasonMapper.h>
#include <QELModels/Models/QELAsset+Utilities.h>
#include <QELModels/Models/QELCategory+Utilities.h>
#include <QELModels/Models/QELEditorial+Utilities.h>
#include <QELModels/Models/QELSeason+Utilities.h>
#include <QELModels/Process/Clock.h>
#include <QELModels/Records/MappingFault.h>
#include <QELModels/Representation/RepresentationBuilder.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace QELModels;

void check(bool isAsExpected, const char* what) {
    if (isAsExpected) return;
    std::printf("not as expected: %s\n", what);
    std::exit(EXIT_FAILURE);
}

Representation episode(int number) {
    return {{"id", 100 + number}, {"series", {{"seasonNumber", 2}, {"episodeNumber", number}}}};
}

void mapAnAsset() {
    const Representation document{
        {"id", 1234},
        {"title", "<p>Nyheter &amp; v&aelig;r</p>"},
        {"streamType", "live"},
        {"duration", 1500},
        {"flightTimes", {{"start", 100}, {"end", 200}}},
        {"streamConfiguration", {{"properties", Representation::array({"tokenSecured", "geoblocked"})}}},
        {"category", {{"id", 7}, {"lastAsset", {{"id", 1234.0}}}}},
        {"additional", {{"chapters", Representation::array({{{"title", "&lt;1&gt;"}}, nullptr})}}},
    };
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(document);
    check(asset->title() == "Nyheter & v\xC3\xA6r", "title");
    check(NSStringFromQELStreamType(asset->streamType()) == "live", "stream type");
    check(asset->streamConfiguration()->configuration() == 5 && isSecured(*asset), "configuration");
    check(asset->assetAdditional()->chapters()->size() == 2, "chapters");
    check(asset->assetAdditional()->chapters()->front().title() == "<1>", "chapter title");
    check(durationInSeconds(*asset) == 1.5, "duration");
    check(isLastAssetInCategory(*asset) && remotePlaybackAllowed(*asset) && showAds(*asset), "facts");
    check(shareURLFromPlayhead(*asset, 123)->text() == "https://tv.example/#!/1234/02m03s", "share URL");
    Clock::setSource([] { return dateFromSecondsSince1970(150); });
    check(isLive(*asset) && !wasLive(*asset) && secondsUntilLive(*asset) == -50, "live status");
    Clock::setSource({});
    const auto copied = copy(*asset);
    check(*copied == *asset && copied->hash() == asset->hash() && copied->category() == asset->category(),
          "copy");
    check(copied->dictionaryValue().size() == QELAsset::objectClass.properties().size(), "dictionary");
    try {
        copy(*asset->streamConfiguration());
        check(false, "copy of what cannot be copied");
    } catch (const MappingFault&) {
        return;
    }
}

void mapPagesAndLists() {
    const Representation page{{"_embedded", {{"assets", Representation::array({episode(1), nullptr})}}}};
    const auto assets = QELAssetsMapper().mappedResponseFromJSONObject(page);
    check(assets->size() == 2 && (*assets)[0].assetIdentifier() == Number(101), "page");
    check(QELAssetsMapper().mappedResponseFromJSONObject(Representation())->empty(), "no page");

    const auto category = QELCategoryMapper().mappedResponseFromJSONObject(
        Representation{{"id", 42.5}, {"additional", {{"backgroundColor", "#FF8000"}}}});
    check(editorialKey(*category) == "category-42.5" && !allowAllDevices(*category), "category");
    check(category->additional()->backgroundColor()->green == 128 / 255.0, "colour");
    try {
        QELCategoryMapper().mappedResponseFromJSONObject(
            Representation{{"additional", {{"backgroundColor", 5}}}});
        check(false, "colour that is a number");
    } catch (const MappingFault& fault) {
        check(fault.pointer() == "/additional/backgroundColor", "pointer");
    }
    const auto editorial =
        QELEditorialMapper().mappedResponseFromJSONObject(Representation{{"key", "category-42"}});
    check(categoryIdentifier(*editorial) == 42 && editorial->assets() == nullptr, "editorial");

    RepresentationBuilder builder;
    builder.beginDictionary();
    builder.key("seasonNumber");
    builder.number(2.0);
    builder.key("assets");
    builder.beginArray();
    for (const int number : {3, 1, 2})
        builder.representation(episode(number));
    builder.endArray();
    builder.endDictionary();
    const auto season = QELSeasonMapper().mappedResponseFromJSONObject(builder.finish());
    const Ref<QELAsset> next(nextVideoForVideo(*season, &(*season->assets())[1]));
    check(next && next->assetIdentifier() == Number(103), "next episode");
}

}  // namespace

int main() {
    mapAnAsset();
    mapPagesAndLists();
}
