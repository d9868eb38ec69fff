// Feeds arbitrary bytes to the reader of a pull request answer. Every row
// kept must have passed the row tests, so a found preview is a web address.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Check.h"
#include "Formats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto out = velmar::Formats::parsePrOutput(text);
    for (const auto& row : out.rows)
        FUZZ_CHECK(row.commentPreview.empty() || velmar::Formats::isWebURL(row.commentPreview));
    return 0;
}
