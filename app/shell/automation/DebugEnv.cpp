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

double startDelay(const char* clickDelay, const char* sendDelay) {
    if (auto click = seconds(clickDelay)) return *click;
    if (auto send = seconds(sendDelay)) return *send + 1;
    return 5;
}

namespace {

std::optional<double> number(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    if (text.empty()) return std::nullopt;
    const std::string whole(text);
    char* end = nullptr;
    const double v = std::strtod(whole.c_str(), &end);
    if (end == whole.c_str() || *end != '\0') return std::nullopt;
    return v;
}

std::vector<std::string_view> split(std::string_view value, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t at = value.find(separator);
        const std::string_view part = value.substr(0, at);
        if (!part.empty()) parts.push_back(part);
        if (at == std::string_view::npos) return parts;
        value.remove_prefix(at + 1);
    }
}

}  // namespace

std::vector<double> numbers(std::string_view value, char separator) {
    std::vector<double> out;
    for (std::string_view part : split(value, separator))
        if (auto v = number(part)) out.push_back(*v);
    return out;
}

std::vector<std::pair<double, double>> clickPoints(const char* value) {
    std::vector<std::pair<double, double>> points;
    if (value == nullptr) return points;
    for (std::string_view piece : split(value, ';')) {
        const std::vector<double> xy = numbers(piece, ',');
        if (xy.size() == 2) points.emplace_back(xy[0], xy[1]);
    }
    return points;
}

std::optional<std::array<double, 4>> dragPoints(const char* value) {
    if (value == nullptr) return std::nullopt;
    const std::vector<double> v = numbers(value, ',');
    if (v.size() != 4) return std::nullopt;
    return std::array<double, 4>{v[0], v[1], v[2], v[3]};
}

std::optional<int> keyCode(const char* value) {
    if (value == nullptr || *value == '\0') return std::nullopt;
    const std::string_view text(value);
    if (text.size() > 5 || text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    const int code = std::stoi(std::string(text));
    return code <= 65535 ? std::optional(code) : std::nullopt;
}

std::string logInteger(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
    // Beyond 2^63 a double cannot be converted; such points are held there.
    if (value >= 9223372036854775807.0) return "9223372036854775807";
    if (value <= -9223372036854775808.0) return "-9223372036854775808";
    return std::to_string(static_cast<long long>(value));
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
