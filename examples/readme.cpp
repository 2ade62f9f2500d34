#include <JSON/JSONReader.h>
#include <QELModels/QELModels.h>

#include <cstdio>
#include <string>

namespace qel = QELModels;

int main() {
    qel::MainScreen::setScale(2.0);  // the phone's screen has two pixels a point
    const auto document = qel::representationFromJSON(R"({
        "id": 42, "title": "Bl&aring;tt <b>hav</b>", "duration": 125000,
        "flightTimes": {"start": 1767225600}, "images": {"main": "https://img.example/hav"}})");
    if (!document) return 1;

    // Never null: what the document lacks leaves a property empty.
    const qel::Ref<qel::QELAsset> asset = qel::QELAssetMapper().mappedResponseFromJSONObject(*document);

    const std::string title(asset->title().value_or("untitled"));
    const std::string length = qel::NSStringFromMovieDuration(durationInSeconds(*asset));
    std::printf("%s, %s%s\n", title.c_str(), length.c_str(), isLive(*asset) ? ", on air" : "");

    if (const qel::QELAssetImages* images = asset->images(); images && images->main()) {
        const qel::URL image =
            qel::QELKavoHelper::getURLWithSize(*images->main(), {300, 169});  // the cell, in points
        std::printf("%s\n", std::string(image.text()).c_str());
    }
}
