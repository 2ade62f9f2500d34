#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/detail/RepresentationAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A node and the block that it lies in; null where a value is missing.
struct FoundValue {
    const RepresentationNode* node;
    const Block* block;

    RepresentationView view() const noexcept { return RepresentationAccess::at(node, block); }
};

/// Calls `take(known, key, value)`, with the table, the entry of a key in it and a node, for each first key
/// of constant rules that a dictionary has, in the order of its members.
template <class Take>
[[gnu::always_inline]] inline void forEachFound(const RuleKeys& table, const RepresentationNode* dictionary,
                                                const Take& take) {
    // What is written could be among the rules, for all that the compiler knows: so these are read first.
    const RuleKeys known = table;
    const RepresentationNode* member = dictionary + 1;
    for (std::uint32_t left = dictionary->size; left != 0; --left) {
        const RepresentationNode* const value = member->value();
        if (const RuleKey* key = known.find(*member); key != nullptr) take(known, *key, value);
        member = value->next();
    }
}

/// What each first key of a mapping leads to in one dictionary.
class FoundValues {
    using Node = RepresentationNode;

public:
    /// Finds the values of all keys.
    [[gnu::always_inline]] FoundValues(const FEMRules& rules, RepresentationView dictionary)
        : rules_(rules), block_(RepresentationAccess::block(dictionary)) {
        makeRoom(rules.keys.size());
        if (isWalked(rules.table, RepresentationAccess::node(dictionary)))
            forEachFound(rules.table,
                         RepresentationAccess::node(dictionary),
                         [this](const RuleKeys& known, const RuleKey& key, const Node* value) {
                             values_[known.position(key)] = value;
                         });
        else
            lookUp(dictionary);
    }

    /// The same, but values that rules take as they are go to `store(table, key, value)` as soon as their
    /// keys are found; the others wait for their rules.
    template <class Store>
    [[gnu::always_inline]] FoundValues(const FEMRules& rules, RepresentationView dictionary,
                                       const Store& store)
        : rules_(rules), block_(RepresentationAccess::block(dictionary)) {
        if (isWalked(rules.table, RepresentationAccess::node(dictionary))) {
            makeRoom(rules.table.orderedKeys);
            forEachFound(rules.table,
                         RepresentationAccess::node(dictionary),
                         [&](const RuleKeys& known, const RuleKey& key, const Node* value) {
                             if (key.isStoredAtOnce())
                                 store(known, key, value);
                             else
                                 values_[known.position(key)] = value;
                         });
        } else {
            makeRoom(rules.keys.size());
            lookUp(dictionary);
            storeFound(store);
        }
    }
    FoundValues(const FoundValues&) = delete;
    FoundValues& operator=(const FoundValues&) = delete;

    /// What rules read, as a value of its own that a loop over them has at hand.
    struct Lookup {
        const Node* const* values;
        const Block* block;

        /// Links are left for the reader to follow.
        FoundValue at(const FEMRule& rule) const {
            const Node* node = values[rule.key];
            if (node == nullptr || !rule.hasFurtherKeys()) [[likely]]
                return {node, block};
            const auto value = RepresentationAccess::at(node, block).valueForKeyPath(rule.furtherKeys);
            return value ? FoundValue{RepresentationAccess::node(*value), RepresentationAccess::block(*value)}
                         : FoundValue{nullptr, nullptr};
        }
    };
    Lookup lookup() const noexcept { return {values_, block_}; }

    /// Of values that were found and not stored: about how many bytes of text are in them.
    std::size_t textBytes() const noexcept {
        std::size_t bytes = 0;
        for (std::size_t i = 0; i < rules_.keys.size(); ++i)
            if (values_[i] != nullptr) bytes += values_[i]->textBytes();
        return bytes;
    }
    /// Of values that were found and not stored: stores those that rules take as they are.
    template <class Store>
    void storeFound(const Store& store) const {
        for (const RuleKey& key : rules_.table.entries) {
            if (!key.isStoredAtOnce()) continue;
            const Node* value = values_[rules_.table.position(key)];
            if (value != nullptr) store(rules_.table, key, value);
        }
    }

private:
    // Up to this many first keys are found without an allocation; all mappings of the library have fewer.
    static constexpr std::size_t kUsualKeys = 32;
    // A dictionary with many more members than there are keys to find is asked for each key instead.
    static constexpr std::size_t kMostMembersWalked = 128;
    static constexpr std::size_t kKeysAtOnce = 8;
    static_assert(kUsualKeys % kKeysAtOnce == 0);

    static bool isWalked(const RuleKeys& table, const Node* dictionary) noexcept {
        return !table.slots.empty() && dictionary->size <= kMostMembersWalked;
    }

    void lookUp(RepresentationView dictionary) {
        for (std::size_t i = 0; i < rules_.keys.size(); ++i)
            values_[i] =
                RepresentationAccess::nodeForKey(RepresentationAccess::node(dictionary), rules_.keys[i]);
    }

    // Values are missing until they are found.
    void makeRoom(std::size_t count) {
        if (count > kUsualKeys) {
            many_ = std::make_unique<const Node*[]>(count);
            values_ = many_.get();
            return;
        }
        // Some at a time, one by one: the instruction that compilers choose for a loop takes longer to begin.
        for (std::size_t i = 0; i < count; i += kKeysAtOnce)
            clear(usual_ + i, std::make_index_sequence<kKeysAtOnce>{});
    }
    template <std::size_t... I>
    static void clear(const Node** values, std::index_sequence<I...>) noexcept {
        ((values[I] = nullptr), ...);
    }

    const FEMRules& rules_;
    const Block* block_;
    const Node* usual_[kUsualKeys];
    std::unique_ptr<const Node*[]> many_;
    const Node** values_ = usual_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
