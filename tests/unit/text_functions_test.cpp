// Text functions called directly, for what a script can't write: bytes that are not UTF-8 and
// keys across the whole range of the character shift (codes too large for a whole number are in
// fn_text_errors.prg).
#include <gtest/gtest.h>

#include "expr/functions.hpp"
#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

// Calls `name` with the given (already unquoted) arguments.
std::string call(const std::string& name, std::initializer_list<std::string> args) {
    Harness h;
    Engine engine(h.host, h.platform, standard_language());
    Slots words;
    words[1] = "$r$";
    words[2] = name;
    int i = 3;
    for (const std::string& a : args) words[i++] = a;
    const FunctionRow* f = engine.language().function(name);
    EXPECT_NE(f, nullptr) << name;
    return f->run(FunctionCall{engine, words, "set $r$ " + name, f->arity});
}

TEST(TextFunctions, BytesThatAreNotUtf8AndNul) {
    EXPECT_EQ(call("asc", {"\x80x"}), "128");
    EXPECT_EQ(call("asc", {"\xE9"}), "233");
    EXPECT_EQ(call("chr", {"0"}), std::string(1, '\0'));
    EXPECT_EQ(call("asc", {std::string(1, '\0')}), "0");
}

// Every key round-trips, and shifted letters and digits stay in their class.
TEST(TextFunctions, DecodeUndoesEncodeAcrossTheKeyRange) {
    const std::string text = "azAZ09 Ä€ xy";
    const auto in = [](char c, char low, char high) { return c >= low && c <= high; };
    for (int key = -32768; key <= 32767; key += key < 32760 ? 7 : 1) {
        const std::string k = std::to_string(key);
        const std::string coded = call("encode", {text, k});
        ASSERT_EQ(coded.size(), text.size()) << key;
        ASSERT_TRUE(in(coded[0], 'a', 'z') && in(coded[1], 'a', 'z') && in(coded[2], 'A', 'Z') &&
                    in(coded[3], 'A', 'Z') && in(coded[4], '0', '9') && in(coded[5], '0', '9'))
            << key << ": " << coded;
        ASSERT_EQ(call("decode", {coded, k}), text) << key;
    }
}

}  // namespace
}  // namespace quiller::testing
