// The byte cap of the capped text field.
#include "ByteCapValidator.h"

#include <QQmlEngine>
#include <algorithm>

namespace velmar::ui {

ByteCapValidator::ByteCapValidator(QObject* parent) : QValidator(parent) {}

qsizetype ByteCapValidator::utf8Length(const QString& text) {
    // The same conversion the text meets on its way to the core.
    return text.toUtf8().size();
}

bool ByteCapValidator::allows(qsizetype bytes, qsizetype maxBytes, qsizetype heldBytes) {
    return bytes <= std::max(maxBytes, heldBytes);
}

bool ByteCapValidator::breaksLine(QChar c) {
    // The stored files are lines of tab-separated fields: any of these inside
    // a slug or a pattern would split it into more fields or more lines.
    switch (c.unicode()) {
        case '\t': case '\n': case '\v': case '\f': case '\r':
        case 0x85: case 0x2028: case 0x2029: return true;
        default: return false;
    }
}

QValidator::State ByteCapValidator::validate(QString& input, int& pos) const {
    // A paste loses its tabs and line breaks; the rest of it stays.
    qsizetype kept = 0;
    int cursor = pos;
    for (qsizetype i = 0; i < input.size(); ++i) {
        if (breaksLine(input[i])) {
            if (i < pos) --cursor;
            continue;
        }
        input[kept++] = input[i];
    }
    input.truncate(kept);
    pos = std::max(0, cursor);
    return allows(utf8Length(input), maxBytes_, heldBytes_) ? Acceptable : Invalid;
}

void ByteCapValidator::setMaxBytes(int maxBytes) {
    if (maxBytes == maxBytes_) return;
    maxBytes_ = maxBytes;
    emit maxBytesChanged();
    emit changed();
}

void ByteCapValidator::setHeld(const QString& held) {
    if (held == held_) return;
    held_ = held;
    heldBytes_ = utf8Length(held);
    emit heldChanged();
    // The field re-checks its text, so the text it holds counts as valid
    // again and the next invalid edit is undone.
    emit changed();
}

}  // namespace velmar::ui
