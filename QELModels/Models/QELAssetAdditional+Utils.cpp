#include "QELModels/Models/QELAssetAdditional+Utils.h"

#include <algorithm>
#include <limits>

#include "QELModels/Records/detail/ObjectAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

using detail::BlockKeeper;
using detail::BlockOrigin;
using detail::BlockWriter;

namespace {

// A missing timeline comes before all others, and so does one that has no order.
bool comesBefore(const Object* a, const Object* b) noexcept {
    const auto key = [](const Object* cuePoint) {
        const Number lowest = -std::numeric_limits<double>::infinity();
        const Number timeline = static_cast<const QELAssetCuePoint*>(cuePoint)->timeline().value_or(lowest);
        return timeline == timeline ? timeline : lowest;
    };
    return key(a) < key(b);
}

}  // namespace

Ref<List<QELAssetCuePoint>> sortedAdCuePoints(const QELAssetAdditional& additional) {
    const auto* cuePoints = additional.cuePoints();
    const std::size_t count = cuePoints == nullptr ? 0 : cuePoints->size();
    BlockWriter writer(
        sizeof(ListBase) + count * sizeof(Object*) + BlockKeeper::kBytesForFirst, nullptr, BlockOrigin::copy);
    const auto** sorted = writer.allocate<const Object*>(count);
    if (count != 0) {
        std::copy_n(cuePoints->objects().begin(), count, sorted);
        std::stable_sort(sorted, sorted + count, comesBefore);
        writer.keeper().keep(cuePoints->block());
    }
    const ListBase* list = detail::ObjectAccess::list(QELAssetCuePoint::objectClass, sorted, count, writer);
    writer.finish();
    return Ref<List<QELAssetCuePoint>>::adopt(static_cast<const List<QELAssetCuePoint>*>(list));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
