#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Where the result of a map rule goes: one property of a record that is being made. A rule that puts nothing
/// there, or null, has refused.
class QELMODELS_EXPORT PropertyWriter {
public:
    enum class Result : std::uint8_t {
        nothing,   ///< null, or nothing was put
        filled,    ///< the property has a value
        wrongKind  ///< what was put does not fit the property
    };

    PropertyWriter(const Property& property, Object& object, BlockWriter& writer) noexcept
        : property_(property), object_(object), writer_(writer) {}
    PropertyWriter(const PropertyWriter&) = delete;
    PropertyWriter& operator=(const PropertyWriter&) = delete;

    /// Any value; the record keeps what it lies in. Like all that puts a text here, it throws
    /// `std::length_error` for one of 4 GB or more.
    void put(const Value& value);
    void put(Number number);
    void put(Date date);
    /// A text and a URL that are only lent: they are copied, unless the record keeps what they lie in.
    void putText(std::string_view text) { putCopy(PropertyKind::text, text); }
    void putURL(URLView url) { putCopy(PropertyKind::url, url.text()); }
    /// The same for a URL that lies in a block, as all texts of a document do.
    void putURLOfBlock(URLView url) {
        if (accepts(PropertyKind::url)) setText(writer_.keepTextOfBlock(url.text()));
    }

    /// Whether a lent text is kept where it is.
    bool mayStay(std::string_view text) const noexcept { return writer_.isBorrowed(text); }
    /// Room for a text of at most `bytes` bytes, so that it is written where it stays; `putReserved` says how
    /// many it has become.
    char* reserveText(std::size_t bytes) { return writer_.reserve(bytes); }
    void putReserved(std::size_t bytes) {
        const std::string_view text(writer_.reserved(), bytes);
        if (!accepts(PropertyKind::text)) return;
        writer_.commit(bytes);
        setText(text);
    }

    Result result() const noexcept { return result_; }

private:
    bool accepts(PropertyKind kind) noexcept {
        result_ = property_.kind == kind ? Result::filled : Result::wrongKind;
        return result_ == Result::filled;
    }
    void setText(std::string_view text) { property_.slot<TextSlot>(object_) = TextSlot(text); }
    void putCopy(PropertyKind kind, std::string_view text) {
        if (accepts(kind)) setText(writer_.keepText(text));
    }

    const Property& property_;
    Object& object_;
    BlockWriter& writer_;
    Result result_ = Result::nothing;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
