#include "QELModels/Values/URL.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "QELModels/Platform/detail/ASCII.h"
#include "QELModels/Platform/detail/ByteBlock.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using detail::ByteBlock;

// The parts of a URL that a character may be written in as it is. "%" is in none of these sets: `skipUntil`
// takes it together with its two digits.
using CharacterSet = std::uint8_t;
constexpr CharacterSet kScheme = 1;
constexpr CharacterSet kUserinfo = 2;
constexpr CharacterSet kRegName = 4;
constexpr CharacterSet kFirstSegment = 8;  // of a relative path: "a:b" would read as a scheme
constexpr CharacterSet kPath = 16;
constexpr CharacterSet kQueryOrFragment = 32;
constexpr CharacterSet kLetter = 64;
constexpr CharacterSet kHexDigit = 128;

constexpr std::array<CharacterSet, 256> kSetsOf = [] {
    std::array<CharacterSet, 256> sets{};
    const auto add = [&sets](std::string_view characters, unsigned added) {
        for (const char c : characters) {
            CharacterSet& entry = sets[static_cast<unsigned char>(c)];
            entry = static_cast<CharacterSet>(entry | added);
        }
    };
    constexpr unsigned kPathAndAfter = kPath | kQueryOrFragment;
    constexpr unsigned kFromUserinfoOn = kUserinfo | kRegName | kFirstSegment | kPathAndAfter;
    for (std::size_t code = 0; code < sets.size(); ++code) {
        const auto c = static_cast<char>(code);
        if (detail::isLetter(c)) add({&c, 1}, kLetter | kScheme | kFromUserinfoOn);
        if (detail::isDigit(c)) add({&c, 1}, kScheme | kFromUserinfoOn);
        if (detail::isHexDigit(c)) add({&c, 1}, kHexDigit);
    }
    add("+-.", kScheme);
    add("-._~", kFromUserinfoOn);         // the rest of unreserved
    add("!$&'()*+,;=", kFromUserinfoOn);  // sub-delims
    add(":", kUserinfo | kPathAndAfter);
    add("@", kFirstSegment | kPathAndAfter);
    add("/", kPathAndAfter);
    add("?[]", kQueryOrFragment);  // the brackets because image servers are asked with "?t[]="
    return sets;
}();

constexpr bool isIn(char c, CharacterSet set) noexcept {
    return (kSetsOf[static_cast<unsigned char>(c)] & set) != 0;
}

bool isAt(const char* p, const char* end, char c) noexcept {
    return p != end && *p == c;
}

const char* skipDigits(const char* p, const char* end) noexcept {
    while (p != end && detail::isDigit(*p))
        ++p;
    return p;
}

// Each function below answers the end of what it skips.

// All characters of the set.
const char* skipPlain(const char* p, const char* end, CharacterSet set) noexcept {
    while (p != end && isIn(*p, set))
        ++p;
    return p;
}

// Characters of the set and pct-encoded ones, up to `stop`, or beyond it by the rest of the last one.
const char* skipUntil(const char* stop, const char* p, const char* end, CharacterSet set) noexcept {
    while (p < stop) {
        if (isIn(*p, set)) {
            ++p;
        } else if (*p == '%' && end - p >= 3 && isIn(p[1], kHexDigit) && isIn(p[2], kHexDigit)) {
            p += 3;
        } else {
            break;
        }
    }
    return p;
}

// Nearly all characters of most URLs are letters, digits and a few marks. Those are skipped in blocks; the
// sets above decide about all others.

// The common characters of a path, a query or a fragment ...
struct CommonAfterHost {
    static ByteBlock in(ByteBlock block) noexcept {
        return block.isLetter() | block.isWithin('&', ';') | (block == '_') | (block == '=');
    }
};

// ... and of a host.
struct CommonInHost {
    static ByteBlock in(ByteBlock block) noexcept {
        return block.isLetter() | block.isWithin('0', '9') | block.isWithin('-', '.');
    }
};

// The common characters at `p`; in a text shorter than a block, none.
template <typename Common>
const char* skipCommon(const char* begin, const char* p, const char* end) noexcept {
    constexpr auto kBlock = static_cast<std::ptrdiff_t>(ByteBlock::kSize);
    for (; end - p >= kBlock; p += kBlock) {
        const unsigned uncommon = (~Common::in(ByteBlock(p))).bits();
        if (uncommon != 0) return p + std::countr_zero(uncommon);
    }
    if (p == end || end - begin < kBlock) return p;
    // The rest is read as part of the text's last full block.
    const unsigned uncommon = (~Common::in(ByteBlock(end - kBlock))).bits() >> (kBlock - (end - p));
    return uncommon != 0 ? p + std::countr_zero(uncommon) : end;
}

// Characters of the set, which includes the common ones, and pct-encoded ones. `begin` is the text's begin.
template <typename Common>
const char* skip(const char* begin, const char* p, const char* end, CharacterSet set) noexcept {
    for (;;) {
        p = skipCommon<Common>(begin, p, end);
        if (p == end || (!isIn(*p, set) && *p != '%')) return p;
        // One block by the sets before the next try, so that a text full of escapes is not tried at each.
        const char* const nextTry = p + std::min<std::ptrdiff_t>(end - p, ByteBlock::kSize);
        p = skipUntil(nextTry, p, end, set);
        if (p < nextTry || p == end) return p;
    }
}

// "scheme:", or nothing.
const char* skipScheme(const char* begin, const char* end) noexcept {
    constexpr std::string_view kUsual = "https:";
    if (std::string_view(begin, end).starts_with(kUsual)) return begin + kUsual.size();
    if (begin == end || !isIn(*begin, kLetter)) return begin;
    const char* const p = skipPlain(begin, end, kScheme);
    return isAt(p, end, ':') ? p + 1 : begin;
}

bool isIPv4Address(std::string_view text) noexcept {
    constexpr int kOctets = 4;
    const char* p = text.data();
    const char* const end = p + text.size();
    for (int octet = 0; octet < kOctets; ++octet) {
        if (octet > 0) {
            if (!isAt(p, end, '.')) return false;
            ++p;
        }
        const char* const afterOctet = skipDigits(p, end);
        const std::ptrdiff_t length = afterOctet - p;
        if (length < 1 || length > 3 || (length > 1 && *p == '0')) return false;
        int value = 0;
        for (; p != afterOctet; ++p)
            value = 10 * value + (*p - '0');
        if (value > 255) return false;
    }
    return p == end;
}

bool isIPv6Address(std::string_view text) noexcept {
    // The grammar's nine alternatives in one: eight groups of 16 bits, an IPv4 address at the end being two
    // of them, or at most seven and one "::".
    constexpr int kGroups = 8;
    constexpr std::ptrdiff_t kMaxDigits = 4;
    const char* p = text.data();
    const char* const end = p + text.size();
    int groups = 0;
    bool isCompressed = text.starts_with("::");
    if (isCompressed) p += 2;
    while (p != end) {
        const char* const afterGroup = skipPlain(p, end, kHexDigit);
        if (isAt(afterGroup, end, '.')) {
            if (!isIPv4Address({p, static_cast<std::size_t>(end - p)})) return false;
            groups += 2;
            break;
        }
        if (afterGroup == p || afterGroup - p > kMaxDigits) return false;
        ++groups;
        p = afterGroup;
        if (p == end) break;
        if (*p++ != ':' || p == end) return false;
        if (*p == ':') {
            if (isCompressed) return false;
            isCompressed = true;
            ++p;
        }
    }
    return isCompressed ? groups < kGroups : groups == kGroups;
}

bool isIPvFuture(std::string_view text) noexcept {
    if (text.empty() || (text.front() != 'v' && text.front() != 'V')) return false;
    const char* const end = text.data() + text.size();
    const char* const version = text.data() + 1;
    const char* const afterVersion = skipPlain(version, end, kHexDigit);
    if (afterVersion == version || !isAt(afterVersion, end, '.')) return false;
    const char* const address = afterVersion + 1;
    return address != end && skipPlain(address, end, kUserinfo) == end;
}

// "[address]", or nothing: an authority cannot end at its "[".
const char* skipIPLiteral(const char* p, const char* end) noexcept {
    const std::string_view rest(p + 1, static_cast<std::size_t>(end - p - 1));
    const std::string_view address = rest.substr(0, rest.find(']'));
    if (address.size() == rest.size() || !(isIPv6Address(address) || isIPvFuture(address))) return p;
    return p + 1 + address.size() + 1;
}

const char* skipHost(const char* begin, const char* p, const char* end) noexcept {
    return isAt(p, end, '[') ? skipIPLiteral(p, end) : skip<CommonInHost>(begin, p, end, kRegName);
}

// As much as can be an authority. What follows tells the caller whether it is one.
const char* skipAuthority(const char* begin, const char* p, const char* end) noexcept {
    const char* afterHost = skipHost(begin, p, end);
    // What looked like a host and a port is userinfo if an "@" follows.
    if (afterHost != end && *p != '[' && (*afterHost == ':' || *afterHost == '@')) {
        const char* const afterUserinfo = skip<CommonInHost>(begin, afterHost, end, kUserinfo);
        if (isAt(afterUserinfo, end, '@')) afterHost = skipHost(begin, afterUserinfo + 1, end);
    }
    return isAt(afterHost, end, ':') ? skipDigits(afterHost + 1, end) : afterHost;
}

}  // namespace

std::optional<URLView> URLView::parse(std::string_view text) noexcept {
    const char* const begin = text.data();
    const char* const end = begin + text.size();

    const char* p = skipScheme(begin, end);
    if (end - p >= 2 && p[0] == '/' && p[1] == '/') {
        p = skipAuthority(begin, p + 2, end);
        if (p != end && *p != '/' && *p != '?' && *p != '#') return std::nullopt;
    } else if (p == begin) {
        p = skipUntil(end, p, end, kFirstSegment);
        if (isAt(p, end, ':')) return std::nullopt;
    }
    p = skip<CommonAfterHost>(begin, p, end, kPath);
    if (isAt(p, end, '?')) p = skip<CommonAfterHost>(begin, p + 1, end, kQueryOrFragment);
    if (isAt(p, end, '#')) p = skip<CommonAfterHost>(begin, p + 1, end, kQueryOrFragment);
    if (p != end) return std::nullopt;
    return URLView(text);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
