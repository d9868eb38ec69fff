#include <gtest/gtest.h>

#include "Text.h"

using namespace velmar::text;

TEST(text, trims_each_character_set) {
    struct Row {
        std::string in, ws, wsnl;
    };
    const Row rows[] = {
        {"", "", ""},
        {" \t a b \t ", "a b", "a b"},
        {"\u00A0x\u3000", "x", "x"},               // Zs on both ends
        {"\nx\r\n", "\nx\r\n", "x"},                // newlines only in the wider set
        {"\u2028x\u0085", "\u2028x\u0085", "x"},  // Zl and NEL
        {"\xFFx \xFE", "\xFFx \xFE", "\xFFx \xFE"}, // invalid bytes are kept, not trimmed
    };
    for (const auto& r : rows) {
        EXPECT_EQ(trimWhitespace(r.in), r.ws) << r.in;
        EXPECT_EQ(trimWhitespaceAndNewlines(r.in), r.wsnl) << r.in;
    }
}

TEST(text, characters_are_grapheme_clusters) {
    EXPECT_EQ(characters("a\r\nb").size(), 3u);
    EXPECT_EQ(characters("e\u0301").size(), 1u);
    EXPECT_EQ(characters("\U0001F1E9\U0001F1EA").size(), 1u);  // one flag
    EXPECT_EQ(characters("\U0001F469\u200D\U0001F4BB").size(), 1u);
    EXPECT_EQ(characters("\xC3").size(), 1u);  // repaired to U+FFFD
}

TEST(text, split_keeps_cr_lf_together) {
    using V = std::vector<std::string>;
    EXPECT_EQ(splitCharacters("a\nb\r\nc\n", U'\n', false), (V{"a", "b\r\nc"}));
    EXPECT_EQ(splitCharacters("a\n\nb\n", U'\n', true), (V{"a", "", "b", ""}));
    EXPECT_EQ(splitCharacters("a|b||c", U'|', false), (V{"a", "b", "c"}));
    EXPECT_EQ(splitCharacters("a|\u0301b|c", U'|', false), (V{"a|\u0301b", "c"}));
    EXPECT_EQ(splitCharacters("x\x1Ey\x1E", U'\x1E', false), (V{"x", "y"}));
}

TEST(text, utf8_validation_and_repair) {
    EXPECT_FALSE(isValidUtf8("\xC3("));
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));  // a surrogate
    EXPECT_EQ(repairUtf8("a\xFF" "b"), "a\uFFFD" "b");
}

TEST(text, case_insensitive_containment) {
    EXPECT_TRUE(containsCaseInsensitive("Acme/WebApp", "webapp"));
    EXPECT_TRUE(containsCaseInsensitive("STRASSE", "stra\u00DFe"));
    EXPECT_FALSE(containsCaseInsensitive("acme", "acmex"));
    EXPECT_TRUE(containsCaseInsensitive("x", ""));
}
