// Parsing of the automation variables; no clock and no Qt here.
#include "DebugEnv.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <string>

#include "Json.h"

namespace velmar::DebugEnv {

std::optional<double> seconds(const char* value) {
    // strtod would skip leading blanks; the whole value must be the number.
    if (value == nullptr || *value == '\0' || std::isspace(static_cast<unsigned char>(*value)))
        return std::nullopt;
    char* end = nullptr;
    const double v = std::strtod(value, &end);
    if (end == value || *end != '\0' || std::isnan(v)) return std::nullopt;
    return v;
}

int timerMilliseconds(double seconds) {
    if (!(seconds > 0)) return 0;
    const double ms = std::ceil(seconds * 1000.0);
    return ms >= static_cast<double>(INT_MAX) ? INT_MAX : static_cast<int>(ms);
}

std::optional<std::vector<Msg>> decodeMessages(std::string_view json) {
    // Parsed as the headless driver parses a line, so numbers read the same.
    const auto array = parseJson(json);
    if (!array || !array->is_array()) return std::nullopt;
    std::vector<Msg> messages;
    messages.reserve(array->size());
    for (const Json& element : *array) {
        auto decoded = decodeMsg(element);
        Msg* msg = std::get_if<Msg>(&decoded);
        if (msg == nullptr) return std::nullopt;
        messages.push_back(std::move(*msg));
    }
    return messages;
}

}  // namespace velmar::DebugEnv
