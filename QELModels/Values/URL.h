#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/Hash.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
struct URLAccess;
}

/// A borrowed text that is known to be a URL. A copy is a pointer and a length.
///
/// A URL is a `URI-reference` of RFC 3986, absolute or relative, the empty text included. Beyond it, `[` and
/// `]` are allowed in a query and in a fragment. A character that would need percent-encoding is refused, as
/// is a `%` without two hexadecimal digits. Nothing is normalised: two URLs are equal when their texts are.
class QELMODELS_EXPORT URLView {
public:
    /// The empty reference.
    constexpr URLView() noexcept = default;

    /// `text` as a URL; nothing if it is not a URL. The view lives as long as `text`. Takes time linear in
    /// the text's length and allocates nothing.
    static std::optional<URLView> parse(std::string_view text QELMODELS_LENT) noexcept;

    /// The text as it was parsed.
    constexpr std::string_view text() const noexcept { return {data_, size_}; }
    constexpr std::uint64_t hash() const noexcept { return detail::hashOfText(text()); }

    friend constexpr bool operator==(URLView a, URLView b) noexcept { return a.text() == b.text(); }

private:
    friend struct detail::URLAccess;
    friend class URL;

    constexpr explicit URLView(std::string_view text) noexcept : data_(text.data()), size_(text.size()) {}

    const char* data_ = "";
    std::size_t size_ = 0;
};

/// A URL that owns its text.
class QELMODELS_EXPORT URL {
public:
    /// `text` as a URL; nothing if it is not a URL as `URLView` describes it.
    static std::optional<URL> parse(std::string text) noexcept {
        if (!URLView::parse(text)) return std::nullopt;
        return URL(std::move(text));
    }

    /// The empty reference.
    URL() noexcept = default;
    /// A copy.
    explicit URL(URLView view) : text_(view.text()) {}

    /// The text as it was parsed.
    std::string_view text() const noexcept QELMODELS_LENT { return text_; }
    std::uint64_t hash() const noexcept { return detail::hashOfText(text_); }

    /// The same, lent.
    operator URLView() const noexcept QELMODELS_LENT { return URLView(text_); }

    friend bool operator==(const URL& a, const URL& b) noexcept { return a.text_ == b.text_; }

private:
    friend struct detail::URLAccess;
    explicit URL(std::string&& text) noexcept : text_(std::move(text)) {}

    std::string text_;
};

namespace detail {

/// Makes a URL of a text that is known to be one, since it was parsed before or made of a URL.
struct URLAccess {
    static constexpr URLView fromValidated(std::string_view text) noexcept { return URLView(text); }
    static URL ownedFromValidated(std::string&& text) noexcept { return URL(std::move(text)); }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels

template <>
struct std::hash<QELModels::URLView> {
    std::size_t operator()(QELModels::URLView url) const noexcept {
        return static_cast<std::size_t>(url.hash());
    }
};

template <>
struct std::hash<QELModels::URL> {
    std::size_t operator()(const QELModels::URL& url) const noexcept {
        return static_cast<std::size_t>(url.hash());
    }
};
