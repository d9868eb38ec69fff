// The pure readers and writers of the four stored files, of the gh answers,
// and the text functions behind preview links and browser initials.
// No reader ever fails: what it cannot use, it skips.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Records.h"

namespace velmar::Formats {

// ---- Stored files ----

/// Splits at newline characters (a CR LF is one break), trims U+0020 only,
/// drops empty lines.
std::vector<std::string> lines(std::string_view text);

struct RepoLine {
    std::string name;
    std::string pattern;
    std::string detected;
    bool operator==(const RepoLine&) const = default;
};

struct BrowserPrefs {
    BrowserMode mode = BrowserMode::open;
    std::optional<std::string> selected;
    std::optional<std::vector<std::string>> shown;
    bool operator==(const BrowserPrefs&) const = default;
};

struct Settings {
    bool autoRefresh = false;
    Screen screen = Screen::list;
    bool onboarded = false;
    Appearance appearance = Appearance::dark;
    bool operator==(const Settings&) const = default;
};

std::vector<RepoLine> parseRepos(std::string_view text);
std::string serializeRepos(const std::vector<Repo>& repos);
BrowserPrefs parseBrowsers(std::string_view text);
std::string serializeBrowsers(BrowserMode mode, const std::optional<std::string>& selected,
                              const std::optional<std::vector<std::string>>& shown);
Settings parseSettings(std::string_view text);
std::string serializeSettings(bool autoRefresh, Screen screen, bool onboarded,
                              Appearance appearance);
std::optional<WindowFrame> parseWindow(std::string_view text);
std::string serializeWindow(const WindowFrame& frame);
/// A number as the window file writes it: plain integer when integral and
/// below 1e15 in magnitude, else the shortest form that reads back exactly.
std::string formatNumber(double value);

// ---- gh answers ----

struct PrRow {
    std::int64_t number = 0;
    std::string title;
    std::string author;
    std::string branch;
    bool isDraft = false;
    std::string url;
    std::string commentPreview;
    bool operator==(const PrRow&) const = default;
};

struct PrOutput {
    std::string slug;
    std::vector<PrRow> rows;
    bool operator==(const PrOutput&) const = default;
};

PrOutput parsePrOutput(std::string_view output);
std::vector<std::string> parseSlugList(std::string_view output);
/// Strict base64 (alphabet only, padding required); absent on any fault.
std::optional<std::string> decodeBase64(std::string_view text);

// ---- Preview links ----

std::optional<std::string> previewFromComment(std::string_view body);
std::vector<std::string> links(std::string_view after, std::string_view in);
bool isWebURL(std::string_view text);
std::optional<std::string> detectPattern(std::string_view url, std::int64_t number);
std::optional<std::string> votePattern(const std::vector<std::string>& patterns,
                                       std::string_view current, std::string_view repoName);
std::string expandPreview(std::string_view pattern, std::string_view repo, std::int64_t number,
                          std::string_view branch);

// ---- Browsers ----

/// Two letters that stand in for a browser's icon: "Google Chrome" -> "GC".
std::string initials(std::string_view name);

}  // namespace velmar::Formats
