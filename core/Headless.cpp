// The headless replay: every script line becomes a Step or a Failure line, and
// the run ends with the Final model. Effects are only described, never done.
#include "Headless.h"

#include "Json.h"
#include "Model.h"
#include "Text.h"

namespace velmar::Headless {

namespace {

// Any line whose text cannot be encoded (invalid UTF-8 reached the model or an
// effect) is replaced whole, so one bad value never stops the run.
std::string encodeOrPlaceholder(const Json& record) {
    try {
        return dumpCompact(record);
    } catch (const std::exception&) {
        return std::string(encodeFailed);
    }
}

// Printable ASCII other than the blank is neither whitespace nor a newline, so
// a line with such characters at both ends needs no trimming (nor a copy).
bool startsAndEndsPrintableAscii(std::string_view line) {
    auto printable = [](char c) { return c > ' ' && c < 0x7F; };
    return !line.empty() && printable(line.front()) && printable(line.back());
}

std::string stepLine(std::int64_t number, const Msg& msg, const Effects& effects,
                     const Model& model) {
    Json effectList = Json::array();
    for (const auto& e : effects) effectList.push_back(toJson(e));
    Json step = Json::object();
    step["step"] = number;
    step["msg"] = toJson(msg);
    step["effects"] = std::move(effectList);
    step["status"] = model.statusLine();
    return encodeOrPlaceholder(step);
}

std::string failureLine(std::int64_t number, const DecodeError& error) {
    Json failure = Json::object();
    failure["error"] = describe(error);
    failure["line"] = number;
    return encodeOrPlaceholder(failure);
}

}  // namespace

void run(std::span<const std::string_view> lines, const Sink& emit) {
    Model model;
    std::int64_t number = 0;
    for (std::string_view line : lines) {
        ++number;  // every input line counts, also those passed over
        std::string trimmed;
        std::string_view text = line;
        if (!startsAndEndsPrintableAscii(line)) text = trimmed = text::trimWhitespaceAndNewlines(line);
        if (text.empty() || text.front() == '#') continue;
        auto decoded = decodeMsg(text);
        if (const auto* error = std::get_if<DecodeError>(&decoded)) {
            emit(failureLine(number, *error));
            continue;
        }
        const Msg& msg = std::get<Msg>(decoded);
        // In place, as `update` would on a copy: the result is the same model.
        Effects effects = model.apply(msg);
        emit(stepLine(number, msg, effects, model));
    }
    Json final = Json::object();
    final["model"] = toJson(model);
    emit(encodeOrPlaceholder(final));
}

std::vector<std::string> run(const std::vector<std::string>& lines) {
    std::vector<std::string_view> views(lines.begin(), lines.end());
    std::vector<std::string> out;
    run(views, [&](std::string_view line) { out.emplace_back(line); });
    return out;
}

}  // namespace velmar::Headless
