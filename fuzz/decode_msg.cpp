// Feeds arbitrary bytes to the message decoder of the headless driver. A
// message it accepts must encode again and decode to the same message, and
// the text writer must give what the document's dump gives, byte for byte.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "Check.h"
#include "Json.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto decoded = velmar::decodeMsg(text);
    const auto* msg = std::get_if<velmar::Msg>(&decoded);
    if (!msg) return 0;
    const auto again = velmar::decodeMsg(velmar::toJson(*msg));
    const auto* back = std::get_if<velmar::Msg>(&again);
    FUZZ_CHECK(back && *back == *msg);
    // Decoded text is valid UTF-8, so neither writer may refuse it.
    std::string written;
    velmar::JsonWriter writer(written);
    velmar::write(writer, *msg);
    FUZZ_CHECK(written == velmar::dumpCompact(velmar::toJson(*msg)));
    return 0;
}
