#include "runtime/Operations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "tests/unit/base/Faults.h"

namespace quillon {
namespace {

class OperationsTest : public testing::Test {
protected:
    OperationsTest() {
        operations.add("KVPUp", [this] { ++ups; });
        operations.add("Join",
                       [](std::string_view text, std::int16_t number, bool flag) {
                           return std::string(text) + std::to_string(number) + (flag ? "!" : "?");
                       },
                       {std::int32_t{7}, false});
        operations.addMember("Retries", retries);
        operations.addReadOnly("Version", [] { return std::string("V1"); });
        operations.addWriteOnly("Colour", [this](std::uint32_t value) { colour = value; });
    }

    std::string join(std::initializer_list<Value> arguments) {
        return std::get<std::string>(*operations.call("join", arguments));
    }
    int faultOfCall(std::string_view name, std::initializer_list<Value> arguments) {
        return faultOf([&] { operations.call(name, arguments); });
    }

    Operations operations;
    int ups = 0;
    std::int16_t retries = 4;
    std::uint32_t colour = 0;
};

TEST_F(OperationsTest, NamesHaveNoCaseAndArgumentsHaveDefaults) {
    EXPECT_EQ(operations.call("kvpup"), std::nullopt);
    EXPECT_EQ(ups, 1);
    EXPECT_EQ(join({std::string("a")}), "a7?");
    EXPECT_EQ(join({std::string("a"), std::int32_t{2}}), "a2?");
    EXPECT_EQ(join({2.5, std::string(" 3.5 "), std::int32_t{-1}}), "2.54!");
    EXPECT_EQ(join({true, true}), "True-1?");
}

TEST_F(OperationsTest, RefusesWhatDoesNotFit) {
    EXPECT_EQ(faultOfCall("nothing", {}), Fault::kNoSuchName);
    EXPECT_EQ(faultOfCall("join", {}), Fault::kArgumentsRefused);
    EXPECT_EQ(faultOfCall("KVPUp", {true}), Fault::kArgumentsRefused);
    EXPECT_EQ(faultOfCall("join", {true, std::string("x")}), Fault::kArgumentsRefused);
    EXPECT_EQ(faultOfCall("join", {true, 40000.0}), Fault::kArgumentsRefused);
}

TEST_F(OperationsTest, PropertiesAreReadAndWrittenByName) {
    operations.set("RETRIES", std::string("9"));
    EXPECT_EQ(retries, 9);
    EXPECT_EQ(operations.get("retries"), Value(std::int32_t{9}));
    for (const auto& [value, bits] :
         {std::pair{4294967295.0, 0xFFFFFFFFU}, {-2147483633.0, 0x8000000FU}, {12632256.0, 0xC0C0C0U}}) {
        operations.set("colour", value);
        EXPECT_EQ(colour, bits);
    }
    for (const double value : {4294967296.0, -2147483649.0, 1e300, std::nan("")}) {
        EXPECT_EQ(faultOf([&] { operations.set("colour", value); }), Fault::kArgumentsRefused) << value;
    }
    EXPECT_EQ(colour, 0xC0C0C0U);
    EXPECT_FALSE(operations.canGet("Colour"));
    EXPECT_FALSE(operations.canSet("Version"));
    EXPECT_EQ(faultOf([&] { operations.set("Version", true); }), Fault::kNoSuchName);
    EXPECT_EQ(faultOf([&] { (void)operations.get("Colour"); }), Fault::kNoSuchName);
}

} // namespace
} // namespace quillon
