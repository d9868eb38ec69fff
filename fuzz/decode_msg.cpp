// Feeds arbitrary bytes to the message decoder of the headless driver. A
// message it accepts must encode again and decode to the same message.
#include <cstddef>
#include <cstdint>
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
    return 0;
}
