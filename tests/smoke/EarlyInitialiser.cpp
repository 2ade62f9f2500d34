// An application may map documents from its own static initialisers and destructors: the library's
// transformers are there before the first and after the last of them, in static and in shared builds.

#include <QELModels/Mappers/QELAssetMapper.h>

#include <cstdlib>

namespace {

using namespace QELModels;

// 0 when a document is mapped as it should be, else what was wrong.
int mapDocument() {
    const Ref<QELAsset> asset = QELAssetMapper().mappedResponseFromJSONObject(
        Representation{{"id", 42},
                       {"title", "<b>Bl&aring;tt</b> &amp; gr&oslash;nt"},
                       {"articleUrl", "https://tv.example/42"},
                       {"flightTimes", {{"start", 1.5}}}});
    if (asset->title() != "Bl\xC3\xA5tt & gr\xC3\xB8nt") return 1;
    if (!asset->articleUrl() || asset->articleUrl()->text() != "https://tv.example/42") return 2;
    if (asset->flightTimes()->flightStart() != dateFromSecondsSince1970(1.5)) return 3;
    return asset->assetIdentifier() == Number(42) ? 0 : 4;
}

struct Early {
    const int found = mapDocument();
    ~Early() {
        if (const int late = mapDocument(); late != 0) std::_Exit(10 + late);
    }
};
const Early early;

}  // namespace

int main() {
    return early.found;
}
