// The four stored files: worked examples read and written back byte for byte,
// and damaged or hand-edited input read the forgiving way.
#include <gtest/gtest.h>

#include "CoreTest.h"
#include "Formats.h"

using namespace velmar;
using namespace velmar::Formats;
using Strings = std::vector<std::string>;

namespace {
std::string fixture(const std::string& name) { return test::testData("formats/" + name); }
}  // namespace

namespace velmar::Formats {
static void PrintTo(const RepoLine& r, std::ostream* os) { *os << "(" << r.name << "|" << r.pattern << "|" << r.detected << ")"; }
}  // namespace velmar::Formats

TEST(stored_files, worked_examples_read_and_write_back_the_same_bytes) {
    const auto repos = fixture("repos.tsv");
    const auto lines = parseRepos(repos);
    EXPECT_EQ(lines, (std::vector<RepoLine>{{"acme/web", "https://pr-{number}.example.com/", ""},
                                            {"acme/api", "", "https://{name}-pr-{number}.example.net"},
                                            {"acme/docs", "", ""}}));
    std::vector<Repo> records;
    for (const auto& l : lines) records.push_back({.name = l.name, .pattern = l.pattern, .detectedPattern = l.detected});
    EXPECT_EQ(serializeRepos(records), repos);

    const auto browsers = fixture("browsers.tsv");
    const auto prefs = parseBrowsers(browsers);
    EXPECT_EQ(prefs, (BrowserPrefs{BrowserMode::manual, "Firefox", Strings{"Safari", "@default"}}));
    EXPECT_EQ(serializeBrowsers(prefs.mode, prefs.selected, prefs.shown), browsers);

    const auto settings = fixture("settings.tsv");
    const auto s = parseSettings(settings);
    EXPECT_EQ(s, (Settings{true, Screen::manage, true, Appearance::system}));
    EXPECT_EQ(serializeSettings(s.autoRefresh, s.screen, s.onboarded, s.appearance), settings);

    const auto window = fixture("window.tsv");
    const auto frame = parseWindow(window);
    ASSERT_EQ(frame, (WindowFrame{120, 80.5, 420, 640}));
    EXPECT_EQ(serializeWindow(*frame), window);
}

TEST(stored_files, lines_split_at_every_newline_and_trim_only_blanks) {
    const std::pair<std::string, Strings> rows[] = {
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\x0B" "c\x0C" "d\u0085e\u2028f\u2029g", {"a", "b", "c", "d", "e", "f", "g"}},
        {"\n\n  \n a b \n", {"a b"}},
        {"a\t \n\tb", {"a\t", "\tb"}},          // tabs are kept
        {"\u00A0a\u00A0", {"\u00A0a\u00A0"}},  // only U+0020 is trimmed
        {"a\xC2" "b", {"a\xC2" "b"}},          // a lone lead byte is no NEL
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(Formats::lines(text), expected) << text;
}

TEST(stored_files, repos_lines_cut_at_the_first_two_tabs) {
    const std::pair<std::string, std::vector<RepoLine>> rows[] = {
        {"", {}},
        {"acme/web", {{"acme/web", "", ""}}},
        {"a\tp\td\textra", {{"a", "p", "d\textra"}}},
        {"  a \t p \u3000\t d \t\r\n", {{"a", "p", "d"}}},
        {" \t a\tp\n\u00A0\tp\nb", {{"b", "", ""}}},  // an empty name drops the line
        {"dup\ndup", {{"dup", "", ""}, {"dup", "", ""}}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseRepos(text), expected) << text;
    EXPECT_EQ(serializeRepos({{.name = "a", .pattern = "", .detectedPattern = "d"}}), "a\t\td\n");
    EXPECT_EQ(serializeRepos({}), "");
}

TEST(stored_files, browsers_keep_absent_empty_and_filled_apart) {
    const std::pair<std::string, BrowserPrefs> rows[] = {
        {"", {BrowserMode::open, std::nullopt, std::nullopt}},
        {"mode\tmanual\nshow\t\n", {BrowserMode::manual, std::nullopt, Strings{}}},
        {"show\n", {BrowserMode::open, std::nullopt, Strings{}}},
        {"show\tA\nshow\tB\nshow\tA\nshow\t\n", {BrowserMode::open, std::nullopt, Strings{"A", "B"}}},
        {"selected\tA\nselected\t\n", {BrowserMode::open, "", std::nullopt}},
        {"mode\tmanual\nmode\tMANUAL\nmode\n", {BrowserMode::manual, std::nullopt, std::nullopt}},
        {"Mode\tmanual\nshown\tA\n", {BrowserMode::open, std::nullopt, std::nullopt}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseBrowsers(text), expected) << text;
    EXPECT_EQ(serializeBrowsers(BrowserMode::manual, std::nullopt, Strings{}), "mode\tmanual\nshow\t\n");
}

TEST(stored_files, settings_take_the_last_usable_line_of_each_key) {
    const std::pair<std::string, Settings> rows[] = {
        {"", {false, Screen::list, false, Appearance::dark}},
        {"auto\ttrue\n", {false, Screen::list, false, Appearance::dark}},
        {"auto\ttrue\nauto\t1\n", {true, Screen::list, false, Appearance::dark}},
        {"auto\t1\nauto\n", {false, Screen::list, false, Appearance::dark}},
        {"appearance\tlight\nappearance\tsepia\n", {false, Screen::list, false, Appearance::light}},
        {"screen\tmanage\nview\tmanage\nview\tgrid\n", {false, Screen::manage, false, Appearance::dark}},
        {"onboarded\t 1 \n", {false, Screen::list, true, Appearance::dark}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseSettings(text), expected) << text;
}

TEST(stored_files, window_needs_four_finite_numbers_and_a_minimum_size) {
    const std::string xy = "x\t-10\ny\t-20.25\n";
    const WindowFrame frame{-10, -20.25, 420, 640};
    const std::pair<std::string, std::optional<WindowFrame>> rows[] = {
        {"", std::nullopt},
        {xy + "width\t420\n", std::nullopt},
        {xy + "width\t199.5\nheight\t400\n", std::nullopt},
        {xy + "width\t300\nheight\t159.9\n", std::nullopt},
        {xy + "width\t200\nheight\t160\n", WindowFrame{-10, -20.25, 200, 160}},
        {xy + "width\t4.2e2\nheight\t+640\n", frame},
        {xy + "x\t5 px\nx\t0x10\nx\t1,5\nx\tleft\nwidth\t420\nheight\t640\n", frame},
        {xy + "width\tnan\nheight\t640\n", std::nullopt},
        {xy + "width\tinf\nheight\t640\n", std::nullopt},
        {xy + "width\t1e400\nheight\t640\n", std::nullopt},  // overflow reads as infinite
        {"x\t1e-400\ny\t0\nwidth\t420\nheight\t640\n", WindowFrame{0, 0, 420, 640}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(parseWindow(text), expected) << text;
}

TEST(stored_files, window_numbers_are_written_short_and_read_back_exactly) {
    const std::pair<double, std::string> rows[] = {
        {-4, "-4"}, {-0.0, "0"}, {0.1, "0.1"}, {999999999999999, "999999999999999"},
        {1e15, "1e+15"}, {-1e15, "-1e+15"}, {1.0 / 3, "0.3333333333333333"},
    };
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(formatNumber(value), text) << value;
        const WindowFrame frame{value, -value, 1000, 5e10};
        EXPECT_EQ(parseWindow(serializeWindow(frame)), frame) << serializeWindow(frame);
    }
}
