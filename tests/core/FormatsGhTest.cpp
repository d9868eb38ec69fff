// What gh prints, read into rows: the slug line, the seven columns, the
// base64 blob of bot comments, and the suggestion listings.
#include <gtest/gtest.h>

#include "Formats.h"

using namespace velmar::Formats;

namespace {

std::string base64(std::string_view bytes) {
    static constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    unsigned buffer = 0;
    int bits = 0;
    for (unsigned char c : bytes) {
        buffer = buffer << 8 | c;
        for (bits += 8; bits >= 6; bits -= 6) out += alphabet[buffer >> (bits - 6) & 63];
    }
    if (bits > 0) out += alphabet[buffer << (6 - bits) & 63];
    while (out.size() % 4) out += '=';
    return out;
}

const std::string url = "https://github.com/acme/web/pull/1";

std::string line(std::string_view number, std::string_view title, std::string_view draft = "false") {
    return std::string(number) + "\t" + std::string(title) + "\tocto\tfeat/x\t" + std::string(draft) + "\t" + url;
}

PrRow row(std::int64_t number, std::string title, std::string preview = {}, bool draft = false) {
    return {number, std::move(title), "octo", "feat/x", draft, url, std::move(preview)};
}

}  // namespace

TEST(gh_output, base64_is_strict) {
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"", ""}, {"TWFu", "Man"}, {"TWE=", "Ma"}, {"TQ==", "M"}, {"////", "\xFF\xFF\xFF"},
        {"TQ", std::nullopt}, {"TQ=", std::nullopt}, {"TQ==TWFu", std::nullopt}, {"T=Q=", std::nullopt},
        {"TW Fu", std::nullopt}, {"TWF\n", std::nullopt}, {"TW-_", std::nullopt}, {"====", std::nullopt},
    };
    for (const auto& [text, bytes] : rows) EXPECT_EQ(decodeBase64(text), bytes) << text;
}

TEST(gh_output, slug_line_then_one_row_per_line) {
    const std::string web = "\t" + base64("[Web](https://web-1.example.com/)");
    const std::pair<std::string, PrOutput> rows[] = {
        {"", {"", {}}},
        {" \tacme/web \r\n", {"acme/web", {}}},
        {"s\n" + line("7", "Fix") + "\n", {"s", {row(7, "Fix")}}},
        // five columns, no number, a bare sign, 2^63: dropped; neighbours stay
        {"s\n" + line("1", "a") + "\n1\tb\tocto\tfeat/x\tfalse\n" + line("x1", "c") + "\n" + line("+", "d") +
             "\n" + line("9223372036854775808", "e") + "\n" + line("3", "f"),
         {"s", {row(1, "a"), row(3, "f")}}},
        {"s\n" + line(" 9223372036854775807 ", "a") + "\n" + line("-9223372036854775808", "b") + "\n" + line("+5", "c"),
         {"s", {row(INT64_MAX, "a"), row(INT64_MIN, "b"), row(5, "c")}}},
        {"s\n" + line("2", "a\\tb\\\\c\rd"), {"s", {row(2, "a\\tb\\\\c\rd")}}},  // no unescaping; CR ends nothing
        {"s\n" + line("2", "t") + web + "\tmore\tcolumns", {"s", {row(2, "t", "https://web-1.example.com/")}}},
        {"s\n" + line("4", "t", "true") + "\u00A0\n" + line("5", "t", "True"), {"s", {row(4, "t", "", true), row(5, "t")}}},
    };
    for (const auto& [output, expected] : rows) EXPECT_EQ(parsePrOutput(output), expected) << output;
}

TEST(gh_output, comment_blob_gives_the_last_body_with_a_link) {
    const std::string first = "[Web](https://first.example.com/)";
    const std::string second = "| app | Deploy Preview | [open](https://second.example.com/) |";
    const std::string f = "https://first.example.com/";
    const std::pair<std::string, std::string> rows[] = {
        {"", ""},
        {base64(first + "\x1E" + second), "https://second.example.com/"},
        {base64("\x1E" + first + "\x1E" + "no link\x1E"), f},  // a later body without a link hides nothing
        {" \u00A0" + base64(first) + "\u3000", f},
        {base64(first) + "!", ""},
        {base64(first + "x").substr(0, base64(first + "x").find('=')), ""},  // padding is required
        {base64(first + "\xFF"), ""},                                        // not UTF-8
    };
    for (const auto& [column, preview] : rows) {
        const auto out = parsePrOutput("acme/web\n" + line("9", "t") + "\t" + column + "\n");
        ASSERT_EQ(out.rows.size(), 1u) << column;
        EXPECT_EQ(out.rows[0].commentPreview, preview) << column;
    }
}

TEST(gh_output, slug_list_keeps_first_appearances_in_order) {
    EXPECT_EQ(parseSlugList("a/b\n\nc/d\r\n  \n a/b \nA/B\nnot a slug"),
              (std::vector<std::string>{"a/b", "c/d", "A/B", "not a slug"}));
}
