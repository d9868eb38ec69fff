// What gh prints, read into rows: the slug line, the seven columns, the
// base64 blob of bot comments, and the suggestion listings.
#include <gtest/gtest.h>

#include "Formats.h"

using namespace velmar::Formats;
using Strings = std::vector<std::string>;

namespace {

std::string base64(std::string_view bytes) {
    static constexpr char alphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::size_t i = 0;
    for (; i + 2 < bytes.size(); i += 3) {
        const unsigned n = (unsigned char)bytes[i] << 16 | (unsigned char)bytes[i + 1] << 8 | (unsigned char)bytes[i + 2];
        out += {alphabet[n >> 18], alphabet[n >> 12 & 63], alphabet[n >> 6 & 63], alphabet[n & 63]};
    }
    if (bytes.size() - i == 1) {
        const unsigned n = (unsigned char)bytes[i] << 16;
        out += {alphabet[n >> 18], alphabet[n >> 12 & 63], '=', '='};
    } else if (bytes.size() - i == 2) {
        const unsigned n = (unsigned char)bytes[i] << 16 | (unsigned char)bytes[i + 1] << 8;
        out += {alphabet[n >> 18], alphabet[n >> 12 & 63], alphabet[n >> 6 & 63], '='};
    }
    return out;
}

PrRow row(std::int64_t number, std::string title, std::string preview = {}) {
    return {number, std::move(title), "octo", "feat/x", false, "https://github.com/acme/web/pull/1", std::move(preview)};
}

const std::string url = "https://github.com/acme/web/pull/1";

std::string line(std::string_view number, std::string_view title, std::string_view rest = "\tocto\tfeat/x\tfalse\t") {
    return std::string(number) + "\t" + std::string(title) + std::string(rest) + url;
}

}  // namespace

TEST(gh_output, base64_is_strict) {
    const struct {
        std::string text;
        std::optional<std::string> bytes;
    } rows[] = {
        {"", ""},
        {"TWFu", "Man"},
        {"TWE=", "Ma"},
        {"TQ==", "M"},
        {"TQ", std::nullopt},            // padding is required
        {"TQ=", std::nullopt},
        {"TQ==TWFu", std::nullopt},      // padding only at the end
        {"T=Q=", std::nullopt},
        {"TW Fu", std::nullopt},
        {"TWF\n", std::nullopt},
        {"TW-_", std::nullopt},          // the URL-safe alphabet is not this one
        {"////", "\xFF\xFF\xFF"},
        {"====", std::nullopt},
    };
    for (const auto& r : rows) EXPECT_EQ(decodeBase64(r.text), r.bytes) << r.text;
    EXPECT_EQ(decodeBase64(base64("any\x1E\xF0\x9F\x98\x80 bytes")), "any\x1E\xF0\x9F\x98\x80 bytes");
}

TEST(gh_output, slug_line_then_one_row_per_line) {
    const std::string web = "[Web](https://web-1.example.com/)";
    const struct {
        std::string name;
        std::string output;
        PrOutput result;
    } rows[] = {
        {"empty", "", {"", {}}},
        {"slug only", "acme/web\n", {"acme/web", {}}},
        {"slug trimmed", " \tacme/web \r\n", {"acme/web", {}}},
        {"six columns", "acme/web\n" + line("7", "Fix") + "\n", {"acme/web", {row(7, "Fix")}}},
        {"five columns dropped, neighbours kept",
         "s\n" + line("1", "a") + "\n1\tb\tocto\tfeat/x\tfalse\n" + line("3", "c"),
         {"s", {row(1, "a"), row(3, "c")}}},
        {"not a number", "s\n" + line("x1", "a") + "\n" + line("", "b") + "\n" + line("+", "c"), {"s", {}}},
        {"too large for 64 bits", "s\n" + line("9223372036854775808", "a"), {"s", {}}},
        {"64-bit edges and signs",
         "s\n" + line(" 9223372036854775807 ", "a") + "\n" + line("-9223372036854775808", "b") + "\n" + line("+5", "c"),
         {"s", {row(9223372036854775807, "a"), row(INT64_MIN, "b"), row(5, "c")}}},
        {"escapes stay", "s\n" + line("2", "a\\tb\\\\c"), {"s", {row(2, "a\\tb\\\\c")}}},
        {"CR is no line end", "s\n" + line("2", "a\rb"), {"s", {row(2, "a\rb")}}},
        {"extra columns ignored", "s\n" + line("2", "t") + "\t" + base64(web) + "\tmore\tcolumns",
         {"s", {row(2, "t", "https://web-1.example.com/")}}},
        {"url trimmed", "s\n4\tt\tocto\tfeat/x\tfalse\t " + url + "\u00A0", {"s", {row(4, "t")}}},
    };
    for (const auto& r : rows) EXPECT_EQ(parsePrOutput(r.output), r.result) << r.name;
}

TEST(gh_output, draft_flag_is_exactly_true) {
    const struct {
        std::string column;
        bool draft;
    } rows[] = {{"true", true}, {"True", false}, {" true", false}, {"false", false}, {"", false}};
    for (const auto& r : rows) {
        const auto out = parsePrOutput("s\n" + line("1", "t", "\tocto\tfeat/x\t" + r.column + "\t"));
        ASSERT_EQ(out.rows.size(), 1u) << r.column;
        EXPECT_EQ(out.rows[0].isDraft, r.draft) << r.column;
    }
}

TEST(gh_output, comment_blob_gives_the_last_body_with_a_link) {
    const std::string first = "[Web](https://first.example.com/)";
    const std::string second = "| app | Deploy Preview | [open](https://second.example.com/) |";
    const std::string none = "Building...";
    const struct {
        std::string name;
        std::string column;
        std::string preview;
    } rows[] = {
        {"empty column", "", ""},
        {"one body", base64(first), "https://first.example.com/"},
        {"later body wins", base64(first + "\x1E" + second), "https://second.example.com/"},
        {"later body without link does not hide", base64(first + "\x1E" + none + "\x1E"), "https://first.example.com/"},
        {"empty pieces skipped", base64("\x1E\x1E" + first + "\x1E"), "https://first.example.com/"},
        {"blob trimmed", " \u00A0" + base64(first) + "\u3000", "https://first.example.com/"},
        {"stray character", base64(first) + "!", ""},
        {"missing padding", base64(first + "x").substr(0, base64(first + "x").find('=')), ""},
        {"not UTF-8", base64(first + "\xFF"), ""},
        {"no link anywhere", base64(none + "\x1E" + none), ""},
    };
    for (const auto& r : rows) {
        const auto out = parsePrOutput("acme/web\n" + line("9", "t") + "\t" + r.column + "\n");
        ASSERT_EQ(out.rows.size(), 1u) << r.name;
        EXPECT_EQ(out.rows[0].commentPreview, r.preview) << r.name;
    }
}

TEST(gh_output, slug_list_keeps_first_appearances_in_order) {
    const struct {
        std::string output;
        Strings slugs;
    } rows[] = {
        {"", {}},
        {"a/b\n\nc/d\r\n  \na/b\n", {"a/b", "c/d"}},
        {" a/b \na/b\nA/B\n", {"a/b", "A/B"}},
        {"not a slug\n", {"not a slug"}},
    };
    for (const auto& r : rows) EXPECT_EQ(parseSlugList(r.output), r.slugs) << r.output;
}
