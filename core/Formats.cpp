// Readers and writers of the four stored files (repos, browsers, settings,
// window). Readers never fail: a line they cannot use is skipped, so a
// hand-edited or damaged file still gives whatever it holds that is good.
#include "Formats.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>

#include "Text.h"

namespace velmar::Formats {

namespace {

std::string_view trimSpaces(std::string_view s) {
    const auto first = s.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

struct KeyValue {
    std::string key;
    std::string value;
};

KeyValue keyValue(std::string_view line) {
    const auto tab = line.find('\t');
    if (tab == std::string_view::npos) return {text::trimWhitespace(line), {}};
    return {text::trimWhitespace(line.substr(0, tab)), text::trimWhitespace(line.substr(tab + 1))};
}

// Reads a whole value as a decimal number. Overflow reads as an infinity and
// underflow as zero, as a C library reader would give them, so that the
// caller's finiteness rule sees them; hexadecimal forms are not numbers here.
std::optional<double> readNumber(std::string_view s) {
    if (!s.empty() && s.front() == '+') {
        s.remove_prefix(1);
        if (s.empty() || s.front() == '-' || s.front() == '+') return std::nullopt;
    }
    double value = 0;
    const char* end = s.data() + s.size();
    const auto [ptr, ec] = std::from_chars(s.data(), end, value, std::chars_format::general);
    if (ptr != end) return std::nullopt;
    if (ec == std::errc()) return value;
    if (ec != std::errc::result_out_of_range) return std::nullopt;

    // Out of range: decide between overflow and underflow from the decimal
    // exponent of the leading significant digit.
    const bool negative = !s.empty() && s.front() == '-';
    std::size_t i = negative ? 1 : 0;
    bool seenSignificant = false;
    long long integerDigits = 0;
    long long leadingFractionZeros = 0;
    bool inFraction = false;
    for (; i < s.size() && s[i] != 'e' && s[i] != 'E'; ++i) {
        if (s[i] == '.') {
            inFraction = true;
        } else if (!seenSignificant && s[i] == '0') {
            if (inFraction) ++leadingFractionZeros;
        } else {
            if (!inFraction) ++integerDigits;
            seenSignificant = true;
        }
    }
    long long exponent = 0;
    if (i < s.size()) {
        std::string_view digits = s.substr(i + 1);
        bool negativeExponent = false;
        if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) {
            negativeExponent = digits.front() == '-';
            digits.remove_prefix(1);
        }
        for (char c : digits) exponent = std::min<long long>(exponent * 10 + (c - '0'), 1'000'000'000);
        if (negativeExponent) exponent = -exponent;
    }
    const long long magnitude = (integerDigits > 0 ? integerDigits - 1 : -(leadingFractionZeros + 1)) + exponent;
    const double result = magnitude >= 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -result : result;
}

}  // namespace

std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> out;
    auto emit = [&](std::string_view piece) {
        piece = trimSpaces(piece);
        if (!piece.empty()) out.emplace_back(piece);
    };
    std::size_t start = 0;
    std::size_t i = 0;
    while (i < text.size()) {
        if (const auto width = text::newlineAt(text, i)) {
            emit(text.substr(start, i - start));
            i += width;
            start = i;
        } else {
            ++i;
        }
    }
    emit(text.substr(start));
    return out;
}

// ---- repos ----

std::vector<RepoLine> parseRepos(std::string_view text) {
    std::vector<RepoLine> out;
    for (const auto& line : lines(text)) {
        // At most three fields: a third tab stays inside the last one.
        std::string fields[3];
        std::string_view rest = line;
        for (int f = 0; f < 3; ++f) {
            const auto tab = f < 2 ? rest.find('\t') : std::string_view::npos;
            fields[f] = text::trimWhitespace(rest.substr(0, tab));
            if (tab == std::string_view::npos) break;
            rest.remove_prefix(tab + 1);
        }
        if (fields[0].empty()) continue;
        out.push_back({std::move(fields[0]), std::move(fields[1]), std::move(fields[2])});
    }
    return out;
}

std::string serializeRepos(const std::vector<Repo>& repos) {
    std::string out;
    for (const auto& repo : repos) {
        out += repo.name;
        out += '\t';
        out += repo.pattern;
        if (!repo.detectedPattern.empty()) {
            out += '\t';
            out += repo.detectedPattern;
        }
        out += '\n';
    }
    return out;
}

// ---- browsers ----

BrowserPrefs parseBrowsers(std::string_view text) {
    BrowserPrefs prefs;
    for (const auto& line : lines(text)) {
        auto [key, value] = keyValue(line);
        if (key == "mode") {
            if (auto mode = fromJsonText<BrowserMode>(value)) prefs.mode = *mode;
        } else if (key == "selected") {
            prefs.selected = std::move(value);
        } else if (key == "show") {
            if (!prefs.shown) prefs.shown.emplace();
            auto& shown = *prefs.shown;
            if (!value.empty() && std::find(shown.begin(), shown.end(), value) == shown.end())
                shown.push_back(std::move(value));
        }
    }
    return prefs;
}

std::string serializeBrowsers(BrowserMode mode, const std::optional<std::string>& selected,
                              const std::optional<std::vector<std::string>>& shown) {
    std::string out = "mode\t";
    out += jsonText(mode);
    out += '\n';
    if (selected) out += "selected\t" + *selected + "\n";
    if (shown) {
        // An empty list still gets its line: hiding every browser is not the
        // same as never having chosen.
        if (shown->empty()) out += "show\t\n";
        for (const auto& key : *shown) out += "show\t" + key + "\n";
    }
    return out;
}

// ---- settings ----

Settings parseSettings(std::string_view text) {
    Settings settings;
    for (const auto& line : lines(text)) {
        const auto [key, value] = keyValue(line);
        if (key == "auto") {
            settings.autoRefresh = value == "1";
        } else if (key == "view") {
            if (auto screen = fromJsonText<Screen>(value)) settings.screen = *screen;
        } else if (key == "onboarded") {
            settings.onboarded = value == "1";
        } else if (key == "appearance") {
            if (auto appearance = fromJsonText<Appearance>(value)) settings.appearance = *appearance;
        }
    }
    return settings;
}

std::string serializeSettings(bool autoRefresh, Screen screen, bool onboarded,
                              Appearance appearance) {
    std::string out;
    out += autoRefresh ? "auto\t1\n" : "auto\t0\n";
    out += "view\t";
    out += jsonText(screen);
    out += onboarded ? "\nonboarded\t1\n" : "\nonboarded\t0\n";
    out += "appearance\t";
    out += jsonText(appearance);
    out += '\n';
    return out;
}

// ---- window ----

std::optional<WindowFrame> parseWindow(std::string_view text) {
    std::map<std::string, double, std::less<>> numbers;
    for (const auto& line : lines(text)) {
        const auto [key, value] = keyValue(line);
        if (key != "x" && key != "y" && key != "width" && key != "height") continue;
        if (auto number = readNumber(value)) numbers[key] = *number;
    }
    if (numbers.size() != 4) return std::nullopt;
    const WindowFrame frame{numbers["x"], numbers["y"], numbers["width"], numbers["height"]};
    for (double v : {frame.x, frame.y, frame.width, frame.height})
        if (!std::isfinite(v)) return std::nullopt;
    if (frame.width < 200.0 || frame.height < 160.0) return std::nullopt;
    return frame;
}

std::string formatNumber(double value) {
    if (value == std::nearbyint(value) && std::fabs(value) < 1e15) {
        // Exact in an int64 here; -0 becomes 0.
        return std::to_string(static_cast<long long>(value));
    }
    char buffer[64];
    const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, ec == std::errc() ? ptr : buffer);
}

std::string serializeWindow(const WindowFrame& frame) {
    return "x\t" + formatNumber(frame.x) + "\ny\t" + formatNumber(frame.y) + "\nwidth\t" +
           formatNumber(frame.width) + "\nheight\t" + formatNumber(frame.height) + "\n";
}

}  // namespace velmar::Formats
