#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "JSON/JSONReader.h"
#include "JSON/detail/DocumentWindow.h"
#include "JSON/detail/StructuralIndex.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/KeyPath.h"

// Part of the reader's source alone.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

inline std::vector<std::string_view> keysOf(std::string_view keyPath) {
    std::vector<std::string_view> keys;
    for (KeyPath path(keyPath);; path = KeyPath(path.rest)) {
        keys.push_back(path.first);
        if (path.isLast()) return keys;
    }
}

/// Goes through a document for the elements of one list. The dictionaries that lead to the list are gone
/// through token by token, everything else value by value. What reads a part of it answers whether it is well
/// formed.
class ElementsReader {
public:
    ElementsReader(DocumentWindow& window, std::size_t maxDepth, std::string_view keyPath,
                   JSONElementHandler& handler)
        : window_(window), depthLeft_(maxDepth), keys_(keysOf(keyPath)), handler_(handler) {}

    Outcome read() {
        if (!window_.moveOn()) return window_.failure();
        bool isOnPath = true;
        do {
            if (!(isOnPath ? valueOnPath() : window_.readValue(depthLeft_))) return window_.failure();
        } while (nextMember(isOnPath));
        const bool isAtEnd = window_.isLast() && window_.isAtEnd();
        return openDictionaries_ == 0 && isAtEnd ? Outcome::done : window_.failure();
    }

private:
    // Reads a value that all open dictionaries lead to; of a dictionary that leads on, no more than its
    // bracket.
    bool valueOnPath() {
        const bool isAtList = openDictionaries_ == keys_.size();
        if (isAtList && window_.peek() == '[') return elements();
        if (isAtList || window_.peek() != '{') return window_.readValue(depthLeft_);
        if (!open()) return false;
        ++openDictionaries_;
        isJustOpened_ = true;
        return true;
    }

    bool open() noexcept {
        if (depthLeft_ == 0) return false;
        --depthLeft_;
        window_.take();
        return true;
    }

    // Goes to the value of the next member of an open dictionary, and closes those that end before. False
    // when there is none.
    bool nextMember(bool& isOnPath) {
        while (openDictionaries_ != 0) {
            const bool isFirst = std::exchange(isJustOpened_, false) && window_.peek() != '}';
            const char token = isFirst ? ',' : window_.take();
            if (token == ',') return key(isOnPath);
            if (token != '}') return false;
            --openDictionaries_;
            ++depthLeft_;
        }
        return false;
    }

    bool key(bool& isOnPath) {
        // A window ends after a comma alone, so it holds the whole key and what its value begins with.
        if (!window_.isLast() && window_.isAtEnd() && !window_.moveOn()) return false;
        std::string_view key;
        if (!window_.readKey(key)) return false;
        isOnPath = key == keys_[openDictionaries_ - 1];
        if (isOnPath) handler_.startOver();
        return true;
    }

    bool elements() {
        if (!open()) return false;
        window_.forgetLengths();
        char token = window_.peek() == ']' ? window_.take() : ',';
        for (; token != ']'; token = window_.take()) {
            if (token != ',' || !window_.readValue(depthLeft_)) return false;
            handler_.element(window_.value());
            if (window_.isValueKept() && !window_.leaveMemory(JSONReader::kUsualWindow)) return false;
        }
        ++depthLeft_;
        return true;
    }

    DocumentWindow& window_;
    std::size_t depthLeft_;
    std::vector<std::string_view> keys_;
    JSONElementHandler& handler_;
    std::size_t openDictionaries_ = 0;  // all of them on the way to the list
    bool isJustOpened_ = false;         // the innermost one, and no member of it is read yet
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
