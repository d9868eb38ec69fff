// Feeds arbitrary bytes to the suggestion-list reader: its lines are never
// empty and never repeat.
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

#include "Check.h"
#include "Formats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto slugs = velmar::Formats::parseSlugList(text);
    std::set<std::string_view> seen;
    for (const auto& slug : slugs) {
        FUZZ_CHECK(!slug.empty() && slug.front() != ' ' && slug.back() != ' ');
        FUZZ_CHECK(seen.insert(slug).second);
    }
    return 0;
}
