#pragma once

// What the tests share and the library alone is needed for: values at paths, zones, and changes of the
// process that last as long as an object lives.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Process/Clock.h"
#include "QELModels/Process/Log.h"
#include "QELModels/Records/detail/ObjectAccess.h"
#include "QELModels/Records/detail/PropertySlot.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels::test {

/// The value at a path such as "assetAdditional.chapters[2].title", read by property names.
inline Value at(const Object& record, std::string_view path) {
    const std::size_t end = path.find_first_of(".[");
    const Property* property = record.isa().property(path.substr(0, end));
    if (property == nullptr) throw std::invalid_argument("no property at " + std::string(path));
    const Value value = property->value(record);
    if (end == std::string_view::npos || value.isNull()) return value;
    if (path[end] == '.') return at(*value.record(), path.substr(end + 1));
    const auto index = static_cast<std::size_t>(std::atoi(path.data() + end + 1));
    const Object* element = value.list()->objects()[index];
    const std::size_t dot = path.find('.', end);
    return dot == std::string_view::npos ? Value(element) : at(*element, path.substr(dot + 1));
}

/// A record with a single value, as the engine makes it; null when the property does not take the value.
template <class Model>
Ref<Model> recordWith(std::string_view property, const Value& value) {
    detail::BlockWriter writer(detail::ObjectAccess::size(Model::objectClass));
    Object* record = detail::ObjectAccess::construct(Model::objectClass, writer);
    const bool isTaken = detail::setValue(*Model::objectClass.property(property), *record, value, writer);
    writer.finish();
    const auto made = Ref<Model>::adopt(static_cast<const Model*>(record));
    return isTaken ? made : nullptr;
}

/// A copy in a heap block of exactly its size, so that an address sanitizer sees one byte too many.
struct Exact {
    explicit Exact(std::string_view text) : size(text.size()), bytes(new char[size]) {
        std::copy(text.begin(), text.end(), bytes.get());
    }
    std::string_view view() const { return {bytes.get(), size}; }
    std::size_t size;
    std::unique_ptr<char[]> bytes;
};

/// What a thread asks of `operator new`, which the test program has its own of, in every guise.
struct Requests {
    std::size_t made = 0;
    std::ptrdiff_t pieces = 0;  ///< that it was given, less those that it gave back
    /// The numbers of the requests that fail, the first one made being 1; whether one has failed.
    std::size_t firstFailing = SIZE_MAX, lastFailing = 0;
    bool haveFailed = false;
};
extern constinit thread_local Requests requests;

/// Hands out memory and knows all that is still out; fails at a request of choice.
class CountingZone final : public Zone {
public:
    static constexpr std::size_t kNever = static_cast<std::size_t>(-1);
    explicit CountingZone(std::size_t failAt = kNever) : failAt_(failAt) {}

    void* allocate(std::size_t bytes) override {
        if (requests_++ == failAt_) throw std::bad_alloc();
        std::unique_ptr<char[]> memory(new char[bytes]);
        sizes_[memory.get()] = bytes;
        bytes_ += bytes;
        return memory.release();
    }
    void deallocate(void* memory, std::size_t bytes) noexcept override {
        const auto out = sizes_.find(memory);
        if (out == sizes_.end() || out->second != bytes) std::abort();
        bytes_ -= bytes;
        sizes_.erase(out);
        delete[] static_cast<char*>(memory);
    }
    std::size_t requests() const { return requests_; }
    std::size_t pieces() const { return sizes_.size(); }
    std::size_t bytes() const { return bytes_; }

private:
    std::size_t failAt_;
    std::size_t requests_ = 0;
    std::size_t bytes_ = 0;
    std::map<void*, std::size_t> sizes_;
};

/// Takes the lines of the log while it lives.
class LogLines {
public:
    LogLines() {
        Log::setSink([this](std::string_view line) { lines.emplace_back(line); });
    }
    ~LogLines() { Log::setSink({}); }
    std::vector<std::string> lines;
};

/// Looks on and says nothing.
struct Bystander final : FEMObserver {
    void ruleApplied(const FEMEvent&) override {}
};

/// Stops the clock while it lives.
class StoppedClock {
public:
    explicit StoppedClock(double seconds) {
        Clock::setSource([seconds] { return dateFromSecondsSince1970(seconds); });
    }
    ~StoppedClock() { Clock::setSource({}); }
};

/// Answers a text of its own for whatever it is given.
class Stamp final : public ValueTransformer {
public:
    explicit Stamp(std::string text) : text_(std::move(text)) {}
    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::text; }
    Value transformedValue(std::optional<RepresentationView>) const override { return Value::text(text_); }

private:
    std::string text_;
};

/// Puts another transformer under a name while it lives; null takes the name away.
class Replaced {
public:
    Replaced(std::string_view name, const ValueTransformer* transformer)
        : name_(name), former_(valueTransformerForName(name)) {
        registerValueTransformer(transformer, name);
    }
    ~Replaced() { registerValueTransformer(former_, name_); }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

private:
    std::string_view name_;
    const ValueTransformer* former_;
};

}  // namespace QELModels::test
