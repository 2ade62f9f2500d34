#include "QELModels/Models/QELEditorial+Utilities.h"

#include <limits>
#include <string_view>

#include "QELModels/Platform/detail/ASCII.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

constexpr std::string_view kCategoryPrefix = "category-";

// Reads a signed decimal integer from characters that come one by one. It saturates at the limits of 64 bits.
class IntegerScanner {
public:
    // False once nothing that follows can change the value.
    bool take(char c) noexcept {
        if (detail::isDigit(c)) {
            state_ = State::digits;
            add(c - '0');
            return true;
        }
        if (state_ != State::blanks) return false;
        if (detail::isWhiteSpace(c)) return true;
        negative_ = c == '-';
        state_ = State::sign;
        return c == '-' || c == '+';
    }
    std::int64_t value() const noexcept { return value_; }

private:
    enum class State { blanks, sign, digits };
    static constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    static constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

    void add(int digit) noexcept {
        if (negative_)
            value_ = value_ < (kLeast + digit) / 10 ? kLeast : value_ * 10 - digit;
        else
            value_ = value_ > (kMost - digit) / 10 ? kMost : value_ * 10 + digit;
    }

    State state_ = State::blanks;
    bool negative_ = false;
    std::int64_t value_ = 0;
};

}  // namespace

std::int64_t categoryIdentifier(const QELEditorial& editorial) noexcept {
    const auto key = editorial.key();
    if (!key || key->find(kCategoryPrefix) == std::string_view::npos) return -1;
    IntegerScanner scanner;
    for (std::string_view rest = *key; !rest.empty();) {
        if (rest.starts_with(kCategoryPrefix)) {
            rest.remove_prefix(kCategoryPrefix.size());
            continue;
        }
        if (!scanner.take(rest.front())) break;
        rest.remove_prefix(1);
    }
    return scanner.value();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
