// Preview links: the three comment passes, web address test, learning and
// voting on patterns, expansion, the choice of a row's preview, and initials.
#include <gtest/gtest.h>

#include "Formats.h"

using namespace velmar;
using namespace velmar::Formats;
using Strings = std::vector<std::string>;
using std::nullopt;

TEST(preview_links, web_url_needs_http_scheme_and_a_host) {
    const struct {
        std::string text;
        bool web;
    } rows[] = {
        {"https://example.com/", true},
        {"HTTP://Example.com", true},
        {"http://[::1]:8080/x?y#z", true},
        {"https://a-1.example.com/pr/12", true},
        {"ftp://example.com/", false},
        {"mailto:a@example.com", false},
        {"https:///path", false},
        {"https:/path", false},
        {"//example.com/x", false},
        {"example.com", false},
        {"", false},
        {"https://exa mple.com/", false},   // a blank is not parsed
        {"https://example.com/ x", false},
        {"https://example.com/\xC3\xBC", false},
        {std::string("https://ex\0ample.com", 20), false},
    };
    for (const auto& r : rows) EXPECT_EQ(isWebURL(r.text), r.web) << r.text;
}

TEST(preview_links, links_after_a_label) {
    const struct {
        std::string after, in;
        Strings links;
    } rows[] = {
        {"[Web](", "[Web](a) [Web]( b\t) [Web]()", {"a", "b", ""}},
        {"[Web](", "[Web](no close [Web](x)", {"no close [Web](x", "x"}},  // labels, not links, never overlap
        {"[Web](", "[Web](x", {}},
        {"[Web](", "x [Web](", {}},
        {"](", "[a](u(1)2)", {"u(1"}},  // the first ")" always ends the link
        {"aa", "aaaa)", {"aa", ""}},     // occurrences do not overlap
        {"[web](", "[Web](x)", {}},
    };
    for (const auto& r : rows) EXPECT_EQ(links(r.after, r.in), r.links) << r.in;
}

TEST(preview_links, comment_passes_in_order) {
    const std::string h = "https://h.example.com/";
    const struct {
        std::string name;
        std::string body;
        std::optional<std::string> link;
    } rows[] = {
        {"table cell label", "| app | [Web](" + h + ") |", h},
        {"first label fails, later one passes", "[Preview](ftp://h/) and [Visit Preview](" + h + "x)", h + "x"},
        {"label order beats position", "[Visit Preview](" + h + "v) [Web](" + h + "w)", h + "w"},
        {"lower-case label", "[web](" + h + ")", nullopt},
        {"unclosed then closed", "[Web](" + h + " [Web](" + h + ")", h},
        {"blanks inside parentheses", "[Preview]( \t" + h + "\u00A0)", h},
        {"table row", "|a| Deploy Preview | [open](" + h + ") |", h},
        {"table row bare cell", "|a| Deploy Preview | " + h + " |", h},
        {"a cell of spaces counts", "| | Deploy Preview | " + h + " |", h},
        {"an empty cell does not", "|| Deploy Preview | " + h + " |", nullopt},
        {"table row two cells", "| Deploy Preview | ", nullopt},
        {"words without blank before pipe", "|a| Deploy Preview| " + h + " |", nullopt},
        {"second table row", "|a| Deploy Preview | none |\n|b| Deploy Preview | " + h + " |", h},
        {"hidden line", "<!-- [Project Preview](" + h + ") -->", h},
        {"hidden line behind a blank", " <!-- [Project Preview](" + h + ") -->", nullopt},
        {"only the first hidden line",
         "<!-- [A Preview](nope) -->\n<!-- [B Preview](" + h + ") -->", nullopt},
        {"hidden line later in body", "text\n\n<!-- [A Preview](" + h + ") -->\n", h},
        {"CR LF joins lines", "x\r\n<!-- [A Preview](" + h + ") -->", nullopt},
        {"no link", "Deployment failed.", nullopt},
    };
    for (const auto& r : rows) EXPECT_EQ(previewFromComment(r.body), r.link) << r.name;
}

TEST(preview_patterns, detect_replaces_whole_digit_runs) {
    const struct {
        std::string url;
        std::int64_t number;
        std::optional<std::string> pattern;
    } rows[] = {
        {"https://app-pr-123.example.com/", 123, "https://app-pr-{number}.example.com/"},
        {"https://123.example.com/pr/123", 123, "https://{number}.example.com/pr/{number}"},
        {"https://example.com/pr-123", 123, "https://example.com/pr-{number}"},
        {"https://example.com/1234/5123", 123, nullopt},
        {"https://example.com/7/17/71/7", 7, "https://example.com/{number}/17/71/{number}"},
        {"https://example.com/x7y", 7, "https://example.com/x{number}y"},
        {"ftp://example.com/123", 123, nullopt},
        {"https://example.com/", 5, nullopt},
    };
    for (const auto& r : rows) EXPECT_EQ(detectPattern(r.url, r.number), r.pattern) << r.url;
}

TEST(preview_patterns, vote_keeps_current_then_prefers_repo_name) {
    const struct {
        std::string name;
        Strings patterns;
        std::string current, repoName;
        std::optional<std::string> result;
    } rows[] = {
        {"empty", {}, "c", "web", nullopt},
        {"single", {"a"}, "", "", "a"},
        {"majority", {"a", "b", "b"}, "a", "web", "b"},
        {"current ties", {"a", "c"}, "c", "", "c"},
        {"name wins tie any case", {"https://x/", "https://WEB-x/"}, "z", "web", "https://WEB-x/"},
        {"no name, first leader", {"b", "a"}, "", "", "b"},
        {"name in no leader", {"b", "a"}, "", "web", "b"},
        {"non-leader with name loses", {"a", "a", "web"}, "", "web", "a"},
    };
    for (const auto& r : rows) EXPECT_EQ(votePattern(r.patterns, r.current, r.repoName), r.result) << r.name;
}

TEST(preview_patterns, expand_replaces_each_placeholder_in_turn) {
    const struct {
        std::string pattern, repo;
        std::int64_t number;
        std::string branch, result;
    } rows[] = {
        {"", "acme/web", 1, "b", ""},
        {"https://{name}-{number}.x/{branch}/{owner}/{repo}", "acme/web", 42, "feat/a b",
         "https://web-42.x/feat/a b/acme/acme/web"},
        {"{owner}|{name}", "acme", 1, "", "acme|"},
        {"{name}", "a/b/c", 1, "", "b/c"},
        {"{number}{number}{other}", "a/b", 7, "", "77{other}"},
        {"{NUMBER}", "a/b", 7, "", "{NUMBER}"},
        {"{branch}", "a/b", 7, "{owner}", "a"},  // a later step sees the earlier result
    };
    for (const auto& r : rows)
        EXPECT_EQ(expandPreview(r.pattern, r.repo, r.number, r.branch), r.result) << r.pattern;
}

TEST(preview_patterns, resolve_prefers_comment_then_pattern_then_learned) {
    const Repo both{.name = "acme/web", .pattern = "https://pr-{number}.acme.dev", .detectedPattern = "https://{name}-{number}.app"};
    const Repo badTyped{.name = "acme/web", .pattern = "pr-{number}.acme.dev", .detectedPattern = "https://{name}-{number}.app"};
    const Repo none{.name = "acme/web", .pattern = "", .detectedPattern = ""};
    const struct {
        std::string name;
        Repo repo;
        std::string comment;
        Repo::ResolvedPreview result;
    } rows[] = {
        {"comment taken untested", both, "not a url", {"not a url", PreviewSource::comment}},
        {"typed pattern", both, "", {"https://pr-3.acme.dev", PreviewSource::pattern}},
        {"falls through to learned", badTyped, "", {"https://web-3.app", PreviewSource::detected}},
        {"nothing", none, "", {"", nullopt}},
    };
    for (const auto& r : rows) EXPECT_EQ(r.repo.resolvePreview(3, "main", r.comment), r.result) << r.name;
}

TEST(browser_initials, two_characters_upper_cased) {
    const struct {
        std::string name, initials;
    } rows[] = {
        {"Google Chrome", "GC"},
        {"Firefox", "FI"},
        {"Arc", "AR"},
        {"X", "X"},
        {"", ""},
        {" \t\u3000", ""},
        {"  Brave \u00A0 Browser Beta", "BB"},
        {"e\u0301cole", "E\u0301C"},          // a character is a whole cluster
        {"\U0001F98A fox", "\U0001F98AF"},
        {"stra\u00DFe", "ST"},
        {"\u00DFx", "SSX"},
    };
    for (const auto& r : rows) EXPECT_EQ(initials(r.name), r.initials) << r.name;
}
