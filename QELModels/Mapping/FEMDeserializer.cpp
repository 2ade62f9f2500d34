#include "QELModels/Mapping/FEMDeserializer.h"

#include <string>

#include "QELModels/Mapping/detail/Engine.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Ref<Object> FEMDeserializer::objectFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping, const FEMOptions& options) {
    const FEMPath path(options.keyPath);
    const auto bound = detail::BoundRules::of(mapping);
    return options.observer == nullptr ? detail::Engine<false>(options).object(representation, bound, path)
                                       : detail::Engine<true>(options).object(representation, bound, path);
}

Ref<ListBase> FEMDeserializer::collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                            const FEMMapping& mapping,
                                                            const FEMOptions& options) {
    const FEMPath path(options.keyPath);
    const auto bound = detail::BoundRules::of(mapping);
    return options.observer == nullptr
               ? detail::Engine<false>(options).collection(representation, bound, path)
               : detail::Engine<true>(options).collection(representation, bound, path);
}

void FEMDeserializer::checkClass(const FEMMapping& mapping, const ObjectClass& wanted) {
    if (mapping.objectClass().isSameOrDerivedFrom(wanted)) return;
    throw MappingFault(std::string(mapping.objectClass().name()) + ": the mapping does not make a " +
                       std::string(wanted.name()));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
