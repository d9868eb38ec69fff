// Preview links: the three comment passes, the web address test, learning and
// voting on patterns, expansion, the choice of a row's preview, and initials.
#include <gtest/gtest.h>

#include "Formats.h"

using namespace velmar;
using namespace velmar::Formats;
using Strings = std::vector<std::string>;
using std::nullopt;

TEST(preview_links, web_url_needs_http_scheme_and_a_host) {
    for (std::string yes : {"https://example.com/", "HTTP://Example.com", "http://[::1]:8080/x?y#z"})
        EXPECT_TRUE(isWebURL(yes)) << yes;
    for (std::string no : {"ftp://example.com/", "mailto:a@example.com", "https:///path", "https:/path",
                           "//example.com/x", "example.com", "", "https://exa mple.com/",
                           "https://example.com/ x", "https://example.com/\u00FC"})
        EXPECT_FALSE(isWebURL(no)) << no;
    EXPECT_FALSE(isWebURL(std::string("https://ex\0ample.com", 20)));
}

TEST(preview_links, links_after_a_label) {
    const std::tuple<std::string, std::string, Strings> rows[] = {
        {"[Web](", "[Web](a) [Web]( b\t) [Web]()", {"a", "b", ""}},
        {"[Web](", "[Web](no close [Web](x)", {"x"}},  // an occurrence's text ends at the next one
        {"[Web](", "[Web](x", {}},
        {"](", "[a](u(1)2)", {"u(1"}},  // the first ")" always ends the link
        {"aa", "aaaa)", {""}},
        {"[web](", "[Web](x)", {}},
    };
    for (const auto& [after, in, expected] : rows) EXPECT_EQ(links(after, in), expected) << in;
}

TEST(preview_links, comment_passes_in_order) {
    const std::string h = "https://h.example.com/";
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {"| app | [Web](" + h + ") |", h},
        {"[Preview](ftp://h/) and [Visit Preview](" + h + "x)", h + "x"},
        {"[Visit Preview](" + h + "v) [Web](" + h + "w)", h + "w"},  // label order beats position
        {"[Preview]( \t" + h + "\u00A0)", h},
        {"|a| Deploy Preview | [open](" + h + ") |", h},
        {"|a| Deploy Preview | " + h + " |", h},
        {"| | Deploy Preview | " + h + " |", h},  // a cell of spaces counts
        {"|| Deploy Preview | " + h + " |", nullopt},  // an empty one does not
        {"| Deploy Preview | ", nullopt},
        {"|a| Deploy Preview| " + h + " |", nullopt},
        {"|a| Deploy Preview | none |\n|b| Deploy Preview | " + h + " |", h},
        {"text\n\n<!-- [Project Preview](" + h + ") -->\n", h},
        {" <!-- [Project Preview](" + h + ") -->", nullopt},
        {"<!-- [A Preview](nope) -->\n<!-- [B Preview](" + h + ") -->", nullopt},  // only the first such line
        {"x\r\n<!-- [A Preview](" + h + ") -->", nullopt},  // CR LF is not a line break here
        {"Deployment failed.", nullopt},
    };
    for (const auto& [body, link] : rows) EXPECT_EQ(previewFromComment(body), link) << body;
}

TEST(preview_patterns, detect_replaces_whole_digit_runs) {
    const std::tuple<std::string, std::int64_t, std::optional<std::string>> rows[] = {
        {"https://app-pr-123.example.com/", 123, "https://app-pr-{number}.example.com/"},
        {"https://123.example.com/pr/123", 123, "https://{number}.example.com/pr/{number}"},
        {"https://example.com/7/17/71/7", 7, "https://example.com/{number}/17/71/{number}"},
        {"https://example.com/1234/5123", 123, nullopt},
        {"https://example.com/\u0663123/\u00BD123", 123, nullopt},  // any numeric character extends a run
        {"ftp://example.com/123", 123, nullopt},
    };
    for (const auto& [url, number, pattern] : rows) EXPECT_EQ(detectPattern(url, number), pattern) << url;
}

TEST(preview_patterns, vote_keeps_current_then_prefers_repo_name) {
    const std::tuple<Strings, std::string, std::string, std::optional<std::string>> rows[] = {
        {{}, "c", "web", nullopt},
        {{"a"}, "", "", "a"},
        {{"a", "b", "b"}, "a", "web", "b"},
        {{"a", "c"}, "c", "", "c"},
        {{"https://x/", "https://WEB-x/"}, "z", "web", "https://WEB-x/"},
        {{"b", "a"}, "", "", "b"},
        {{"b", "a"}, "", "web", "b"},
        {{"a", "a", "web"}, "", "web", "a"},
    };
    for (const auto& [patterns, current, name, result] : rows)
        EXPECT_EQ(votePattern(patterns, current, name), result) << current << " " << name;
}

TEST(preview_patterns, expand_replaces_each_placeholder_in_turn) {
    const std::tuple<std::string, std::string, std::string, std::string> rows[] = {
        {"", "acme/web", "b", ""},
        {"https://{name}-{number}.x/{branch}/{owner}/{repo}", "acme/web", "feat/a b", "https://web-42.x/feat/a b/acme/acme/web"},
        {"{owner}|{name}", "acme", "", "acme|"},
        {"{name}{number}{number}{other}{NUMBER}", "a/b/c", "", "b/c4242{other}{NUMBER}"},
        {"{branch}", "a/b", "{owner}", "a"},  // a later step sees the earlier result
    };
    for (const auto& [pattern, repo, branch, result] : rows)
        EXPECT_EQ(expandPreview(pattern, repo, 42, branch), result) << pattern;
}

TEST(preview_patterns, resolve_prefers_comment_then_pattern_then_learned) {
    const auto repo = [](std::string pattern, std::string detected) {
        return Repo{.name = "acme/web", .pattern = std::move(pattern), .detectedPattern = std::move(detected)};
    };
    const std::tuple<Repo, std::string, Repo::ResolvedPreview> rows[] = {
        {repo("https://pr-{number}.dev", "https://l.app"), "not a url", {"not a url", PreviewSource::comment}},
        {repo("https://pr-{number}.dev", "https://l.app"), "", {"https://pr-3.dev", PreviewSource::pattern}},
        {repo("pr-{number}.dev", "https://{name}-{number}.app"), "", {"https://web-3.app", PreviewSource::detected}},
        {repo("", ""), "", {"", nullopt}},
    };
    for (const auto& [r, comment, result] : rows) EXPECT_EQ(r.resolvePreview(3, "main", comment), result) << r.pattern;
}

TEST(browser_initials, two_characters_upper_cased) {
    const std::pair<std::string, std::string> rows[] = {
        {"Google Chrome", "GC"}, {"Firefox", "FI"}, {"X", "X"}, {"", ""}, {" \t\u3000", ""},
        {"  Brave \u00A0 Browser Beta", "BB"},
        {"e\u0301cole", "E\u0301C"},  // a character is a whole cluster
        {"\U0001F98A fox", "\U0001F98AF"},
        {"\u00DFx", "SSX"},
    };
    for (const auto& [name, expected] : rows) EXPECT_EQ(initials(name), expected) << name;
}
