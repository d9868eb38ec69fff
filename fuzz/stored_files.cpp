// One target for the four stored-file readers: the first byte picks the file.
// Whatever a reader gives back must survive its writer and a second read.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Check.h"
#include "Formats.h"

namespace {

using namespace velmar;
using namespace velmar::Formats;

void repos(std::string_view text) {
    const auto first = parseRepos(text);
    std::vector<Repo> records;
    for (const auto& line : first)
        records.push_back({.name = line.name, .pattern = line.pattern, .detectedPattern = line.detected});
    FUZZ_CHECK(parseRepos(serializeRepos(records)) == first);
}

void browsers(std::string_view text) {
    const auto prefs = parseBrowsers(text);
    FUZZ_CHECK(parseBrowsers(serializeBrowsers(prefs.mode, prefs.selected, prefs.shown)) == prefs);
}

void settings(std::string_view text) {
    const auto s = parseSettings(text);
    FUZZ_CHECK(parseSettings(serializeSettings(s.autoRefresh, s.screen, s.onboarded, s.appearance)) == s);
}

void window(std::string_view text) {
    const auto frame = parseWindow(text);
    if (frame) FUZZ_CHECK(parseWindow(serializeWindow(*frame)) == frame);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 4) {
        case 0: repos(text); break;
        case 1: browsers(text); break;
        case 2: settings(text); break;
        default: window(text); break;
    }
    return 0;
}
