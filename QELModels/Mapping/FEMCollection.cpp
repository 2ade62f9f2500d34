#include "QELModels/Mapping/FEMCollection.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "QELModels/Mapping/detail/Engine.h"
#include "QELModels/Records/detail/ObjectAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

struct FEMCollection::Elements {
    const FEMMapping mapping;
    const FEMOptions options;
    detail::RootRoom room{};
    std::vector<Ref<Object>> list{};
};

FEMCollection::FEMCollection(FEMMapping mapping, const FEMOptions& options)
    : elements_(new Elements{std::move(mapping), options}) {}

FEMCollection::~FEMCollection() = default;

void FEMCollection::add(RepresentationView element) {
    Elements& all = *elements_;
    const FEMPath path(all.options.keyPath);
    all.list.push_back(detail::withEngine(all.options, [&](const auto& engine) {
        const auto bound = detail::BoundRules::of(all.mapping);
        return engine.rootOfList(element, bound, FEMPath(path, all.list.size()), 0, all.room);
    }));
}

void FEMCollection::clear() noexcept {
    elements_->list.clear();
}

Ref<ListBase> FEMCollection::finish() {
    std::vector<Ref<Object>>& list = elements_->list;
    detail::BlockWriter writer(detail::roomForListOfRoots(list.size()), elements_->options.zone);
    const auto** objects = writer.allocate<const Object*>(list.size());
    writer.keeper().expect(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        objects[i] = list[i].get();
        writer.keeper().keep(list[i]->block());
    }
    const ListBase* made =
        detail::ObjectAccess::list(elements_->mapping.objectClass(), objects, list.size(), writer);
    list.clear();
    writer.finish();
    return Ref<ListBase>::adopt(made);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
