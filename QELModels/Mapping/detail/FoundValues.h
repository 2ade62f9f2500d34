#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A node and the block that it lies in; null where a value is missing.
struct FoundValue {
    const RepresentationNode* node;
    const Block* block;

    RepresentationView view() const noexcept { return RepresentationView::at(node, block); }
};

/// Calls `take(key, value)`, with the entry of a key and a node, for each first key of constant rules that a
/// dictionary has, in the order of its members.
template <class Take>
void forEachFound(const RuleKeys& table, const RepresentationNode* dictionary, const Take& take) {
    // What is written could be among the rules, for all that the compiler knows: so these are read first.
    const RuleKeys known = table;
    const RepresentationNode* member = dictionary + 1;
    for (std::uint32_t left = dictionary->size; left != 0; --left) {
        const RepresentationNode* const value = member + 1;
        if (const RuleKey* key = known.find(*member); key != nullptr) take(*key, value);
        member = value + value->extent();
    }
}

/// What each first key of a mapping leads to in one dictionary.
class FoundValues {
public:
    /// Values that rules take as they are go to `store(key, value)` as soon as their keys are found, if the
    /// rules are applied that way; the others wait for their rules.
    template <class Store>
    FoundValues(const FEMRules& rules, RepresentationView dictionary, bool storesAtOnce, const Store& store)
        : block_(dictionary.block()) {
        const RepresentationNode* const node = dictionary.node();
        const RuleKeys& table = rules.table;
        if (isWalked(table, node)) {
            if (storesAtOnce) {
                makeRoom(table.orderedKeys);
                forEachFound(table, node, [&](const RuleKey& key, const RepresentationNode* value) {
                    if (key.isStoredAtOnce())
                        store(key, value);
                    else
                        values_[table.position(key)] = value;
                });
            } else {
                makeRoom(rules.keys.size());
                forEachFound(table, node, [&](const RuleKey& key, const RepresentationNode* value) {
                    values_[table.position(key)] = value;
                });
            }
            return;
        }
        makeRoom(rules.keys.size());
        for (std::size_t i = 0; i < rules.keys.size(); ++i)
            values_[i] = dictionary.nodeForKey(rules.keys[i]);
        if (!storesAtOnce) return;
        for (const RuleKey& key : table.entries) {
            if (!key.isStoredAtOnce()) continue;
            const RepresentationNode* value = values_[table.position(key)];
            if (value != nullptr) store(key, value);
        }
    }
    FoundValues(const FoundValues&) = delete;
    FoundValues& operator=(const FoundValues&) = delete;

    /// What rules read, as a value of its own that a loop over them has at hand.
    struct Lookup {
        const RepresentationNode* const* values;
        const Block* block;

        /// Links are left for the reader to follow.
        FoundValue at(const FEMRule& rule) const {
            const RepresentationNode* node = values[rule.key];
            if (node == nullptr || !rule.hasFurtherKeys()) [[likely]]
                return {node, block};
            const auto value = RepresentationView::at(node, block).valueForKeyPath(rule.furtherKeys);
            return value ? FoundValue{value->node(), value->block()} : FoundValue{nullptr, nullptr};
        }
    };
    Lookup lookup() const noexcept { return {values_, block_}; }

    /// About how many bytes of text the rules read in a dictionary.
    static std::size_t textBytes(const FEMRules& rules, RepresentationView dictionary);

private:
    // Up to this many first keys are found without an allocation; all mappings of the library have fewer.
    static constexpr std::size_t kUsualKeys = 32;
    // A dictionary with many more members than there are keys to find is asked for each key instead.
    static constexpr std::size_t kMostMembersWalked = 128;
    static constexpr std::size_t kKeysAtOnce = 8;
    static_assert(kUsualKeys % kKeysAtOnce == 0);

    static bool isWalked(const RuleKeys& table, const RepresentationNode* dictionary) noexcept {
        return !table.slots.empty() && dictionary->size <= kMostMembersWalked;
    }

    // Values are missing until they are found.
    void makeRoom(std::size_t count) {
        if (count > kUsualKeys) {
            many_ = std::make_unique<const RepresentationNode*[]>(count);
            values_ = many_.get();
            return;
        }
        // Some at a time, one by one: the instruction that compilers choose for a loop takes longer to begin.
        for (std::size_t i = 0; i < count; i += kKeysAtOnce)
            clear(usual_ + i, std::make_index_sequence<kKeysAtOnce>{});
    }
    template <std::size_t... I>
    static void clear(const RepresentationNode** values, std::index_sequence<I...>) noexcept {
        ((values[I] = nullptr), ...);
    }

    const Block* block_;
    const RepresentationNode* usual_[kUsualKeys];
    std::unique_ptr<const RepresentationNode*[]> many_;
    const RepresentationNode** values_ = usual_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
