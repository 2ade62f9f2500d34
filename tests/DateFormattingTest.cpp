// Durations and countdowns have the agreed texts for every double: words, zero padding, the wrap at a day,
// negative and enormous times.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "QELModels/Functions/QELModelFunctions.h"
#include "QELModels/Functions/QELModels_vers.h"
#include "tests/Doubles.h"

namespace QELModels {
namespace {

using test::kInfinity;
using test::kNaN;

TEST(DateFormatting, KnownTimes) {
    struct Row {
        double seconds;
        std::string_view countdown, clock, named;
    };
    // -9223372036854775808 is 106751991167300 days, 15 h, 30 min and 8 s before zero.
    constexpr Row rows[] = {
        {0, "00 sekunder", "00:00", "00m00s"},
        {1, "01 sekund", "00:01", "00m01s"},
        {61, "01 minutt og 01 sekund", "01:01", "01m01s"},
        {3605, "01 time, 00 minutter og 05 sekunder", "01:00:05", "01h00m05s"},
        {7261, "02 timer, 01 minutt og 01 sekund", "02:01:01", "02h01m01s"},
        {86400, "01 dag, 00 timer, 00 min og 00 sek", "00:00", "00m00s"},
        {90000, "01 dag, 01 time, 00 min og 00 sek", "01:00:00", "01h00m00s"},
        {176461, "02 dager, 01 time, 01 min og 01 sek", "01:01:01", "01h01m01s"},
        {8640000, "100 dager, 00 timer, 00 min og 00 sek", "00:00", "00m00s"},
        {-0.9, "00 sekunder", "00:00", "00m00s"},
        {-1, "18446744073709551615 sekunder", "00:18446744073709551615", "00m18446744073709551615s"},
        {-90,
         "18446744073709551615 minutter og 18446744073709551586 sekunder",
         "18446744073709551615:18446744073709551586",
         "18446744073709551615m18446744073709551586s"},
        {kNaN, "00 sekunder", "00:00", "00m00s"},
        {kInfinity, "106751991167300 dager, 15 timer, 30 min og 07 sek", "15:30:07", "15h30m07s"},
        {-kInfinity,
         "18446637321718384316 dager, 18446744073709551601 timer, 18446744073709551586 min og "
         "18446744073709551608 sek",
         "18446744073709551601:18446744073709551586:18446744073709551608",
         "18446744073709551601h18446744073709551586m18446744073709551608s"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.seconds);
        EXPECT_EQ(NSStringRepresentingTimeLeftUntilLive(row.seconds), row.countdown);
        EXPECT_EQ(NSStringFromMovieDuration(row.seconds), row.clock);
        EXPECT_EQ(NSStringWithNamedSeparatorsFromMovieDuration(row.seconds), row.named);
    }
}

TEST(DateFormatting, PartsOfATime) {
    EXPECT_EQ(QELTimeDifferenceFromSeconds(90061.7), (QELTimeDifference{1, 1, 1, 1}));
    EXPECT_EQ(QELTimeDifferenceFromSeconds(176523), (QELTimeDifference{2, 1, 2, 3}));
    EXPECT_EQ(QELTimeDifferenceFromSeconds(-176523.9), (QELTimeDifference{-2, -1, -2, -3}));
    EXPECT_EQ(QELTimeDifferenceFromSeconds(0x1p63), QELTimeDifferenceFromSeconds(kInfinity));
    EXPECT_NE(QELTimeDifferenceFromSeconds(std::nextafter(0x1p63, 0.0)),
              QELTimeDifferenceFromSeconds(0x1p63));
}

// The same texts, written out form by form.
struct Literal {
    std::uint64_t days, hours, minutes, seconds;

    static Literal of(double time) {
        const std::int64_t total = std::isnan(time)  ? 0
                                   : time >= 0x1p63  ? std::numeric_limits<std::int64_t>::max()
                                   : time <= -0x1p63 ? std::numeric_limits<std::int64_t>::min()
                                                     : static_cast<std::int64_t>(time);
        const std::int64_t days = total / 86400;
        const std::int64_t hours = (total - days * 86400) / 3600;
        const std::int64_t minutes = (total - days * 86400 - hours * 3600) / 60;
        const auto bits = [](std::int64_t part) { return static_cast<std::uint64_t>(part); };
        return {
            bits(days), bits(hours), bits(minutes), bits(total - (days * 24 + hours) * 3600 - minutes * 60)};
    }

    static std::string two(std::uint64_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }
    static std::string counted(std::uint64_t number, const char* one, const char* many) {
        return two(number) + (number == 1 ? one : many);
    }

    std::string countdown() const {
        const std::string hour = counted(hours, " time, ", " timer, ");
        if (days != 0)
            return counted(days, " dag, ", " dager, ") + hour + two(minutes) + " min og " + two(seconds) +
                   " sek";
        const std::string minute = counted(minutes, " minutt og ", " minutter og ");
        const std::string second = counted(seconds, " sekund", " sekunder");
        return (hours != 0 ? hour : "") + (hours != 0 || minutes != 0 ? minute : "") + second;
    }
    std::string named() const {
        return (hours != 0 ? two(hours) + "h" : "") + two(minutes) + "m" + two(seconds) + "s";
    }
    std::string clock() const {
        return (hours != 0 ? two(hours) + ":" : "") + two(minutes) + ":" + two(seconds);
    }
};

bool readsAsWrittenOut(double time) {
    const Literal literal = Literal::of(time);
    return NSStringRepresentingTimeLeftUntilLive(time) == literal.countdown() &&
           NSStringWithNamedSeparatorsFromMovieDuration(time) == literal.named() &&
           NSStringFromMovieDuration(time) == literal.clock();
}

// Every carry and every singular is in this range.
TEST(DateFormatting, EverySecondOfTwoDaysEitherSideOfNow) {
    for (int second = -2 * 86400 - 3662; second <= 2 * 86400 + 3662; ++second)
        ASSERT_TRUE(readsAsWrittenOut(second)) << second;
}

RC_GTEST_PROP(DateFormatting, AnyDouble, (std::uint64_t bits, std::int64_t second)) {
    RC_ASSERT(readsAsWrittenOut(std::bit_cast<double>(bits)));
    RC_ASSERT(readsAsWrittenOut(static_cast<double>(second)));
}

TEST(StreamTypes, HaveTheWordsOfDocuments) {
    EXPECT_EQ(NSStringFromQELStreamType(QELStreamTypeVod), "vod");
    EXPECT_EQ(NSStringFromQELStreamType(QELStreamTypeWasLive), "wasLive");
    EXPECT_EQ(NSStringFromQELStreamType(QELStreamTypeLive), "live");
    for (const std::int64_t other :
         {std::int64_t{3}, std::int64_t{-1}, std::int64_t{1} << 32, std::numeric_limits<std::int64_t>::min()})
        EXPECT_EQ(NSStringFromQELStreamType(static_cast<QELStreamType>(other)), "") << other;
}

TEST(Version, HasANumberAndAnIdentification) {
    EXPECT_EQ(QELModelsVersionNumber, 1.0);
    EXPECT_STREQ(QELModelsVersionString, "@(#)PROGRAM:QELModels  PROJECT:QELModels-1\n");
}

}  // namespace
}  // namespace QELModels
