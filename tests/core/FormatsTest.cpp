// The four stored files: worked examples read and written back byte for byte,
// and damaged or hand-edited input read the forgiving way.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>

#include "Formats.h"

using namespace velmar;
using namespace velmar::Formats;
using Strings = std::vector<std::string>;

namespace {

std::string fixture(const std::string& name) {
    std::ifstream in(std::string(VELMAR_TEST_DATA) + "/formats/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<Repo> reposFrom(const std::vector<RepoLine>& lines) {
    std::vector<Repo> repos;
    for (const auto& l : lines) repos.push_back({.name = l.name, .pattern = l.pattern, .detectedPattern = l.detected});
    return repos;
}

std::string crlf(std::string text) {
    std::string out;
    for (char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
}

}  // namespace

namespace velmar::Formats {
static void PrintTo(const RepoLine& r, std::ostream* os) {
    *os << "(" << r.name << " | " << r.pattern << " | " << r.detected << ")";
}
}  // namespace velmar::Formats

TEST(stored_files, worked_examples_read_and_write_back_the_same_bytes) {
    const auto repos = fixture("repos.tsv");
    ASSERT_FALSE(repos.empty());
    EXPECT_EQ(parseRepos(repos),
              (std::vector<RepoLine>{{"acme/web", "https://pr-{number}.example.com/", ""},
                                     {"acme/api", "", "https://{name}-pr-{number}.example.net"},
                                     {"acme/docs", "", ""}}));
    EXPECT_EQ(serializeRepos(reposFrom(parseRepos(repos))), repos);

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
    EXPECT_EQ(frame, (WindowFrame{120, 80.5, 420, 640}));
    ASSERT_TRUE(frame);
    EXPECT_EQ(serializeWindow(*frame), window);

    // The same files with CR LF line ends read the same.
    EXPECT_EQ(parseRepos(crlf(repos)), parseRepos(repos));
    EXPECT_EQ(parseBrowsers(crlf(browsers)), prefs);
    EXPECT_EQ(parseSettings(crlf(settings)), s);
    EXPECT_EQ(parseWindow(crlf(window)), frame);
}

TEST(stored_files, empty_text_gives_every_default) {
    EXPECT_TRUE(parseRepos("").empty());
    EXPECT_EQ(parseBrowsers(""), (BrowserPrefs{BrowserMode::open, std::nullopt, std::nullopt}));
    EXPECT_EQ(parseSettings(""), (Settings{false, Screen::list, false, Appearance::dark}));
    EXPECT_EQ(parseWindow(""), std::nullopt);
    EXPECT_EQ(serializeRepos({}), "");
}

TEST(stored_files, lines_split_at_every_newline_and_trim_only_blanks) {
    const struct {
        std::string text;
        Strings lines;
    } rows[] = {
        {"", {}},
        {"a\nb", {"a", "b"}},
        {"a\r\nb\r\n", {"a", "b"}},
        {"a\rb\x0B" "c\x0C" "d", {"a", "b", "c", "d"}},
        {"a\u0085b\u2028c\u2029d", {"a", "b", "c", "d"}},
        {"\n\n  \n a b \n", {"a b"}},
        {"a\t \n\tb", {"a\t", "\tb"}},           // tabs are kept
        {"\u00A0a\u00A0", {"\u00A0a\u00A0"}},   // only U+0020 is trimmed
        {"a\xC2" "b", {"a\xC2" "b"}},           // a lone lead byte is no NEL
    };
    for (const auto& r : rows) EXPECT_EQ(lines(r.text), r.lines) << r.text;
}

TEST(stored_files, repos_lines_cut_at_the_first_two_tabs) {
    const struct {
        std::string text;
        std::vector<RepoLine> repos;
    } rows[] = {
        {"acme/web", {{"acme/web", "", ""}}},
        {"acme/web\t", {{"acme/web", "", ""}}},
        {"a\tp\td\textra", {{"a", "p", "d\textra"}}},
        {"  a \t p \t d \t\n", {{"a", "p", "d"}}},
        {" \t a\tp\n", {}},  // a line that starts with a tab has an empty name
        {"\tp\td\n\u3000\tp\nb", {{"b", "", ""}}},  // an empty name drops the line
        {"dup\ndup", {{"dup", "", ""}, {"dup", "", ""}}},
        {"noslug\t\u00A0x\u00A0", {{"noslug", "x", ""}}},
    };
    for (const auto& r : rows) EXPECT_EQ(parseRepos(r.text), r.repos) << r.text;

    const std::vector<Repo> repos{{.name = "a", .pattern = "", .detectedPattern = "d"},
                                  {.name = "b", .pattern = "p", .detectedPattern = ""}};
    EXPECT_EQ(serializeRepos(repos), "a\t\td\nb\tp\n");
}

TEST(stored_files, browsers_keep_absent_empty_and_filled_apart) {
    const struct {
        std::string text;
        BrowserPrefs prefs;
    } rows[] = {
        {"mode\tmanual\nshow\t\n", {BrowserMode::manual, std::nullopt, Strings{}}},
        {"mode\topen\n", {BrowserMode::open, std::nullopt, std::nullopt}},
        {"show\n", {BrowserMode::open, std::nullopt, Strings{}}},
        {"show\tA\nshow\tB\nshow\tA\nshow\t\n", {BrowserMode::open, std::nullopt, Strings{"A", "B"}}},
        {"selected\tA\nselected\t\n", {BrowserMode::open, "", std::nullopt}},
        {"mode\tmanual\nmode\tMANUAL\nmode\n", {BrowserMode::manual, std::nullopt, std::nullopt}},
        {"Mode\tmanual\nshown\tA\n", {BrowserMode::open, std::nullopt, std::nullopt}},
        {"show\tGoogle\tChrome\n", {BrowserMode::open, std::nullopt, Strings{"Google\tChrome"}}},
    };
    for (const auto& r : rows) EXPECT_EQ(parseBrowsers(r.text), r.prefs) << r.text;

    const BrowserPrefs trips[] = {
        {BrowserMode::open, std::nullopt, std::nullopt},
        {BrowserMode::manual, "", Strings{}},
        {BrowserMode::manual, "@default", Strings{"Safari", "Arc"}},
    };
    for (const auto& p : trips) EXPECT_EQ(parseBrowsers(serializeBrowsers(p.mode, p.selected, p.shown)), p);
    EXPECT_EQ(serializeBrowsers(BrowserMode::manual, std::nullopt, Strings{}), "mode\tmanual\nshow\t\n");
}

TEST(stored_files, settings_take_the_last_usable_line_of_each_key) {
    const struct {
        std::string text;
        Settings settings;
    } rows[] = {
        {"auto\ttrue\n", {false, Screen::list, false, Appearance::dark}},
        {"auto\ttrue\nauto\t1\n", {true, Screen::list, false, Appearance::dark}},
        {"auto\t1\nauto\n", {false, Screen::list, false, Appearance::dark}},
        {"appearance\tlight\nappearance\tsepia\n", {false, Screen::list, false, Appearance::light}},
        {"appearance\tsepia\n", {false, Screen::list, false, Appearance::dark}},
        {"screen\tmanage\nview\tmanage\nview\tgrid\n", {false, Screen::manage, false, Appearance::dark}},
        {"onboarded\t 1 \n", {false, Screen::list, true, Appearance::dark}},
    };
    for (const auto& r : rows) EXPECT_EQ(parseSettings(r.text), r.settings) << r.text;

    for (bool a : {false, true})
        for (Screen sc : {Screen::list, Screen::manage})
            for (bool o : {false, true})
                for (Appearance ap : allAppearances)
                    EXPECT_EQ(parseSettings(serializeSettings(a, sc, o, ap)), (Settings{a, sc, o, ap}));
}

TEST(stored_files, window_needs_four_finite_numbers_and_a_minimum_size) {
    const std::string base = "x\t-10\ny\t-20.25\n";
    const struct {
        std::string text;
        std::optional<WindowFrame> frame;
    } rows[] = {
        {base + "width\t420\n", std::nullopt},
        {base + "width\t199.5\nheight\t400\n", std::nullopt},
        {base + "width\t300\nheight\t159.9\n", std::nullopt},
        {base + "width\t200\nheight\t160\n", WindowFrame{-10, -20.25, 200, 160}},
        {base + "width\t4.2e2\nheight\t+640\n", WindowFrame{-10, -20.25, 420, 640}},
        {base + "x\tleft\nwidth\t420\nheight\t640\n", WindowFrame{-10, -20.25, 420, 640}},
        {base + "x\t5 px\nx\t0x10\nx\t1,5\nwidth\t420\nheight\t640\n", WindowFrame{-10, -20.25, 420, 640}},
        {base + "width\tnan\nheight\t640\n", std::nullopt},
        {base + "width\tinf\nheight\t640\n", std::nullopt},
        {base + "width\t1e400\nheight\t640\n", std::nullopt},  // overflow reads as infinite
        {"x\t1e-400\ny\t0\nwidth\t420\nheight\t640\n", WindowFrame{0, 0, 420, 640}},
        {base + "width\t420\nheight\t640\nextra\tnan\n", WindowFrame{-10, -20.25, 420, 640}},
        {base + "WIDTH\t420\nheight\t640\n", std::nullopt},
    };
    for (const auto& r : rows) EXPECT_EQ(parseWindow(r.text), r.frame) << r.text;
}

TEST(stored_files, window_numbers_are_written_short_and_read_back_exactly) {
    const struct {
        double value;
        std::string text;
    } rows[] = {
        {120, "120"},
        {-4, "-4"},
        {-0.0, "0"},
        {80.5, "80.5"},
        {0.1, "0.1"},
        {999999999999999, "999999999999999"},
        {1e15, "1e+15"},
        {-1e15, "-1e+15"},
        {1.0 / 3, "0.3333333333333333"},
    };
    for (const auto& r : rows) EXPECT_EQ(formatNumber(r.value), r.text) << r.value;

    const double values[] = {1.0 / 3, 1e15, 123456789.125, -5e-324, 1.7976931348623157e308, -0.0, 2e-7};
    for (double v : values) {
        const WindowFrame frame{v, -v, 1000 + std::fabs(v), 5e10};
        const auto back = parseWindow(serializeWindow(frame));
        ASSERT_TRUE(back) << v;
        EXPECT_EQ(*back, frame) << serializeWindow(frame);
    }
}
