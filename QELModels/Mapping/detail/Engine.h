#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Mapping/FEMPath.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Mapping/detail/FoundValues.h"
#include "QELModels/Memory/Block.h"
#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Ref.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The rules of one class of records, and what their map rules hold on to.
struct BoundRules {
    const ObjectClass& isa;
    const FEMRules& rules;
    const FEMCaptured* captured;

    static BoundRules of(const FEMMapping& mapping) noexcept {
        return {mapping.objectClass(), mapping.rules(), mapping.captured()};
    }
    /// Those of the records that a relationship makes.
    BoundRules nested(const FEMRule& relationship) const noexcept {
        if (relationship.mapping != nullptr) return of(*relationship.mapping);
        return {*relationship.target->objectClass, *relationship.target, captured};
    }
};

/// Records of a class that holds itself nest as deep as a document makes them. Deeper than this they are of
/// the wrong kind: so neither the engine nor what works on records after it exhausts a thread's stack. The
/// library's own classes nest seven deep.
inline constexpr std::uint32_t kMostNestedRecords = 128;

/// Where the engine is: the block that it writes, the place in the document, and how many records are around.
struct Place {
    BlockWriter& writer;
    const FEMPath& path;
    std::uint32_t depth;
};

/// One record while it is filled by rules.
struct Filling {
    Object& object;
    const BoundRules& bound;
    BlockWriter& writer;
    const FEMPath& path;
    std::uint32_t depth;
};

/// How much of the room that is estimated for the roots of one list is given to them: as much as any of them
/// has taken so far, and a little more. The roots of a list are alike, so blocks are hardly larger than what
/// is in them.
class RootRoom {
public:
    std::size_t of(std::size_t estimate) const noexcept { return (estimate * share_ + kWhole - 1) / kWhole; }
    void learn(std::size_t estimate, const BlockWriter& writer) noexcept;

private:
    static constexpr std::size_t kWhole = 1024;
    static constexpr std::size_t kMore = 8;
    std::size_t mostTaken_ = 0;
    std::size_t share_ = kWhole;
};

/// Applies rules to dictionaries. Whether somebody observes it is known when it is compiled, so that those
/// who do not ask pay nothing.
template <bool kObserved>
class Engine {
public:
    explicit Engine(const FEMOptions& options)
        : observer_(options.observer), zone_(options.zone), faultsLeaveEmpty_(options.faultsLeaveEmpty) {}

    /// The record of a whole document, in a block of its own. It may keep the document's texts.
    Ref<Object> object(std::optional<RepresentationView> value, const BoundRules& bound,
                       const FEMPath& path) const;
    /// The list of a whole document, a list of the class `listed`, in a block of its own.
    Ref<ListBase> collection(std::optional<RepresentationView> value, const BoundRules& bound,
                             const ObjectClass& listed, const FEMPath& path) const;
    /// An element of a list of roots. It shares the list's room.
    Ref<Object> rootOfList(RepresentationView element, const BoundRules& bound, const FEMPath& path,
                           std::uint32_t depth, RootRoom& room) const;

private:
    Ref<Object> onlyRoot(RepresentationView dictionary, const BoundRules& bound, const FEMPath& path) const;
    Ref<Object> root(RepresentationView dictionary, const BoundRules& bound, const FEMPath& path,
                     std::uint32_t depth, RootRoom& room) const;
    Ref<Object> emptyRoot(const BoundRules& bound) const;
    [[gnu::always_inline]] const Object* record(RepresentationView value, const BoundRules& bound,
                                                const Place& at) const;
    const ListBase* list(RepresentationView array, const BoundRules& bound, const ObjectClass& listed,
                         const Place& at, bool ofRoots) const;

    // What is done for every record and every rule is compiled into the loops that do it.
    static auto storing(RepresentationView dictionary, const Filling& filling);
    [[gnu::always_inline]] static FoundValues valuesIn(RepresentationView dictionary, const Filling& filling);
    void fill(RepresentationView dictionary, const Filling& filling) const;
    struct Level;
    [[gnu::noinline]] void fillInherited(RepresentationView dictionary, const Filling& filling,
                                         const Level* derived) const;
    [[gnu::always_inline]] void applyAttributes(FoundValues::Lookup found, const Filling& filling) const;
    [[gnu::always_inline]] void applyRelationships(FoundValues::Lookup found, const Filling& filling) const;
    [[gnu::always_inline]] void applyAttribute(const FEMRule& rule, RepresentationView value,
                                               const Filling& filling) const;
    [[gnu::always_inline]] FEMOutcome applyMapRule(const FEMRule& rule, RepresentationView value,
                                                   const Filling& filling) const;
    [[gnu::always_inline]] void applyRelationship(const FEMRule& rule, RepresentationView value,
                                                  const Filling& filling) const;

    void report(const FEMRule& rule, FEMOutcome outcome, std::optional<RepresentationView> value,
                const FEMPath& path) const;
    void reportMisfit(std::optional<RepresentationView> value, const FEMPath& path) const;

    FEMObserver* observer_;
    Zone* zone_;
    bool faultsLeaveEmpty_;
};

/// Calls `use` with the engine that the options ask for.
template <class Use>
auto withEngine(const FEMOptions& options, const Use& use) {
    return options.observer == nullptr ? use(Engine<false>(options)) : use(Engine<true>(options));
}

/// Room for a list of this many roots, and for the blocks that it keeps.
std::size_t roomForListOfRoots(std::size_t elements) noexcept;

extern template class Engine<false>;
extern template class Engine<true>;

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
