#pragma once

// Documents of every kind that are whole, and each way to damage one key of them, with what there is to tell
// of each. All of it is made from the rules of the mappings, so that no key can be forgotten.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mapping/FEMRules.h"
#include "tool/Kinds.h"

namespace QELModels::test {

/// What replaces a value; without text it is missing.
struct Damage {
    std::string_view name;
    std::optional<std::string_view> json;
};

/// One line of an explanation.
struct Line {
    std::string path, property, outcome;
    friend bool operator==(const Line&, const Line&) = default;
};
using Lines = std::vector<Line>;

/// Where a document can be damaged.
struct Place {
    enum class What { rule, middleOfKeyPath, pagesList, element, unread };

    What what;
    std::string path, property;
    const FEMRule* rule = nullptr;    // of a rule
    const FEMRules* rules = nullptr;  // of a page's list and of an element
    Lines linesIfMissing = {};        // of the middle of a key path

    // In the document's text: where the member begins, with the comma before it, and its value.
    std::size_t begin = 0, value = 0, end = 0;
};

/// A document in which every rule finds what it wants. Every dictionary has one more key, which no rule
/// reads; every list has a first element in which there is nothing else.
struct WholeDocument {
    explicit WholeDocument(const tool::Kind& kind);

    const std::string& json() const { return text_; }
    std::string damagedJSON(const Place& place, const Damage& damage) const;
    /// The whole explanation of the damaged document; a fault is the last line.
    Lines linesOf(const Place& place, const Damage& damage) const;

    Lines lines;   ///< of the rules
    Lines unread;  ///< of the keys that no rule reads, which follow them
    std::vector<Place> places;

private:
    using Write = std::function<void()>;  // writes a value at the end of the text

    void add(Place place, std::string_view key, const Write& write);
    void addAtKeyPath(Place place, std::string path, std::string_view keyPath, const Write& write);
    void writeDictionary(const std::string& path, const Write& writeMembers);
    void writeList(const std::string& path, const std::string& property, const FEMRules& rules);
    void addMembers(const std::string& path, const std::string& property, const FEMRules& rules);
    std::string valueFor(const FEMRule& rule);

    std::string text_;
    int count_ = 0;
};

/// A value missing, null, and of every kind.
const std::vector<Damage>& allDamages();
/// Whether a document can be damaged like that: an element that is missing is another list.
inline bool applies(const Damage& damage, const Place& place) {
    return damage.json || place.what != Place::What::element;
}

}  // namespace QELModels::test
