#include "QELModels/Representation/detail/RepresentationAccess.h"

#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Representation/detail/RepresentationIndex.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

const RepresentationNode* RepresentationAccess::nodeForKey(const RepresentationNode* dictionary,
                                                           std::string_view key) noexcept {
    return findValue(dictionary, key);
}

void RepresentationAccess::copyNodes(const RepresentationNode* from, std::size_t count,
                                     RepresentationNode* to, BlockWriter& writer) {
    using Tag = RepresentationNode::Tag;
    for (std::size_t i = 0; i < count; ++i) {
        to[i] = from[i];
        if (from[i].tag == Tag::string)
            to[i].text = writer.keepTextOfBlock(from[i].string()).data();
        else if (from[i].tag == Tag::link)
            writer.keeper().keep(from[i + 1].block);
    }
}

const RepresentationNode* RepresentationAccess::copy(RepresentationView view, BlockWriter& writer) {
    const std::size_t extent = view.node_->extent();
    auto* const copied = writer.allocate<RepresentationNode>(extent);
    copyNodes(view.node_, extent, copied, writer);
    return copied;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
