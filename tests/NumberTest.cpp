// Numbers compare, hash and convert by their exact mathematical value, and their text is the shortest that
// reads back, in the layout of ECMAScript.

#include <QELModels/Values/Number.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <compare>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/Doubles.h"

namespace {

using QELModels::Number;
using QELModels::test::kInfinity;
using QELModels::test::kNaN;

constexpr std::int64_t kMaxInt = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMinInt = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t kMaxUnsigned = std::numeric_limits<std::uint64_t>::max();

static_assert(sizeof(Number) == 16 && std::is_trivially_copyable_v<Number>);
static_assert(!std::is_convertible_v<const char*, Number> && !std::is_convertible_v<char, Number> &&
              !std::is_convertible_v<char16_t, Number>);
static_assert(Number(true).isBoolean() && !Number(1).isBoolean() && !Number(1.0).isBoolean());
static_assert(Number(9007199254740993) != 9007199254740992.0 &&
              Number(9007199254740993) > 9007199254740992.0);

// Wide enough for 64-bit integers and for doubles alike, on most machines.
using LongDouble = long double;
constexpr bool kIsExact = std::numeric_limits<LongDouble>::digits >= 64;

struct Sample {
    template <typename T>
    Sample(T value) : number(value), exact(static_cast<LongDouble>(value)) {}

    Number number;
    LongDouble exact;
};

// Values around every bound there is, made in every way that has room for them.
std::vector<Sample> awkwardSamples() {
    std::vector<Sample> samples{true, false};
    for (const double value : {0.0, 0.5, 1.5, DBL_TRUE_MIN, DBL_MAX, kInfinity, kNaN}) {
        samples.insert(samples.end(), {value, -value});
    }
    constexpr std::uint64_t kOne = 1;
    for (const std::uint64_t bound : {0 * kOne, 3 * kOne, kOne << 53, (kOne << 62) + 1, kOne << 63}) {
        for (const std::uint64_t bits : {bound - 2, bound - 1, bound, bound + 1}) {
            const auto real = static_cast<double>(bits);
            samples.insert(samples.end(), {bits, static_cast<std::int64_t>(bits), real, -real});
            samples.insert(samples.end(), {std::nextafter(real, kInfinity), std::nextafter(real, 0.0)});
        }
    }
    return samples;
}

void expectOrderOf(const Sample& a, const Sample& b) {
    ASSERT_EQ(a.number == b.number, a.exact == b.exact) << a.exact << " and " << b.exact;
    ASSERT_TRUE((a.number <=> b.number) == (a.exact <=> b.exact)) << a.exact << " and " << b.exact;
    if (a.exact == b.exact) {
        ASSERT_EQ(a.number.hash(), b.number.hash()) << a.exact;
    }
}

TEST(Number, ComparesByExactValue) {
    if (!kIsExact) GTEST_SKIP() << "nothing here is wide enough to compare with";
    const std::vector<Sample> samples = awkwardSamples();
    for (const Sample& a : samples) {
        for (const Sample& b : samples)
            expectOrderOf(a, b);
    }
}

RC_GTEST_PROP(Number, ComparesWithItsNearestDoublesByExactValue, (std::int64_t low, std::uint64_t bits)) {
    if (!kIsExact) return;
    for (const std::uint64_t some : {static_cast<std::uint64_t>(low), bits, bits >> 9}) {
        const auto integer = static_cast<std::int64_t>(some);
        const auto real = static_cast<double>(integer);
        expectOrderOf(integer, some);
        expectOrderOf(integer, static_cast<double>(some));
        for (const double other : {real, std::nextafter(real, kInfinity), real + 0.5})
            expectOrderOf(integer, other);
    }
}

TEST(Number, HashesSpread) {
    std::set<std::uint64_t> lowBits;  // which hash tables look at
    for (int i = 0; i < 1000; ++i)
        for (const Number number : {Number(i - 500), Number(i + 0.25), Number(1e300 * (i + 1))})
            lowBits.insert(number.hash() & 0xFFFF);
    EXPECT_GT(lowBits.size(), 2700u);
}

TEST(Number, Converts) {
    struct Row {
        Number number;
        std::int64_t integer;
        double real;
        bool boolean;
    };
    const Row rows[] = {
        {Number(), 0, 0, false},
        {true, 1, 1, true},
        {kMaxInt, kMaxInt, 0x1p63, true},
        {kMinInt, kMinInt, -0x1p63, true},
        {std::uint64_t{1} << 63, kMaxInt, 0x1p63, true},
        {kMaxUnsigned, kMaxInt, 0x1p64, true},
        {1.99, 1, 1.99, true},
        {-1.99, -1, -1.99, true},
        {0.25, 0, 0.25, true},
        {-0.0, 0, 0, false},
        {0x1p63, kMaxInt, 0x1p63, true},
        {0x1.fffffffffffffp62, 9223372036854774784, 0x1.fffffffffffffp62, true},
        {-0x1p63, kMinInt, -0x1p63, true},
        {kInfinity, kMaxInt, kInfinity, true},
        {-kInfinity, kMinInt, -kInfinity, true},
        {2.5F, 2, 2.5, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.number.int64Value(), row.integer) << row.number.toString();
        EXPECT_EQ(row.number.doubleValue(), row.real) << row.number.toString();
        EXPECT_EQ(row.number.boolValue(), row.boolean) << row.number.toString();
    }
    EXPECT_EQ(Number(kNaN).int64Value(), 0);
    EXPECT_TRUE(Number(kNaN).boolValue());
    EXPECT_FALSE(Number(kNaN) == Number(kNaN));
}

TEST(Number, HasTheTextOfECMAScript) {
    const std::pair<Number, std::string_view> rows[] = {
        {Number(), "0"},
        {true, "1"},
        {kMinInt, "-9223372036854775808"},
        {kMaxUnsigned, "18446744073709551615"},
        {-0.0, "0"},
        {-1.5, "-1.5"},
        {999999999999999900000.0, "999999999999999900000"},
        {1e21, "1e+21"},
        {-123456789012345680000.0 * 10, "-1.2345678901234568e+21"},
        {1e-6, "0.000001"},
        {-1.2345678901234567e-6, "-0.0000012345678901234567"},
        {1e-7, "1e-7"},
        {DBL_TRUE_MIN, "5e-324"},
        {-DBL_MAX, "-1.7976931348623157e+308"},
        {kNaN, "NaN"},
        {kInfinity, "Infinity"},
        {-kInfinity, "-Infinity"},
    };
    for (const auto& [number, text] : rows) {
        EXPECT_EQ(number.toString(), text);
        EXPECT_LE(text.size(), Number::kMaxChars);
    }
}

// The definition, word for word: the fewest digits s that read back as the value s * 10^(n - k), k of them
// ...
std::string textByDefinition(double value) {
    std::array<char, 40> buffer{};
    int k = 0;
    do {
        ++k;
        std::snprintf(buffer.data(), buffer.size(), "%.*e", k - 1, std::fabs(value));
    } while (std::strtod(buffer.data(), nullptr) != std::fabs(value));
    std::string s(buffer.data());
    const int n = std::atoi(s.c_str() + s.find('e') + 1) + 1;
    s.resize(s.find('e'));
    if (k > 1) s.erase(1, 1);

    // ... and where the point goes.
    const auto zeros = [](int count) { return std::string(static_cast<std::size_t>(count), '0'); };
    const std::string sign = value < 0 ? "-" : "";
    const std::string exponent = (n > 0 ? "e+" : "e-") + std::to_string(std::abs(n - 1));
    if (k <= n && n <= 21) return sign + s + zeros(n - k);
    if (0 < n && n <= 21) return sign + s.insert(static_cast<std::size_t>(n), ".");
    if (-6 < n && n <= 0) return sign + "0." + zeros(-n) + s;
    if (k == 1) return sign + s + exponent;
    return sign + s.insert(1, ".") + exponent;
}

void expectTextByDefinition(double value) {
    if (!std::isfinite(value) || value == 0) return;
    const std::string text = Number(value).toString();
    ASSERT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    // Next to a power of two fewer digits may read back than the nearest ones of that length would.
    const std::string byDefinition = textByDefinition(value);
    if (text.size() >= byDefinition.size()) {
        ASSERT_EQ(text, byDefinition);
    }
}

TEST(Number, HasTheShortestTextAtEveryMagnitude) {
    for (int exponent = -330; exponent <= 308; ++exponent) {
        for (const char* const digits : {"1", "-9", "1.5", "9.999999999999999", "-1.2345678901234567"}) {
            const double value = std::strtod((digits + ("e" + std::to_string(exponent))).c_str(), nullptr);
            expectTextByDefinition(value);
            expectTextByDefinition(std::nextafter(value, kInfinity));
        }
    }
}

RC_GTEST_PROP(Number, HasTheShortestTextForAnyDouble, (std::uint64_t bits, std::int32_t integer)) {
    // Generated integers are small: hashing makes random bits of them.
    expectTextByDefinition(std::bit_cast<double>(QELModels::detail::hashOfWord(bits)));
    expectTextByDefinition(integer);
    expectTextByDefinition(integer / 1000.0);
}

}  // namespace
