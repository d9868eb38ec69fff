// The headless replay: every script line becomes a Step or a Failure line, and
// the run ends with the Final model. Effects are only described, never done.
//
// Output lines are written as text straight from the values, into one buffer
// that every line reuses, so a step costs no document and no new line string.
#include "Headless.h"

#include "Json.h"
#include "Model.h"
#include "Text.h"

namespace velmar::Headless {

namespace {

// Printable ASCII other than the blank is neither whitespace nor a newline, so
// a line with such characters at both ends needs no trimming (nor a copy).
bool startsAndEndsPrintableAscii(std::string_view line) {
    auto printable = [](char c) { return c > ' ' && c < 0x7F; };
    return !line.empty() && printable(line.front()) && printable(line.back());
}

// Writes one output line into `line` and gives it to `emit`. Any line whose
// text cannot be encoded (invalid UTF-8 reached the model or an effect) is
// replaced whole, so one bad value never stops the run. Keys go in sorted order.
template <typename Fill> void emitLine(std::string& line, const Sink& emit, Fill&& fill) {
    line.clear();
    try {
        JsonWriter writer(line);
        writer.beginObject();
        fill(writer);
        writer.endObject();
    } catch (const std::exception&) {
        line = encodeFailed;
    }
    emit(line);
}

}  // namespace

void run(std::span<const std::string_view> lines, const Sink& emit) {
    Model model;
    std::string line;
    std::int64_t number = 0;
    for (std::string_view input : lines) {
        ++number;  // every input line counts, also those passed over
        std::string trimmed;
        std::string_view text = input;
        if (!startsAndEndsPrintableAscii(input)) text = trimmed = text::trimWhitespaceAndNewlines(input);
        if (text.empty() || text.front() == '#') continue;
        auto decoded = decodeMsg(text);
        if (const auto* error = std::get_if<DecodeError>(&decoded)) {
            emitLine(line, emit, [&](JsonWriter& w) {
                w.key("error");
                w.string(describe(*error));
                w.key("line");
                w.integer(number);
            });
            continue;
        }
        const Msg& msg = std::get<Msg>(decoded);
        // In place, as `update` would on a copy: the result is the same model.
        const Effects effects = model.apply(msg);
        emitLine(line, emit, [&](JsonWriter& w) {
            w.key("effects");
            w.beginArray();
            for (const auto& e : effects) write(w, e);
            w.endArray();
            w.key("msg");
            write(w, msg);
            w.key("status");
            w.string(model.statusLine());
            w.key("step");
            w.integer(number);
        });
    }
    emitLine(line, emit, [&](JsonWriter& w) {
        w.key("model");
        write(w, model);
    });
}

std::vector<std::string> run(const std::vector<std::string>& lines) {
    std::vector<std::string_view> views(lines.begin(), lines.end());
    std::vector<std::string> out;
    run(views, [&](std::string_view line) { out.emplace_back(line); });
    return out;
}

}  // namespace velmar::Headless
