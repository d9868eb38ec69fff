// Feeds arbitrary bytes to the comment reader, and whatever it finds on to
// the pattern learner and expander, which take that link as input in use.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Check.h"
#include "Formats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmar::Formats;
    const std::string_view body(reinterpret_cast<const char*>(data), size);
    const auto link = previewFromComment(body);
    if (!link) return 0;
    FUZZ_CHECK(isWebURL(*link));
    FUZZ_CHECK(body.find(*link) != std::string_view::npos);
    const std::int64_t number = static_cast<std::int64_t>(size);
    if (const auto pattern = detectPattern(*link, number)) {
        // A web address holds no braces, so putting the number back gives
        // exactly the address that was learned from.
        FUZZ_CHECK(expandPreview(*pattern, "owner/name", number, "branch") == *link);
    }
    return 0;
}
