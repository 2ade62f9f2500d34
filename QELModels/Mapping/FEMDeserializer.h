#pragma once

#include <optional>
#include <string_view>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What may be asked of one deserialization besides its result.
struct FEMOptions {
    FEMObserver* observer = nullptr;  ///< is told the outcome of every rule; null costs nothing
    Zone* zone = nullptr;             ///< where the models' memory comes from; null: the usual place
    std::string_view keyPath = {};    ///< where in its document the representation is; begins all paths
    /// Whether a value that is a fault leaves its property empty, and is told to the observer alone, instead
    /// of ending the mapping with a `MappingFault`: then no document makes the engine throw.
    bool faultsLeaveEmpty = false;
};

/// Applies mappings to representations. Data never throws, except for values that a map rule calls a fault:
/// `MappingFault`, with the JSON Pointer of the value; the whole result is lost then, and nothing is left
/// half made. What map rules of an application throw passes through unchanged. Records that are nested in
/// more than 128 others, as only a class that holds itself can be, are left out.
class QELMODELS_EXPORT FEMDeserializer {
public:
    /// A new record, filled, in a block of its own. What is not a dictionary (null, absent, a list) counts as
    /// an empty one. Never null.
    static Ref<Object> objectFromRepresentation(std::optional<RepresentationView> representation,
                                                const FEMMapping& mapping, const FEMOptions& options = {});
    /// The same as a record of its class. Throws `MappingFault`, before anything is made, for a mapping that
    /// makes records of another class.
    template <class T>
    static Ref<T> objectFromRepresentation(std::optional<RepresentationView> representation,
                                           const FEMMapping& mapping, const FEMOptions& options = {}) {
        detail::checkOwnClass<T>();
        return cast<T>(object(representation, mapping, T::objectClass, options));
    }
    template <class T>
    static Ref<T> objectFromRepresentation(std::optional<RepresentationView> representation,
                                           const FEMMappingOf<T>& mapping, const FEMOptions& options = {}) {
        return cast<T>(object(representation, mapping, T::objectClass, options));
    }

    /// A new record for each element of an array, in order, each in a block of its own. What is not an array
    /// makes an empty list; an element that is not a dictionary makes an empty record. Never null.
    static Ref<ListBase> collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping,
                                                      const FEMOptions& options = {});
    /// The same as a list of records of their class, as above.
    template <class T>
    static Ref<List<T>> collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                     const FEMMapping& mapping,
                                                     const FEMOptions& options = {}) {
        detail::checkOwnClass<T>();
        return cast<List<T>>(collection(representation, mapping, T::objectClass, options));
    }
    template <class T>
    static Ref<List<T>> collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                     const FEMMappingOf<T>& mapping,
                                                     const FEMOptions& options = {}) {
        return cast<List<T>>(collection(representation, mapping, T::objectClass, options));
    }

private:
    // What a mapping makes must be of the class; a mapping whose class the compiler knows may have been
    // assigned another one through its base.
    static Ref<Object> object(std::optional<RepresentationView> representation, const FEMMapping& mapping,
                              const ObjectClass& wanted, const FEMOptions& options);
    static Ref<ListBase> collection(std::optional<RepresentationView> representation,
                                    const FEMMapping& mapping, const ObjectClass& listed,
                                    const FEMOptions& options);
    [[noreturn]] static void throwOfAnotherClass(const FEMMapping& mapping, const ObjectClass& wanted);
    template <class T, class Made>
    static Ref<T> cast(Ref<Made> made) noexcept {
        return Ref<T>::adopt(static_cast<const T*>(made.release()));
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
