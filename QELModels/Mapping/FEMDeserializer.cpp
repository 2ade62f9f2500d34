#include "QELModels/Mapping/FEMDeserializer.h"

#include <string>

#include "QELModels/Mapping/detail/Engine.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Ref<Object> FEMDeserializer::objectFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping, const FEMOptions& options) {
    return detail::withEngine(options, [&](const auto& engine) {
        return engine.object(representation, detail::BoundRules::of(mapping), FEMPath(options.keyPath));
    });
}

Ref<ListBase> FEMDeserializer::collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                            const FEMMapping& mapping,
                                                            const FEMOptions& options) {
    return collection(representation, mapping, mapping.objectClass(), options);
}

Ref<ListBase> FEMDeserializer::collection(std::optional<RepresentationView> representation,
                                          const FEMMapping& mapping, const ObjectClass& listed,
                                          const FEMOptions& options) {
    if (!mapping.objectClass().isSameOrDerivedFrom(listed)) throwOfAnotherClass(mapping, listed);
    return detail::withEngine(options, [&](const auto& engine) {
        return engine.collection(
            representation, detail::BoundRules::of(mapping), listed, FEMPath(options.keyPath));
    });
}

Ref<Object> FEMDeserializer::object(std::optional<RepresentationView> representation,
                                    const FEMMapping& mapping, const ObjectClass& wanted,
                                    const FEMOptions& options) {
    if (!mapping.objectClass().isSameOrDerivedFrom(wanted)) throwOfAnotherClass(mapping, wanted);
    return objectFromRepresentation(representation, mapping, options);
}

void FEMDeserializer::throwOfAnotherClass(const FEMMapping& mapping, const ObjectClass& wanted) {
    throw MappingFault(std::string(mapping.objectClass().name()) + ": the mapping does not make a " +
                       std::string(wanted.name()));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
