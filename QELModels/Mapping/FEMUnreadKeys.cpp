#include "QELModels/Mapping/FEMUnreadKeys.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QELModels/Platform/KeyPath.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

using detail::RepresentationAccess;

namespace {

using Node = detail::RepresentationNode;

// Which of the mapping's first keys a key is; their number when it is none of them.
std::size_t positionOf(const Node& key, const FEMRules& rules) {
    if (rules.table.slots.empty()) return rules.positionOf(key.string());
    const detail::RuleKey* found = rules.table.find(key);
    return found != nullptr ? rules.table.position(*found) : rules.keys.size();
}

class Walk {
public:
    explicit Walk(const FEMUnreadKeys::Visit& visit) : visit_(visit) {}

    void from(RepresentationView document, std::string_view keyPath, const FEMRules& rules, bool toMany) {
        readers_.push_back({keyPath.empty() ? std::string_view() : keyPath, &rules, toMany});
        lookAt(document, 0, FEMPath());
    }

private:
    // Who reads a value: one that has further keys to follow, or one that has arrived and goes on by rules.
    struct Reader {
        std::string_view furtherKeys;  // null data: it has arrived
        const FEMRules* rules;
        bool toMany;

        bool hasArrived() const { return furtherKeys.data() == nullptr; }
    };

    enum class Reading : std::uint8_t { none, inPart, whole };

    // The readers of a value are those on the stack from `first` on.
    void lookAt(RepresentationView value, std::size_t first, const FEMPath& at) {
        const bool isArray = value.isArray();
        bool isForElements = false;
        for (std::size_t i = first; i < readers_.size(); ++i) {
            if (!readers_[i].hasArrived()) continue;
            if (readers_[i].toMany != isArray) return;  // of the wrong kind, and read
            isForElements = isArray;
        }
        if (!isArray) return lookInto(value, first, at);
        if (!isForElements) return;
        std::size_t index = 0;
        for (const RepresentationView element : value.elements())
            lookInto(element, first, FEMPath(at, index++));
    }

    void lookInto(RepresentationView dictionary, std::size_t first, const FEMPath& at) {
        if (!dictionary.isDictionary() || depth_ == kMostLevels) return;
        ++depth_;
        const std::size_t last = readers_.size();
        const Node* key = RepresentationAccess::node(dictionary) + 1;
        for (std::size_t left = dictionary.size(); left != 0; --left) {
            const Reading reading = pushReaders(*key, first, last);
            if (reading != Reading::whole) {
                const RepresentationView value =
                    RepresentationAccess::at(key->value(), RepresentationAccess::block(dictionary));
                const FEMPath path = FEMPath::ofKey(at, key->string());
                if (reading == Reading::none)
                    visit_(path, value);
                else
                    lookAt(value, last, path);
            }
            readers_.resize(last);
            key = key->nextMember();
        }
        --depth_;
    }

    // Puts on the stack who of the readers from `first` to `last`, which read a dictionary, go on to the
    // value at one of its keys.
    Reading pushReaders(const Node& key, std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) {
            const Reader reader = readers_[i];  // a copy: the stack grows
            if (reader.hasArrived()) {
                if (!pushRules(key, *reader.rules)) return Reading::whole;
            } else if (const KeyPath path(reader.furtherKeys); path.first == key.string()) {
                readers_.push_back({path.rest, reader.rules, reader.toMany});
                if (reader.rules == nullptr && path.isLast()) return Reading::whole;
            }
        }
        return readers_.size() == last ? Reading::none : Reading::inPart;
    }

    // The same for rules. False when one of them reads all of the value.
    bool pushRules(const Node& key, const FEMRules& rules) {
        if (rules.inherited != nullptr && !pushRules(key, *rules.inherited)) return false;
        const std::size_t position = positionOf(key, rules);
        for (const FEMRule& rule : rules.attributes) {
            if (rule.key != position) continue;
            if (!rule.hasFurtherKeys()) return false;
            readers_.push_back({rule.furtherKeys, nullptr, false});
        }
        for (const FEMRule& rule : rules.relationships)
            if (rule.key == position)
                readers_.push_back({rule.furtherKeys, &rule.nestedRules(), rule.toMany});
        return true;
    }

    // Rules lead as deep as a document goes only where a class holds itself.
    static constexpr std::size_t kMostLevels = 1024;

    const FEMUnreadKeys::Visit& visit_;
    std::size_t depth_ = 0;
    std::vector<Reader> readers_;
};

}  // namespace

void FEMUnreadKeys::inObject(RepresentationView document, std::string_view keyPath, const FEMRules& rules,
                             const Visit& visit) {
    Walk(visit).from(document, keyPath, rules, false);
}

void FEMUnreadKeys::inCollection(RepresentationView document, std::string_view keyPath, const FEMRules& rules,
                                 const Visit& visit) {
    Walk(visit).from(document, keyPath, rules, true);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
