// Temporary placeholders so the library links while this area is written.
// This file is deleted when Formats*.cpp lands.
#include "Formats.h"
#include "Model.h"
namespace velmar {
Repo::ResolvedPreview Repo::resolvePreview(std::int64_t, std::string_view, std::string_view) const { return {}; }
namespace Formats {
std::vector<std::string> lines(std::string_view) { return {}; }
std::vector<RepoLine> parseRepos(std::string_view) { return {}; }
std::string serializeRepos(const std::vector<Repo>&) { return {}; }
BrowserPrefs parseBrowsers(std::string_view) { return {}; }
std::string serializeBrowsers(BrowserMode, const std::optional<std::string>&, const std::optional<std::vector<std::string>>&) { return {}; }
Settings parseSettings(std::string_view) { return {}; }
std::string serializeSettings(bool, Screen, bool, Appearance) { return {}; }
std::optional<WindowFrame> parseWindow(std::string_view) { return {}; }
std::string serializeWindow(const WindowFrame&) { return {}; }
std::string formatNumber(double) { return {}; }
PrOutput parsePrOutput(std::string_view) { return {}; }
std::vector<std::string> parseSlugList(std::string_view) { return {}; }
std::optional<std::string> decodeBase64(std::string_view) { return {}; }
std::optional<std::string> previewFromComment(std::string_view) { return {}; }
std::vector<std::string> links(std::string_view, std::string_view) { return {}; }
bool isWebURL(std::string_view) { return false; }
std::optional<std::string> detectPattern(std::string_view, std::int64_t) { return {}; }
std::optional<std::string> votePattern(const std::vector<std::string>&, std::string_view, std::string_view) { return {}; }
std::string expandPreview(std::string_view, std::string_view, std::int64_t, std::string_view) { return {}; }
std::string initials(std::string_view) { return {}; }
}  // namespace Formats
}  // namespace velmar
