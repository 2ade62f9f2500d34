#include "QELModels/Mapping/detail/FoundValues.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

std::size_t FoundValues::textBytes(const FEMRules& rules, RepresentationView dictionary) {
    std::size_t bytes = 0;
    for (const FEMRules* of = &rules; of != nullptr; of = of->inherited) {
        if (isWalked(of->table, dictionary.node())) {
            forEachFound(of->table, dictionary.node(), [&](const RuleKey&, const RepresentationNode* value) {
                bytes += value->textBytes();
            });
            continue;
        }
        for (const std::string_view key : of->keys) {
            const RepresentationNode* value = dictionary.nodeForKey(key);
            if (value != nullptr) bytes += value->textBytes();
        }
    }
    return bytes;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
