#include "base/Numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/Fault.h"
#include "tests/unit/base/Faults.h"

namespace quillon {
namespace {

TEST(Numbers, TellsANumberFromAText) {
    for (const char* text : {"1", " 1 ", "+1", "-1", ".5", "5.", "1e3", "1E+3", "-.5e-2", "007"}) {
        EXPECT_TRUE(isNumeric(text)) << text;
    }
    for (const char* text : {"", "  ", ".", "-", "+-1", "1 2", "1,5", "0x10", "1e", "e3", "1e+", "\t1", "1\r",
                             "inf", "nan", "12V", "--1", "1.2.3"}) {
        EXPECT_FALSE(isNumeric(text)) << text;
        EXPECT_EQ(faultOf([&] { (void)toDouble(text); }), Fault::kTypeMismatch) << text;
    }
}

TEST(Numbers, RoundsToTheNearestIntegerTiesToEven) {
    struct Row {
        double value;
        std::int16_t nearest;
    };
    for (const auto& [value, nearest] : {Row{0.5, 0}, Row{1.5, 2}, Row{2.5, 2}, Row{-0.5, 0}, Row{-1.5, -2},
                                         Row{0.4999, 0}, Row{32767.4, 32767}, Row{-32768.5, -32768}}) {
        EXPECT_EQ(toInt16(value), nearest) << value;
        EXPECT_EQ(toInt32(value), nearest) << value;
    }
    EXPECT_EQ(toInt16(" 2.5e1 "), 25);
    EXPECT_EQ(toInt32("2147483647.4"), 2147483647);
    EXPECT_EQ(toInt32("-2147483648"), std::numeric_limits<std::int32_t>::min());
}

TEST(Numbers, RefusesWhatDoesNotFit) {
    for (const char* text : {"32767.5", "-32769", "65536", "1e30"}) {
        EXPECT_EQ(faultOf([&] { (void)toInt16(text); }), Fault::kOverflow) << text;
    }
    for (const char* text : {"2147483648", "-2147483649", "1e300"}) {
        EXPECT_EQ(faultOf([&] { (void)toInt32(text); }), Fault::kOverflow) << text;
    }
    EXPECT_EQ(faultOf([] { (void)toInt32(std::numeric_limits<double>::quiet_NaN()); }), Fault::kOverflow);
    EXPECT_EQ(faultOf([] { (void)toDouble("1e400"); }), Fault::kOverflow);
    EXPECT_EQ(toDouble("1e-400"), 0);
    EXPECT_EQ(faultOf([] { (void)toInt16("12V"); }), Fault::kTypeMismatch);
}

struct Format {
    double value;
    std::string_view decimal;
    std::string_view withSign;
};

TEST(Numbers, WritesThemAsAPersonWould) {
    for (const auto& [value, decimal, withSign] :
         {Format{80, "80", " 80"}, Format{-3, "-3", "-3"}, Format{12.5, "12.5", " 12.5"},
          Format{0, "0", " 0"}, Format{-0.0, "0", " 0"}, Format{0.5, "0.5", " .5"},
          Format{-0.5, "-0.5", "-.5"}, Format{0.1 + 0.2, "0.3", " .3"}, Format{100000, "100000", " 100000"},
          Format{123456789012345.6, "123456789012346", " 123456789012346"}, Format{1e15, "1E+15", " 1E+15"},
          Format{0.00001, "1E-05", " 1E-05"}, Format{-1.5e-300, "-1.5E-300", "-1.5E-300"}}) {
        EXPECT_EQ(decimalText(value), decimal);
        EXPECT_EQ(signedText(value), withSign);
    }
    EXPECT_EQ(decimalText(std::int32_t{-32768}), "-32768");
}

} // namespace
} // namespace quillon
