#include <gtest/gtest.h>

#include <string>

#include "flow/fuzz/c_mutator.h"

// The fuzzer's mutations: what they are made of, and that a finding can be made again.

namespace xfc::flow::fuzz {
namespace {

const std::string program =
    "//%lr\nfloat f(float x)\n{\n    x <<= 0x1.8p+3f; /* note */\n    return x->y ? 'a' : \"t\\n\";\n}\n";

TEST(tokens, joined_are_the_text_whatever_it_is) {
    for (const std::string& text :
         {program, std::string("\"open"), std::string("/* open"), std::string("a\0b\xff", 4)}) {
        std::string joined;
        for (const std::string_view token : tokens_of(text)) {
            EXPECT_FALSE(token.empty());
            joined += token;
        }
        EXPECT_EQ(joined, text);
    }
}

TEST(tokens, are_those_of_c) {
    std::string shown;
    for (const std::string_view token : tokens_of("x<<=1.5f; //end\ny->z")) {
        shown += std::string(token) + "|";
    }
    EXPECT_EQ(shown, "x|<<=|1.5f|;| |//end|\n|y|->|z|");
}

TEST(mutations, are_the_same_for_the_same_seed_and_differ_for_others) {
    EXPECT_EQ(mutated(program, 7), mutated(program, 7));
    int changed = 0;
    for (std::uint64_t seed = 0; seed < 100; ++seed) {
        changed += mutated(program, seed) != program ? 1 : 0;
    }
    EXPECT_GT(changed, 80);
}

TEST(mutations, cross_two_texts_and_stand_an_empty_one) {
    const std::string both = crossed("a b c", "1 2 3", 5);
    EXPECT_NE(both.find_first_of("123"), std::string::npos) << both;
    EXPECT_NE(both.find_first_of("abc"), std::string::npos) << both;
    EXPECT_EQ(crossed("", "", 1), "");
    EXPECT_FALSE(mutated("", 1).empty());
}

}  // namespace
}  // namespace xfc::flow::fuzz
